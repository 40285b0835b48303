#include "input/DocumentText.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <ostream>
#include <string>
#include <system_error>
#include <vector>

#include <gtest/gtest.h>

#include "support/RunTool.h"
#include "support/TemporaryFolder.h"

namespace update_metadata_tool::input {
namespace {

using test_support::runTool;
using test_support::TemporaryFolder;
using test_support::ToolRun;
using test_support::ToolSurroundings;

const std::string kDocument =
    R"({"metadata":{"arch":"x","base":null,"target":null},)"
    R"("components":{"c":{"delete":{},"extract":{"e":{"size":1,"uncompressedBytes":1}}}},)"
    R"("products":{"p":{"delete":[],"extract":["c"]}},"componentsWithFilesDeleted":{}})";

/// A folder with two documents, one of which is standard input.
class StandardInput : public ::testing::Test {
 protected:
  StandardInput() {
    folder_.writeFile("update.json", kDocument);
    folder_.writeFile("empty.json",
                      R"({"metadata":{"arch":"","base":null,"target":null},"components":null,)"
                      R"("products":null,"componentsWithFilesDeleted":null})");
    folder_.writeFile("products.tsv", "\nP\tp\t1\t\n");
    around_.folder = folder_.nativePath();
    around_.inFile = folder_.nativePath("update.json");
  }

  TemporaryFolder folder_;
  ToolSurroundings around_;
};

struct Use {
  const char* name;
  std::vector<std::string> before;  ///< the arguments before the document
  std::vector<std::string> after;   ///< and after it
};

std::ostream& operator<<(std::ostream& out, const Use& row) {
  return out << row.name;
}

std::vector<std::string> argumentsOf(const Use& use, const std::string& document) {
  std::vector<std::string> arguments = use.before;
  arguments.push_back(document);
  arguments.insert(arguments.end(), use.after.begin(), use.after.end());
  return arguments;
}

class UsesOfStandardInput : public StandardInput, public ::testing::WithParamInterface<Use> {};

TEST_P(UsesOfStandardInput, PrintTheSameAsForAFile) {
  const ToolRun run = runTool(argumentsOf(GetParam(), "-"), around_);
  EXPECT_NE(run.out, "");
  EXPECT_EQ(run, runTool(argumentsOf(GetParam(), "update.json"), around_));
}

const Use kUses[] = {
    {"Query", {"query"}, {}},
    {"QueryWithProductData", {"query", "--product-data", "."}, {"--format=json"}},
    {"Show", {"show"}, {}},
    {"Plan", {"plan", "--product-data", "."}, {}},
    {"DiffOfTheOldDocument", {"diff"}, {"empty.json"}},
    {"DiffOfTheNewDocument", {"diff", "empty.json"}, {}},
};
INSTANTIATE_TEST_SUITE_P(Commands, UsesOfStandardInput, ::testing::ValuesIn(kUses),
                         [](const auto& row) { return row.param.name; });

struct UnreadableUse {
  const char* name;
  std::vector<std::string> arguments;
  int exitCode;
  const char* out;
  const char* outcome;  ///< what could not be done with the document
};

std::ostream& operator<<(std::ostream& out, const UnreadableUse& row) {
  return out << row.name;
}

class UnreadableStandardInput : public StandardInput,
                                public ::testing::WithParamInterface<UnreadableUse> {
 protected:
  ToolRun expected(const std::string& reason) const {
    return {GetParam().exitCode, GetParam().out,
            "standard input cannot be read: " + reason + "\nupdate-metadata: '-' could not be " +
                GetParam().outcome +
                "; name a file, redirect one with '< update.json', or pipe in another command's "
                "output\n"};
  }
};

TEST_P(UnreadableStandardInput, IsReportedIfItIsAFolder) {
  around_.inFile = folder_.nativePath();
  EXPECT_EQ(runTool(GetParam().arguments, around_), expected("Is a directory"));
}

TEST_P(UnreadableStandardInput, IsReportedIfItIsClosed) {
  around_.isInClosed = true;
  EXPECT_EQ(runTool(GetParam().arguments, around_), expected("Bad file descriptor"));
}

const UnreadableUse kUnreadableUses[] = {
    {"Query", {"query", "-"}, 1, "", "loaded"},
    {"Show", {"show", "-"}, 2, "", "loaded"},
    {"Plan", {"plan", "-", "--product-data", "."}, 2, "", "loaded"},
    {"Diff", {"diff", "empty.json", "-"}, 2, "", "loaded"},
    {"Report", {"report", "-", "-o", "page.html"}, 2, "", "loaded"},
    {"Lint", {"lint", "-"}, 2, "0 files checked, 1 could not be read\n", "loaded"},
    {"Fmt", {"fmt", "-"}, 2, "", "read"},
};
INSTANTIATE_TEST_SUITE_P(Commands, UnreadableStandardInput, ::testing::ValuesIn(kUnreadableUses),
                         [](const auto& row) { return row.param.name; });

TEST_F(StandardInput, ThatIsNotADocumentIsReportedAsADash) {
  around_.inFile = "/dev/null";
  for (const char* command : {"query", "show"}) {
    EXPECT_EQ(runTool({command, "-"}, around_).err,
              "Error while parsing -\n"
              "update-metadata: '-' could not be loaded; its text is not one JSON object; "
              "nothing may come before or after the object, not even a byte-order mark or a final "
              "line feed; 'update-metadata lint -' shows where\n");
  }
}

/// A terminal with typed input.
class Typed {
 public:
  explicit Typed(const std::string& text) : keyboard_(::posix_openpt(O_RDWR | O_NOCTTY)) {
    if (::grantpt(keyboard_) != 0 || ::unlockpt(keyboard_) != 0 ||
        ::ptsname_r(keyboard_, name_.data(), name_.size()) != 0) {
      throw std::system_error(errno, std::generic_category(), "no terminal");
    }
    screen_ = ::open(name_.data(), O_RDWR | O_NOCTTY);
    if (::write(keyboard_, text.data(), text.size()) != static_cast<ssize_t>(text.size())) {
      throw std::system_error(errno, std::generic_category(), "cannot type");
    }
  }
  Typed(const Typed&) = delete;
  Typed& operator=(const Typed&) = delete;
  ~Typed() {
    ::close(screen_);
    ::close(keyboard_);
  }

