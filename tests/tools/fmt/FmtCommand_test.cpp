#include "fmt/FmtCommand.h"

#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <ostream>
#include <set>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/RunTool.h"
#include "support/TemporaryFolder.h"
#include "support/ToolCases.h"

namespace update_metadata_tool::fmt {
namespace {

namespace fs = std::filesystem;
using test_support::readBytes;
using test_support::rejectedRun;
using test_support::runTool;
using test_support::TemporaryFolder;
using test_support::ToolRun;
using test_support::ToolSurroundings;
using test_support::WrongUsage;
using ::testing::HasSubstr;

constexpr int kDone = static_cast<int>(command::ExitCode::kDone);
constexpr int kWouldChange = static_cast<int>(command::ExitCode::kFailed);
constexpr int kTrouble = static_cast<int>(command::ExitCode::kTrouble);

const std::string kCompact =
    R"({"metadata":{"arch":"","base":null,"target":null},"components":null,"products":{},)"
    R"("componentsWithFilesDeleted":null})";

const std::string kTwoBlanks =
    "{\n"
    "  \"metadata\": {\n"
    "    \"arch\": \"\",\n"
    "    \"base\": null,\n"
    "    \"target\": null\n"
    "  },\n"
    "  \"components\": null,\n"
    "  \"products\": {},\n"
    "  \"componentsWithFilesDeleted\": null\n"
    "}";

/// A folder with a document in the default form, one in another form, and a malformed one.
class Fmt : public ::testing::Test {
 protected:
  Fmt() {
    folder_.writeFile("good.json", kTwoBlanks);
    folder_.writeFile("other.json", "\xEF\xBB\xBF" + kCompact + "\r\n");
    folder_.writeFile("bad.json", "{x}");
    around_.folder = folder_.nativePath();
  }

  ToolRun run(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "fmt");
    return runTool(arguments, around_);
  }

  std::string contentOf(const std::string& name) { return readBytes(folder_.nativePath(name)); }

  std::set<std::string> names() {
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder_.nativePath())) {
      names.insert(entry.path().filename().string());
    }
    return names;
  }

  TemporaryFolder folder_;
  ToolSurroundings around_;
};

const std::string kBadComplaint =
    "Error while parsing bad.json\n"
    "update-metadata: 'bad.json' was not changed; correct the text at line 1, column 2: Expected "
    "a value or a string; 'update-metadata lint bad.json' shows more\n";

// --- files ----------------------------------------------------------------------------------

struct Form {
  const char* name;
  std::vector<std::string> options;
  std::string expected;
};

std::ostream& operator<<(std::ostream& out, const Form& row) {
  return out << row.name;
}

class Forms : public Fmt, public ::testing::WithParamInterface<Form> {};

TEST_P(Forms, AreChosenByOptions) {
  std::vector<std::string> arguments = GetParam().options;
  arguments.insert(arguments.end(), {"good.json", "other.json"});
  EXPECT_EQ(run(arguments), (ToolRun{kDone, "", ""}));
  EXPECT_EQ(contentOf("good.json"), GetParam().expected);
  EXPECT_EQ(contentOf("other.json"), GetParam().expected);
}

TEST_P(Forms, AreTheSameThroughStandardInput) {
  around_.inFile = folder_.nativePath("other.json");
  std::vector<std::string> arguments = GetParam().options;
  arguments.push_back("-");
  EXPECT_EQ(run(arguments), (ToolRun{kDone, GetParam().expected, ""}));
}

const Form kForms[] = {
    {"Default", {}, kTwoBlanks},
    {"IndentOfTwo", {"--indent", "2"}, kTwoBlanks},
    {"IndentOfOne",
     {"--indent=1"},
     "{\n \"metadata\": {\n  \"arch\": \"\",\n  \"base\": null,\n  \"target\": null\n },\n"
     " \"components\": null,\n \"products\": {},\n \"componentsWithFilesDeleted\": null\n}"},
    {"Compact", {"--compact"}, kCompact},
};
INSTANTIATE_TEST_SUITE_P(Options, Forms, ::testing::ValuesIn(kForms),
                         [](const auto& row) { return row.param.name; });

TEST_F(Fmt, DoesNotWriteAFileThatIsAlreadyFormatted) {
  struct stat before {};
  ASSERT_EQ(::stat(folder_.nativePath("good.json").c_str(), &before), 0);
  EXPECT_EQ(run({"good.json"}), (ToolRun{kDone, "", ""}));
  struct stat after {};
  ASSERT_EQ(::stat(folder_.nativePath("good.json").c_str(), &after), 0);
  EXPECT_EQ(after.st_ino, before.st_ino);
}

