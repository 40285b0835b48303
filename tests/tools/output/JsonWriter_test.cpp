#include "output/JsonWriter.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "output/Text.h"
#include "support/Json.h"
#include "support/RunTool.h"
#include "support/TemporaryFolder.h"

namespace update_metadata_tool::output {
namespace {

using namespace std::string_literals;
using test_support::Json;
using test_support::parseJson;
using test_support::runTool;
using test_support::TemporaryFolder;
using test_support::ToolRun;
using test_support::ToolSurroundings;

// The text that `write` writes.
template <class Write>
std::string written(Write write) {
  std::ostringstream out;
  JsonWriter json(out);
  write(json);
  return out.str();
}

struct WrittenString {
  const char* name;
  std::string text;
  std::string written;
};

std::ostream& operator<<(std::ostream& out, const WrittenString& row) {
  return out << row.name;
}

class WrittenStrings : public ::testing::TestWithParam<WrittenString> {};

TEST_P(WrittenStrings, HaveEscapesForWhatIsUnsafeForATerminal) {
  const std::string& text = GetParam().text;
  EXPECT_EQ(written([&text](JsonWriter& json) { json.value(text); }),
            '"' + GetParam().written + '"');
}

const WrittenString kWrittenStrings[] = {
    {"Empty", "", ""},
    {"Ascii", "a \"b\" \\ ~", R"(a \"b\" \\ ~)"},
    {"C0Controls", std::string("\0\b\n\x1F ", 5), R"(\u0000\b\n\u001f )"},
    {"Delete", "~\x7F~", R"(~\u007f~)"},
    {"C1Controls", "\xC2\x80-\xC2\x9F\xC2\xA0", "\\u0080-\\u009f\xC2\xA0"},
    {"ArabicLetterMark", "\xD8\x9B\xD8\x9C\xD8\x9D", "\xD8\x9B\\u061c\xD8\x9D"},
    {"Marks", "\xE2\x80\x8A\xE2\x80\x8B\xE2\x80\x8F\xE2\x80\x90",
     "\xE2\x80\x8A\\u200b\\u200f\xE2\x80\x90"},
    {"SeparatorsAndOverrides", "\xE2\x80\xA7\xE2\x80\xA8\xE2\x80\xA9\xE2\x80\xAE\xE2\x80\xAF",
     "\xE2\x80\xA7\\u2028\\u2029\\u202e\xE2\x80\xAF"},
    {"Isolates", "\xE2\x81\x9F\xE2\x81\xA6\xE2\x81\xA9\xE2\x81\xB0",
     "\xE2\x81\x9F\\u2066\\u2069\xE2\x81\xB0"},
    {"ByteOrderMark", "\xEF\xBB\xBE\xEF\xBB\xBF", "\xEF\xBB\xBE\\ufeff"},
    {"BeyondSixteenBits", "\xF0\x9F\x97\xBA\xC2\x85\xF3\xA0\x80\x81",
     "\xF0\x9F\x97\xBA\\u0085\\udb40\\udc01"},
    {"NoUtf8", "a\xFFz", "a\xEF\xBF\xBDz"},
};
INSTANTIATE_TEST_SUITE_P(Strings, WrittenStrings, ::testing::ValuesIn(kWrittenStrings),
                         [](const auto& row) { return row.param.name; });

TEST(WrittenJson, HasTheSameMeaning) {
  std::vector<std::string> strings;
  for (char32_t code = 0; code < 0x10000; ++code) {
    if (code < 0xD800 || code > 0xDFFF) {
      strings.push_back(toUtf8(std::u16string(3, static_cast<char16_t>(code))));
    }
  }
  const std::string json = written([&strings](JsonWriter& array) { array.array(strings); });
  EXPECT_EQ(parseJson(json), Json(strings));
}

TEST(WrittenJson, KeepsTheOrderOfMembersAndEscapesTheirNames) {
  EXPECT_EQ(written([](JsonWriter& json) {
              json.beginObject().member("z\xC2\x9B", 1).name(u"a\"").beginArray();
              json.value(true).value(nullptr).endArray().endObject();
            }),
            R"({"z\u009b":1,"a\"":[true,null]})");
}

TEST(WrittenJson, SeparatesValuesWithCommas) {
  EXPECT_EQ(written([](JsonWriter& json) {
              json.beginArray().beginArray().endArray().beginObject().endObject();
              json.value("").value(u"\xD800").value(false).endArray();
            }),
            "[[],{},\"\",\"\xEF\xBF\xBD\",false]");
}

TEST(WrittenJson, KeepsEveryDigitOfNumbers) {
  EXPECT_EQ(written([](JsonWriter& json) {
              json.array(std::vector{std::numeric_limits<std::int64_t>::min(), std::int64_t{0},
                                     std::numeric_limits<std::int64_t>::max()});
            }),
            "[-9223372036854775808,0,9223372036854775807]");
  EXPECT_EQ(written([](JsonWriter& json) { json.value(std::numeric_limits<std::size_t>::max()); }),
            "18446744073709551615");
}

TEST(WrittenJson, HasNullForAMissingValue) {
  EXPECT_EQ(written([](JsonWriter& json) {
              json.beginObject().member("none", std::optional<int>());
              json.member("some", std::optional(u"text"s)).endObject();
            }),
            R"({"none":null,"some":"text"})");
}

struct Writer {
  const char* name;
  std::vector<std::string> arguments;
};

std::ostream& operator<<(std::ostream& out, const Writer& row) {
  return out << row.name;
}

class OutputForPrograms : public ::testing::TestWithParam<Writer> {};

// Every name, including the file's, contains a C1 control, an override and a line separator.
TEST_P(OutputForPrograms, IsSafeForATerminal) {
  const std::string odd = "\xC2\x9B\xE2\x80\xAE\xE2\x80\xA8";
  const std::string name = '"' + odd + '"';
  const TemporaryFolder folder;
  folder.writeFile(
      odd, R"({"metadata":{"arch":)" + name + R"(,"base":null,"target":null},"components":{)" +
               name + R"(:{"delete":{)" + name + R"(:{"size":1}},"extract":{)" + name +
               R"(:{"size":1,"uncompressedBytes":0}}}},"products":{)" + name + R"(:{"delete":[)" +
               name + R"(],"extract":[)" + name + R"(]}},"componentsWithFilesDeleted":{)" + name +
               ":{" + name + R"(:{"size":1,"files":[)" + name + "]}}}}");
  folder.writeFile("empty.json",
                   R"({"metadata":{"arch":"","base":null,"target":null},"components":null,)"
                   R"("products":null,"componentsWithFilesDeleted":null})");
  folder.writeFile("products.tsv", "\n" + odd + "\t" + odd + "\t1\t\n");
  std::vector<std::string> arguments = GetParam().arguments;
  arguments.insert(arguments.end(), {odd, "--product-data", "."});
  ToolSurroundings around;
  around.folder = folder.nativePath();
  const ToolRun run = runTool(arguments, around);
  ASSERT_NE(run.out, "") << run;
  EXPECT_EQ(toVisible(run.out), run.out.substr(0, run.out.size() - 1) + "<U+000A>");
  EXPECT_NE(run.out.find(R"(\u202e)"), std::string::npos) << run;
}

const Writer kWriters[] = {
    {"Query", {"query", "--format=json"}}, {"Show", {"show", "--format=json"}},
    {"Plan", {"plan", "--format=json"}},   {"Diff", {"diff", "--format=json", "empty.json"}},
    {"Lint", {"lint", "--format=json"}},   {"LintForReviews", {"lint", "--format=sarif"}},
};
INSTANTIATE_TEST_SUITE_P(Commands, OutputForPrograms, ::testing::ValuesIn(kWriters),
                         [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace update_metadata_tool::output
