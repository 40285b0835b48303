#include "lint/LintCommand.h"

#include <initializer_list>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "lint/RuleHelp.h"
#include "support/RunTool.h"
#include "support/TemporaryFolder.h"

namespace update_metadata_tool::lint {
namespace {

using install::update_metadata_parser::diagnosis::allRules;
using install::update_metadata_parser::diagnosis::RuleDescription;
using test_support::runTool;
using test_support::TemporaryFolder;
using test_support::ToolRun;
using test_support::ToolSurroundings;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

constexpr int kDone = static_cast<int>(command::ExitCode::kDone);
constexpr int kFailed = static_cast<int>(command::ExitCode::kFailed);
constexpr int kTrouble = static_cast<int>(command::ExitCode::kTrouble);

// Ends with its brace, uses everything that it describes, and has no problem.
const std::string kGoodDocument =
    R"({"metadata":{"arch":"x","base":)"
    R"({"zelvan_version":"","date":"","version":"1","prerelease":false,"release":"F",)"
    R"("checksum":"","description":"","update":0},"target":)"
    R"({"zelvan_version":"","date":"","version":"2","prerelease":false,"release":"F",)"
    R"("checksum":"","description":"","update":1}},)"
    R"("components":{"c":{"delete":{},"extract":{"e":{"size":1,"uncompressedBytes":1}}}},)"
    R"("products":{"p":{"delete":[],"extract":["c"]}},"componentsWithFilesDeleted":{}})";

/// A folder with a good document, a bad one and a folder, which cannot be read.
class Lint : public ::testing::Test {
 protected:
  Lint() {
    folder_.writeFile("good.json", kGoodDocument);
    folder_.writeFile("bad.json", kGoodDocument + "\n");
    folder_.makeFolder("folder");
    around_.folder = folder_.nativePath();
  }

  ToolRun lint(std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin(), "lint");
    return runTool(arguments, around_);
  }

