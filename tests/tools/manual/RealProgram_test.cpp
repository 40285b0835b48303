#include <algorithm>
#include <iterator>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "manual/Completion.h"
#include "manual/ManualPage.h"
#include "manual/Outline.h"
#include "support/Patterns.h"
#include "support/RunTool.h"

namespace {

using update_metadata_tool::manual::CommandOutline;

// The built program prints its help; the pages are generated from the same options in this process.
class RealProgram : public ::testing::Test {
 protected:
  const update_metadata_tool::manual::ProgramOutline outline_ =
      update_metadata_tool::manual::outlineOfProgram();
};

std::set<std::string> longOptionsIn(const std::string& text) {
  const std::vector<std::string> options = test_support::matchesIn(text, "--[a-z][a-z-]*");
  return {options.begin(), options.end()};
}

// The list below "Options:" in a help, without the remarks after it.
std::string listedOptions(const std::string& help) {
  const std::size_t begin = help.find("\nOptions:\n");
  return help.substr(begin, help.find("\n\n", begin + 1) - begin);
}

// A page without the formatter's escapes.
std::string plain(const std::string& page) {
  return test_support::replaceMatches(test_support::replaceMatches(page, R"(\\f.)", ""), R"(\\-)",
                                      "-");
}

std::string sectionOf(const std::string& page, const std::string& heading) {
  const std::size_t begin = page.find(".SH " + heading + '\n');
  return page.substr(begin, page.find("\n.SH ", begin) - begin);
}

TEST_F(RealProgram, HasAPageForEachSubcommandWithExactlyTheOptionsOfItsHelp) {
  const std::string help = test_support::runTool({"--help"}).out;
  ASSERT_FALSE(outline_.subcommands.empty());
  for (const CommandOutline& command : outline_.subcommands) {
    const std::string name = command.name.substr(command.name.find(' ') + 1);
    EXPECT_NE(help.find("\n  " + name + ' '), std::string::npos) << name;
    const std::string page =
        plain(update_metadata_tool::manual::makeCommandPage(outline_, command, "0"));
    const std::string ownHelp = test_support::runTool({name, "--help"}).out;
    EXPECT_EQ(longOptionsIn(sectionOf(page, "OPTIONS")), longOptionsIn(listedOptions(ownHelp)))
        << name;
  }
}

TEST_F(RealProgram, ShowsExamplesAndExitStatusOnEachPage) {
  for (const CommandOutline& command : outline_.subcommands) {
    const std::string page = update_metadata_tool::manual::makeCommandPage(outline_, command, "0");
    EXPECT_NE(page.find("\n.SH EXAMPLES\n"), std::string::npos) << command.name;
    EXPECT_NE(page.find("\n.SH EXIT STATUS\n"), std::string::npos) << command.name;
  }
}

TEST_F(RealProgram, CompletesEveryOptionOfEverySubcommand) {
  std::set<std::string> options =
      longOptionsIn(listedOptions(test_support::runTool({"--help"}).out));
  for (const CommandOutline& command : outline_.subcommands) {
    const std::string name = command.name.substr(command.name.find(' ') + 1);
    const auto own = longOptionsIn(listedOptions(test_support::runTool({name, "--help"}).out));
    options.insert(own.begin(), own.end());
  }
  for (const std::string& script : {update_metadata_tool::manual::makeBashCompletion(outline_),
                                    update_metadata_tool::manual::makeZshCompletion(outline_)}) {
    const std::set<std::string> completed = longOptionsIn(script);
    std::set<std::string> missing;
    std::set_difference(options.begin(), options.end(), completed.begin(), completed.end(),
                        std::inserter(missing, missing.end()));
    EXPECT_EQ(missing, std::set<std::string>());
  }
}

}  // namespace
