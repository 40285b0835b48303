#include "fmt/FmtCommand.h"

#include <ostream>
#include <set>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "FmtFixture.h"
#include "support/RunTool.h"
#include "support/ToolCases.h"

namespace update_metadata_tool::fmt {
namespace {

using test_support::rejectedRun;
using test_support::runTool;
using test_support::ToolRun;
using test_support::WrongUsage;
using ::testing::HasSubstr;

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