TEST_F(Fmt, ContinuesAfterAFileThatIsRejected) {
  EXPECT_EQ(run({"none.json", "bad.json", "other.json"}),
            (ToolRun{kTrouble, "",
                     "Update MetaData Json file does not exist \n"
                     "update-metadata: 'none.json' could not be read; check the path\n" +
                         kBadComplaint}));
  EXPECT_EQ(contentOf("bad.json"), "{x}");
  EXPECT_EQ(contentOf("other.json"), kTwoBlanks);
  EXPECT_EQ(names(), (std::set<std::string>{"bad.json", "good.json", "other.json"}));
}

TEST_F(Fmt, KeepsLinksAndModes) {
  ASSERT_EQ(::chmod(folder_.nativePath("other.json").c_str(), 0640), 0);
  folder_.makeLink("link.json", "other.json");
  EXPECT_EQ(run({"link.json"}), (ToolRun{kDone, "", ""}));
  EXPECT_TRUE(fs::is_symlink(folder_.nativePath("link.json")));
  EXPECT_EQ(contentOf("other.json"), kTwoBlanks);
  EXPECT_EQ(fs::status(folder_.nativePath("other.json")).permissions(), fs::perms{0640});
}

TEST_F(Fmt, ShowsControlCharactersInNamesByTheirCodes) {
  EXPECT_EQ(run({"a\033[31m.json"}),
            (ToolRun{kTrouble, "",
                     "Update MetaData Json file does not exist \n"
                     "update-metadata: 'a<U+001B>[31m.json' could not be read; check the path\n"}));
  folder_.writeFile("a\033.json", "5");
  EXPECT_EQ(run({"a\033.json"}),
            (ToolRun{kTrouble, "",
                     "Error while parsing a<U+001B>.json\n"
                     "update-metadata: 'a<U+001B>.json' was not changed; a document must be an "
                     "object; 'update-metadata lint a<U+001B>.json' shows more\n"}));
}

// --- --check --------------------------------------------------------------------------------

TEST_F(Fmt, ChecksWithoutChangingAnything) {
  EXPECT_EQ(run({"--check", "good.json"}), (ToolRun{kDone, "", ""}));
  EXPECT_EQ(run({"--check", "other.json", "good.json"}),
            (ToolRun{kWouldChange, "other.json\n", ""}));
  EXPECT_EQ(run({"--check", "--compact", "other.json", "good.json"}),
            (ToolRun{kWouldChange, "other.json\ngood.json\n", ""}));
  EXPECT_EQ(run({"--check", "other.json", "bad.json"}),
            (ToolRun{kTrouble, "other.json\n", kBadComplaint}));
  EXPECT_EQ(contentOf("good.json"), kTwoBlanks);
  EXPECT_EQ(contentOf("other.json"), "\xEF\xBB\xBF" + kCompact + "\r\n");
}

TEST_F(Fmt, ChecksStandardInput) {
  around_.inFile = folder_.nativePath("good.json");
  EXPECT_EQ(run({"--check", "-"}), (ToolRun{kDone, "", ""}));
  around_.inFile = folder_.nativePath("other.json");
  EXPECT_EQ(run({"--check", "-"}), (ToolRun{kWouldChange, "-\n", ""}));
}

// --- standard input and output --------------------------------------------------------------

TEST_F(Fmt, PrintsNothingThatTheLibraryWouldReject) {
  around_.inFile = folder_.nativePath("bad.json");
  EXPECT_EQ(
      run({"-"}),
      (ToolRun{
          kTrouble, "",
          "Error while parsing -\n"
          "update-metadata: '-' was not changed; correct the text at line "
          "1, column 2: Expected a value or a string; 'update-metadata lint -' shows more\n"}));
}

TEST_F(Fmt, ReportsStandardOutputThatCannotBeWritten) {
  around_.inFile = folder_.nativePath("other.json");
  around_.outFile = "/dev/full";
  EXPECT_EQ(run({"-"}),
            (ToolRun{1, "",
                     "update-metadata: standard output could not be written: No space left on "
                     "device; the output is incomplete\n"}));
}

// --- files that cannot be replaced ----------------------------------------------------------

constexpr const char* kCheckRights =
    "was not changed; check that it is writable, that files can be created in its folder, and "
    "that there is space\n";

TEST_F(Fmt, KeepsTheFileWhenThereIsNoSpaceForANewOne) {
  const std::string large = R"({"note":")" + std::string(5000, 'x') + R"(",)" + kCompact.substr(1);
  folder_.writeFile("other.json", large);
  around_.fileSize = 4096;
  EXPECT_EQ(run({"other.json"}),
            (ToolRun{kTrouble, "",
                     std::string("the new file cannot be written: File too large\n") +
                         "update-metadata: 'other.json' " + kCheckRights}));
  EXPECT_EQ(contentOf("other.json"), large);
  EXPECT_EQ(names(), (std::set<std::string>{"bad.json", "good.json", "other.json"}));
}