  std::string file() const { return name_.data(); }

 private:
  int keyboard_;
  int screen_ = -1;
  std::array<char, 100> name_{};
};

class TypedDocument : public StandardInput, public ::testing::WithParamInterface<Use> {};

TEST_P(TypedDocument, IsPromptedForAtOnce) {
  // The first Ctrl-D submits the unfinished line, the second one ends the input.
  const Typed typed(kDocument + "\x04\x04");
  around_.inFile = typed.file();
  const ToolRun run = runTool(argumentsOf(GetParam(), "-"), around_);
  EXPECT_EQ(run.exitCode, runTool(argumentsOf(GetParam(), "update.json"), around_).exitCode);
  EXPECT_NE(run.out, "");
  EXPECT_EQ(run.err,
            "update-metadata: reading the document from the terminal; end it with Ctrl-D\n");
}

const Use kTypedUses[] = {
    {"Query", {"query"}, {}},
    {"Show", {"show"}, {}},
    {"Plan", {"plan", "--product-data", "."}, {}},
    {"Diff", {"diff", "empty.json"}, {}},
    {"Report", {"report", "--output=-"}, {}},
    {"Lint", {"lint"}, {}},
    {"Fmt", {"fmt", "--check"}, {}},
};
INSTANTIATE_TEST_SUITE_P(Commands, TypedDocument, ::testing::ValuesIn(kTypedUses),
                         [](const auto& row) { return row.param.name; });

// It is longer than one read.
TEST_F(StandardInput, IsReadCompletely) {
  std::string document = kDocument;
  document.insert(document.size() - 1, ",\"unlisted\":\"" + std::string(200'000, 'x') + '"');
  folder_.writeFile("long.json", document);
  around_.inFile = folder_.nativePath("long.json");
  EXPECT_EQ(runTool({"fmt", "--compact", "-"}, around_), (ToolRun{0, document, ""}));
}

}  // namespace
}  // namespace update_metadata_tool::input
