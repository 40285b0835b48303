// Nothing that the command writes for people contains characters that are unsafe for a terminal,
// whatever its input.

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <iterator>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "output/Text.h"
#include "support/Effort.h"
#include "support/RunTool.h"
#include "support/TemporaryFolder.h"

namespace update_metadata_tool::program {
namespace {

using test_support::runTool;
using test_support::TemporaryFolder;
using test_support::ToolRun;
using test_support::ToolSurroundings;

// The text starting at the first unsafe character; empty if there is none.
std::string firstUnsafe(std::string_view text) {
  while (!text.empty()) {
    const output::Character character = output::firstCharacter(text);
    if (!character.isUtf8 || (output::isUnseen(character.code) && character.code != U'\n')) {
      return output::toVisible(text.substr(0, 40));
    }
    text.remove_prefix(character.bytes);
  }
  return "";
}

void expectSafe(const std::vector<std::string>& arguments, const ToolSurroundings& around) {
  ToolRun run = runTool(arguments, around);
  if (arguments.front() == "list") {
    std::replace(run.out.begin(), run.out.end(), '\t', ' ');  // between fields
  }
  std::string words;
  for (const std::string& argument : arguments) {
    words += ' ' + output::toVisible(argument);
  }
  EXPECT_GE(run.exitCode, 0) << words;
  EXPECT_EQ(firstUnsafe(run.out), "") << words;
  EXPECT_EQ(firstUnsafe(run.err), "") << words;
}

struct Unsafe {
  const char* name;
  std::string text;
};

std::ostream& operator<<(std::ostream& out, const Unsafe& row) {
  return out << row.name;
}

const Unsafe kUnsafe[] = {
    {"Escape", "a\x1B[31mb"},
    {"Bell", "a\ab"},
    {"CarriageReturn", "a\rb"},
    {"C1Control",
     "a\xC2\x9B"
     "31mb"},
    {"C1Byte",
     "a\x9B"
     "31mb"},
    {"Override",
     "a\xE2\x80\xAE"
     "b\xE2\x81\xA6"},
};

// One after the other, and all in one text; where that would take long, only the latter.
std::vector<Unsafe> unsafeTexts() {
  Unsafe all{"Together", ""};
  std::vector<Unsafe> rows;
  for (const Unsafe& row : kUnsafe) {
    all.text += row.text;
    if (test_support::kFullEffort) {
      rows.push_back(row);
    }
  }
  rows.push_back(all);
  return rows;
}

// A JSON string, in which controls must be escaped.
std::string jsonString(const std::string& text) {
  std::string json = "\"";
  for (const char byte : text) {
    if (byte == '\x1B') {
      json += "\\u001b";
    } else if (byte == '\a') {
      json += "\\u0007";
    } else if (byte == '\r') {
      json += "\\r";
    } else {
      json += byte;
    }
  }
  return json + '"';
}

// A document in which every text is `name`.
std::string documentOf(const std::string& name) {
  const std::string release = "{\"release\":" + name + ",\"version\":" + name +
                              ",\"zelvan_version\":" + name + ",\"date\":" + name +
                              ",\"checksum\":" + name + ",\"description\":" + name +
                              ",\"prerelease\":false,\"update\":1}";
  return "{\"metadata\":{\"arch\":" + name + ",\"base\":" + release + ",\"target\":" + release +
         "},\"components\":{" + name + ":{\"delete\":{" + name + ":{\"size\":-1}},\"extract\":{" +
         name + ":{\"size\":1,\"uncompressedBytes\":0}}}},\"products\":{" + name +
         ":{\"delete\":[" + name + "],\"extract\":[" + name +
         "]}},\"componentsWithFilesDeleted\":{" + name + ":{" + name + ":{\"size\":1,\"files\":[" +
         name + "]}}}," + name + ":1}";
}

class UnsafeTexts : public ::testing::TestWithParam<Unsafe> {
 protected:
  UnsafeTexts() {
    around_.folder = folder_.nativePath();
    folder_.writeFile("good", documentOf("\"n\""));
    folder_.writeFile("named", documentOf(jsonString(text_)));
    folder_.makeFolder("data");
    folder_.writeFile("data/products.tsv", "\n" + text_ + "\t" + text_ + "\t1\t\n");
  }

