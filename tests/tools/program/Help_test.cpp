#include "program/Program.h"

#include <ostream>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "install/update_metadata_parser/Version.h"
#include "support/RunTool.h"

namespace update_metadata_tool::program {
namespace {

using test_support::runTool;
using test_support::ToolRun;
using ::testing::HasSubstr;
using ::testing::StartsWith;

TEST(Version, IsTheLibrarysOwn) {
  const std::string version = install::update_metadata_parser::version();
  EXPECT_EQ(runTool({"--version"}), (ToolRun{0, "update-metadata " + version + "\n", ""}));
}

TEST(Help, BeginsWithThePurposeOfTheProgram) {
  EXPECT_THAT(runTool({"--help"}).out, StartsWith("Query, compare, check and format update"));
}

struct Help {
  const char* name;  ///< of the subcommand
  const char* usage;
  const char* example;
  const char* exitStatus;
};

std::ostream& operator<<(std::ostream& out, const Help& row) {
  return out << row.name;
}

class HelpOfASubcommand : public ::testing::TestWithParam<Help> {};

TEST_P(HelpOfASubcommand, ShowsItsUsageExamplesAndExitStatus) {
  const auto& [name, usage, example, exitStatus] = GetParam();
  const std::string command = std::string("update-metadata ") + name + ' ';
  const ToolRun help = runTool({name, "--help"});
  EXPECT_EQ(help.exitCode, 0);
  EXPECT_EQ(help.err, "");
  EXPECT_THAT(help.out, HasSubstr("Usage: " + command + usage + '\n'));
  EXPECT_THAT(help.out, HasSubstr(":\n  " + command + example));
  EXPECT_THAT(help.out, HasSubstr(std::string("Exit status: 0 ") + exitStatus));
}

const Help kHelps[] = {
    {"query", "[OPTIONS] FILE", "update.json\n", "answered, 1 "},
    {"show", "[OPTIONS] FILE", "update.json\n", "shown, 1 "},
    {"plan", "[OPTIONS] FILE", "update.json ", "planned, 1 "},
    {"diff", "[OPTIONS] OLD NEW", "old.json new.json\n", "no differences, 1 differences, 2 "},
    {"report", "[OPTIONS] FILE", "update.json -o report.html\n", "written, 1 "},
};
INSTANTIATE_TEST_SUITE_P(Subcommands, HelpOfASubcommand, ::testing::ValuesIn(kHelps),
                         [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace update_metadata_tool::program