// A user who is not an administrator. Everyone may enter the folder and write the file.
class FmtOfAUser : public Fmt {
 protected:
  FmtOfAUser() {
    around_.isAdministrator = false;
    setMode("", 0755);
    setMode("other.json", 0666);
  }

  void setMode(const std::string& name, mode_t mode) {
    ASSERT_EQ(::chmod(folder_.nativePath(name).c_str(), mode), 0);
  }
};

TEST_F(FmtOfAUser, LearnsThatNoFileCanBeCreatedInTheFolder) {
  setMode("", 0555);
  EXPECT_EQ(run({"other.json"}),
            (ToolRun{kTrouble, "",
                     std::string("no file can be created in its folder: Permission denied\n") +
                         "update-metadata: 'other.json' " + kCheckRights}));
  setMode("", 0755);
  EXPECT_EQ(contentOf("other.json"), "\xEF\xBB\xBF" + kCompact + "\r\n");
}

TEST_F(FmtOfAUser, LearnsThatTheFileIsProtected) {
  setMode("", 0777);
  setMode("other.json", 0444);
  EXPECT_EQ(run({"other.json"}),
            (ToolRun{kTrouble, "",
                     std::string("the file cannot be written: Permission denied\n") +
                         "update-metadata: 'other.json' " + kCheckRights}));
  EXPECT_EQ(contentOf("other.json"), "\xEF\xBB\xBF" + kCompact + "\r\n");
}

TEST_F(FmtOfAUser, DoesNotGiveTheRightsOfAGroupToAnother) {
  if (::geteuid() != 0) {
    GTEST_SKIP() << "needs a file of another user, which only an administrator can create";
  }
  setMode("", 0777);
  setMode("other.json", 06666);
  EXPECT_EQ(run({"other.json"}), (ToolRun{kDone, "", ""}));
  EXPECT_EQ(contentOf("other.json"), kTwoBlanks);
  EXPECT_EQ(fs::status(folder_.nativePath("other.json")).permissions(), fs::perms{0606});
}

TEST_F(Fmt, DoesNotReadAPipe) {
  folder_.makeFifo("pipe");
  EXPECT_EQ(run({"pipe"}),
            (ToolRun{kTrouble, "",
                     "update-metadata: 'pipe' was not changed: it is not a regular file; pipe "
                     "its content to 'fmt -'\n"}));
}

// --- usage ----------------------------------------------------------------------------------

class WrongUsages : public Fmt, public ::testing::WithParamInterface<WrongUsage> {};

TEST_P(WrongUsages, ChangeNothing) {
  EXPECT_EQ(run(GetParam().arguments), rejectedRun(GetParam()));
  EXPECT_EQ(contentOf("other.json"), "\xEF\xBB\xBF" + kCompact + "\r\n");
}

const WrongUsage kWrongUsages[] = {
    {"NoFile", {}, "FILE is required"},
    {"StandardInputTwice", {"-", "-"}, "FILE: standard input (-) can be read only once"},
    {"FileNotUtf8", {"other.json", "\xFF"}, "FILE: the argument is not UTF-8"},
    {"WideIndent", {"other.json", "--indent", "9"}, "--indent: Value 9 not in range 0 to 8"},
    {"NegativeIndent", {"other.json", "--indent=-1"}, "--indent: Value -1 not in range 0 to 8"},
    {"TwoForms", {"other.json", "--indent", "2", "--compact"}, "--indent excludes --compact"},
    {"UnknownOption",
     {"other.json", "--write"},
     "The following argument was not expected: --write"},
};
INSTANTIATE_TEST_SUITE_P(Usages, WrongUsages, ::testing::ValuesIn(kWrongUsages),
                         [](const auto& row) { return row.param.name; });

TEST(FmtHelp, ShowsExamplesAndTheExitCodes) {
  const ToolRun help = runTool({"fmt", "--help"});
  EXPECT_EQ(help.exitCode, 0);
  EXPECT_THAT(help.out, HasSubstr("Usage: update-metadata fmt [OPTIONS] FILE..."));
  EXPECT_THAT(help.out, HasSubstr("  update-metadata fmt --check one.json another.json\n"));
  EXPECT_THAT(help.out, HasSubstr("Exit status: 0 "));
}

}  // namespace
}  // namespace update_metadata_tool::fmt