  const std::string& text_ = GetParam().text;
  const TemporaryFolder folder_;
  ToolSurroundings around_;
};

TEST_P(UnsafeTexts, AreEscapedAsNames) {
  const std::vector<std::vector<std::string>> runs = {
      {"query", "named"},
      {"query", "named", "--product-data=data"},
      {"query", "named", "--product-data=data", "--base-code=ZZ"},
      {"show", "named", "--product-data=data"},
      {"plan", "named", "--product-data=data"},
      {"plan", "named", "--product-data=data", "--product=ZZ"},
      {"plan", "named", "--product-data=data", "--installed=."},
      {"diff", "good", "named", "--product-data=data"},
      {"diff", "named", "good"},
      {"why", text_ + '_' + text_, "named", "--product-data=data"},
      {"why", text_, "named"},
      {"why", "none", "named", "--product", text_},
      {"list", "named", "--product-data=data"},
      {"list", "named", "--format=ndjson"},
      {"lint", "named", "--product-data=data"},
      {"report", "named", "-o", "page"},
      {"fmt", "--check", "named"},
  };
  for (const auto& arguments : runs) {
    expectSafe(arguments, around_);
  }
}

TEST_P(UnsafeTexts, AreEscapedInMalformedDocuments) {
  const std::vector<std::string> documents = {
      text_, "{" + jsonString(text_) + ":" + text_ + "}",
      "{\"metadata\":" + jsonString(text_) + "}",
      R"({"metadata":{"arch":"","base":null,"target":null},"components":{)" + jsonString(text_) +
          ":{\"extract\":{" + jsonString(text_) + ":{\"size\":" + jsonString(text_) + "}}}}}",
      "{" + jsonString(text_) + ":{\"qztype\":" + jsonString(text_) + ",\"qzdata\":[1]}}"};
  for (const std::string& document : documents) {
    folder_.writeFile("malformed", document);
    for (const char* command : {"query", "show", "lint", "list", "fmt"}) {
      expectSafe({command, "malformed"}, around_);
    }
  }
}

TEST_P(UnsafeTexts, AreEscapedInProductData) {
  const std::string rows[] = {"P\tN\t" + text_ + "\t\n",
                              "P\t" + text_ + "\t1\t\n",
                              text_ + "\tN\t1\t\n",
                              "P\tN\t1\t" + text_ + "\n",
                              text_ + "\n",
                              "P\tN\t" + text_ + "\n"};
  constexpr const char* kBeginnings[] = {"", "\n", "base code\tname\tnumber\t\n"};
  for (std::size_t row = 0; row < std::size(rows); ++row) {
    for (std::size_t beginning = 0; beginning < std::size(kBeginnings); ++beginning) {
      if (!test_support::kFullEffort && beginning != row % std::size(kBeginnings)) {
        continue;
      }
      folder_.writeFile("data/products.tsv", kBeginnings[beginning] + rows[row]);
      for (const char* command : {"query", "show", "plan", "list", "lint"}) {
        expectSafe({command, "good", "--product-data=data"}, around_);
      }
      expectSafe({"diff", "good", "named", "--product-data=data"}, around_);
      expectSafe({"report", "good", "--product-data=data", "-o", "page"}, around_);
    }
  }
}

TEST_P(UnsafeTexts, AreEscapedAsFileNames) {
  TemporaryFolder::checkName(text_);
  const std::string folder = "folder" + text_;
  const std::string broken = "broken" + text_;
  std::filesystem::create_directory(folder_.nativePath(folder));
  std::filesystem::copy(folder_.nativePath("good"), folder_.nativePath(text_));
  folder_.writeFile("broken", "{");
  std::filesystem::rename(folder_.nativePath("broken"), folder_.nativePath(broken));
  for (const std::string& file : {text_, broken, folder, "missing" + text_}) {
    for (const char* command : {"query", "show", "lint", "list", "fmt"}) {
      expectSafe({command, file}, around_);
    }
    expectSafe({"plan", file, "--product-data=data"}, around_);
    expectSafe({"plan", "good", "--product-data", file}, around_);
    expectSafe({"plan", "good", "--product-data=data", "--installed", file}, around_);
    expectSafe({"diff", "good", file}, around_);
    expectSafe({"why", "c_p", file}, around_);
    expectSafe({"report", file, "-o", "page"}, around_);
    expectSafe({"query", "good", "--product-data", file}, around_);
    expectSafe({"fmt", "--check", file}, around_);
  }
  expectSafe({"report", "good", "-o", folder}, around_);
  expectSafe({"report", "good", "-o", "missing" + text_ + "/page"}, around_);
}

TEST_P(UnsafeTexts, AreEscapedAsArguments) {
  const std::vector<std::vector<std::string>> runs = {
      {text_},
      {"--" + text_},
      {"query", "good", text_},
      {"query", "good", "--" + text_},
      {"query", "good", "--base-code", text_},
      {"query", "good", "--format", text_},
      {"show", "good", "--sort", text_},
      {"show", "good", "--top", text_},
      {"plan", "good", "--product-data=data", "--product", text_},
      {"plan", "good", "--product-data=data", text_},
      {"diff", "good", "good", "--fail-if-larger", text_},
      {"diff", "good", "good", text_},
      {"lint", "good", "--severity", text_},
      {"lint", "good", "--severity", text_ + "=off"},
      {"lint", "good", "--severity", "repeated-key=" + text_},
      {"lint", "good", "--format", text_},
      {"lint", "--explain", text_},
      {"fmt", "good", "--indent", text_},
      {"report", "good", "-o", "page", text_},
      {"schema", text_},
      {"--version", text_},
      {"--help", text_},
      {"query", "--help", text_},
  };
  for (const auto& arguments : runs) {
    expectSafe(arguments, around_);
  }
}

INSTANTIATE_TEST_SUITE_P(All, UnsafeTexts, ::testing::ValuesIn(unsafeTexts()),
                         [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace update_metadata_tool::program