  TemporaryFolder folder_;
  ToolSurroundings around_;
};

TEST_F(Lint, ExitsWith0WhenThereIsNoProblem) {
  EXPECT_EQ(lint({"good.json"}), (ToolRun{kDone,
                                          "good.json: the library loads this document\n"
                                          "1 file checked: no problems found\n",
                                          ""}));
}

TEST_F(Lint, ExitsWith1AndPrintsTheLibrarysTextWhenADocumentDoesNotLoad) {
  const ToolRun run = lint({"good.json", "bad.json"});
  EXPECT_EQ(run.exitCode, kFailed);
  EXPECT_EQ(run.err, "");
  EXPECT_THAT(run.out, HasSubstr("\nbad.json: the library rejects this document with "
                                 "std::runtime_error: \"Error while parsing bad.json\"\n"));
  EXPECT_THAT(run.out, HasSubstr("\n2 files checked: 1 cannot be loaded; 1 error\n"));
}

TEST_F(Lint, ExitsWith2AndChecksTheOtherFilesWhenOneCannotBeRead) {
  const ToolRun run = lint({"gone.json", "good.json", "folder"});
  EXPECT_EQ(run, (ToolRun{kTrouble,
                          "good.json: the library loads this document\n"
                          "1 file checked, 2 could not be read: no problems found\n",
                          "Update MetaData Json file does not exist \n"
                          "update-metadata: 'gone.json' could not be loaded; check the path\n" +
                              lint({"folder"}).err}));
  EXPECT_THAT(run.err, HasSubstr("\nupdate-metadata: 'folder' could not be loaded; "));
}

TEST_F(Lint, ReportsUnreadableFilesInEveryFormat) {
  const ToolRun json = lint({"gone.json", "--format", "json"});
  EXPECT_EQ(json.exitCode, kTrouble);
  EXPECT_THAT(json.out, HasSubstr(R"({"file":"gone.json","loads":false,"exception":)"
                                  R"({"type":"std::runtime_error","text":)"
                                  R"("Update MetaData Json file does not exist "})"));
  const ToolRun sarif = lint({"gone.json", "--format=sarif"});
  EXPECT_EQ(sarif.exitCode, kTrouble);
  EXPECT_THAT(sarif.out, HasSubstr(R"("executionSuccessful":false)"));
}

TEST_F(Lint, ReadsStandardInputAsADash) {
  around_.inFile = folder_.nativePath("good.json");
  EXPECT_EQ(lint({"-"}), (ToolRun{kDone,
                                  "-: the library loads this document\n"
                                  "1 file checked: no problems found\n",
                                  ""}));
}

TEST_F(Lint, ReportsStandardInputThatCannotBeRead) {
  around_.inFile = folder_.nativePath("folder");
  const ToolRun run = lint({"-"});
  EXPECT_EQ(run.exitCode, kTrouble);
  EXPECT_THAT(run.err, HasSubstr("\nupdate-metadata: '-' could not be loaded; "));
}

TEST_F(Lint, UsesTheSeveritiesThatAreSet) {
  EXPECT_THAT(lint({"--list-rules"}).out,
              HasSubstr("\nnull-section                  info     A section is null\n"));
  EXPECT_THAT(lint({"--list-rules", "--severity", "null-section=error"}).out,
              HasSubstr("\nnull-section                  error    A section is null\n"));
}

TEST_F(Lint, DoesNotReadTheFileAsASecondSeverity) {
  EXPECT_EQ(lint({"--severity", "null-section=off", "--severity", "empty-name=off", "good.json"}),
            lint({"good.json"}));
}

// --- the terminal ---------------------------------------------------------------------------

TEST_F(Lint, UsesColorsOnATerminal) {
  around_.isOnTerminal = true;
  around_.environment = {"TERM=xterm", "NO_COLOR="};
  EXPECT_THAT(lint({"bad.json"}).out, HasSubstr("\x1B[1;31merror:\x1B[m "));
}

TEST_F(Lint, UsesNoColorsWhereTheyAreNotWanted) {
  EXPECT_THAT(lint({"bad.json"}).out, Not(HasSubstr("\x1B")));
  around_.isOnTerminal = true;
  around_.environment = {"TERM=xterm", "NO_COLOR=1"};
  EXPECT_THAT(lint({"bad.json"}).out, Not(HasSubstr("\x1B")));
  around_.environment = {"TERM=dumb", "NO_COLOR="};
  EXPECT_THAT(lint({"bad.json"}).out, Not(HasSubstr("\x1B")));
}

TEST_F(Lint, FitsTheWidthOfTheTerminal) {
  folder_.writeFile("one-line.json", R"({"metadata":{"arch":"x","target":null,"base":null},)"
                                     R"("components":{"core":{"delete":{"a":{"size":1}},"extract":)"
                                     R"({}}},"products":{"p":{"delete":[],"extract":["Core"]}},)"
                                     R"("componentsWithFilesDeleted":{"x":{"y":{"size":1;}}}})");
  around_.isOnTerminal = true;
  around_.environment = {"TERM=dumb"};
  for (const unsigned short columns : std::initializer_list<unsigned short>{40, 60, 80}) {
    around_.terminalColumns = columns;
    for (const char* file : {"one-line.json", "bad.json"}) {
      std::istringstream lines(lint({file}).out);
      for (std::string line; std::getline(lines, line);) {
        line.erase(line.find_last_not_of('\r') + 1);
        EXPECT_LE(line.size(), columns) << line;
      }
    }
    std::istringstream rules(lint({"--list-rules"}).out);
    for (std::string line; std::getline(rules, line);) {
      line.erase(line.find_last_not_of('\r') + 1);
      EXPECT_LE(line.size(), columns) << line;
    }
  }
}

TEST_F(Lint, PointsBelowThePlaceOnANarrowTerminal) {
  folder_.writeFile("one-line.json", R"({"products": {}, "componentsWithFilesDeleted": {}, )"
                                     R"("components": yes, "metadata": {}})");
  around_.environment = {"COLUMNS=30"};
  EXPECT_EQ(lint({"one-line.json"}).out,
            "one-line.json:1:66: error:\n"
            "    'yes' is not a JSON value\n"
            "    [malformed-text]\n"
            "  ...nents\": yes, \"metadata...\n"
            "             ^~~\n"
            "  help: write true; the rest\n"
            "    was not checked\n"
            "\n"
            "one-line.json: the library\n"
            "    rejects this document with\n"
            "    std::runtime_error: \"Error\n"
            "    while parsing\n"
            "    one-line.json\"\n"
            "  message of the library's\n"
            "    text reader:\n"
            "    JSON ParserException\n"
            "    (E0008): Expected a value\n"
            "    or a string (Line 1,\n"
            "    Column 66)\n"
            "    ...ents\": yes, \"metadat...\n"
            "              ^\n"
            "1 file checked: 1 cannot be\n"
            "    loaded; 1 error\n");
}

// --- rules ----------------------------------------------------------------------------------

TEST_F(Lint, ListsEveryRule) {
  const ToolRun run = lint({"--list-rules"});
  EXPECT_EQ(run.exitCode, kDone);
  for (const RuleDescription& description : allRules()) {
    EXPECT_THAT(run.out, HasSubstr(description.id));
    EXPECT_THAT(run.out, HasSubstr(std::string("  ") + description.summary + '\n'));
  }
}

TEST_F(Lint, ExplainsARule) {
  std::ostringstream explanation;
  writeExplanation(Rule::kRepeatedKey, {}, explanation);
  EXPECT_EQ(lint({"--explain", "repeated-key"}), (ToolRun{kDone, explanation.str(), ""}));
  EXPECT_THAT(lint({"--explain", "repeated-key", "--severity", "repeated-key=error"}).out,
              StartsWith("repeated-key (error): "));
}

// --- wrong usage ----------------------------------------------------------------------------

struct WrongUsage {
  const char* name;
  std::vector<std::string> arguments;
  const char* complaint;
};

std::ostream& operator<<(std::ostream& out, const WrongUsage& row) {
  return out << row.name;
}

class WrongUsageOfLint : public Lint, public ::testing::WithParamInterface<WrongUsage> {};

TEST_P(WrongUsageOfLint, IsRejectedBeforeAnythingIsDone) {
  const ToolRun run = lint(GetParam().arguments);
  EXPECT_EQ(run.exitCode, kTrouble);
  EXPECT_EQ(run.out, "");
  EXPECT_THAT(run.err, StartsWith(GetParam().complaint));
  EXPECT_THAT(run.err, HasSubstr("Run with --help for more information.\n"));
}

const WrongUsage kWrongUsages[] = {
    {"NoFile", {}, "FILE is required\n"},
    {"NoFileButOptions", {"--strict"}, "FILE is required\n"},
    {"StandardInputTwice", {"-", "good.json", "-"}, "FILE: standard input (-) can be read only "},
    {"NameThatIsNotUtf8", {"\xFF"}, "FILE: the argument is not UTF-8"},
    {"UnknownFormat", {"--format", "xml", "good.json"}, "--format: "},
    {"UnknownOption", {"--quiet", "good.json"}, "The following argument was not expected: --quiet"},
    {"UnknownRuleToExplain",
     {"--explain", "x"},
     "--explain: 'x' is not a rule; --list-rules lists"},
    {"RuleToExplainAndFile", {"--explain", "null-value", "good.json"}, "FILE excludes --explain"},
    {"RulesToListAndFile", {"--list-rules", "good.json"}, "FILE excludes --list-rules"},
    {"RulesToListAndToExplain",
     {"--list-rules", "--explain", "null-value"},
     "--explain excludes --list-rules"},
    {"SeverityOfAnUnknownRule",
     {"--severity", "x=off", "good.json"},
     "--severity: 'x' is not a rule; "},
    {"UnknownSeverity",
     {"--severity", "null-value=x", "good.json"},
     "--severity: 'x' is not a severity; "},
};
INSTANTIATE_TEST_SUITE_P(Usages, WrongUsageOfLint, ::testing::ValuesIn(kWrongUsages),
                         [](const auto& row) { return row.param.name; });

// --- output that is not written -------------------------------------------------------------

class OutputOfLint : public Lint, public ::testing::WithParamInterface<const char*> {};

TEST_P(OutputOfLint, ThatCannotBeWrittenIsNoticed) {
  around_.outFile = "/dev/full";
  EXPECT_EQ(lint({"good.json", "--format", GetParam()}),
            (ToolRun{kFailed, "",
                     "update-metadata: standard output could not be written: No space left on "
                     "device; the output is incomplete\n"}));
}

INSTANTIATE_TEST_SUITE_P(Formats, OutputOfLint, ::testing::Values("text", "json", "sarif"),
                         [](const auto& row) { return std::string(row.param); });

}  // namespace
}  // namespace update_metadata_tool::lint
