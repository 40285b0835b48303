#include "command/HelpText.h"

#include <cstddef>
#include <ostream>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "support/RunTool.h"

namespace update_metadata_tool::command {
namespace {

struct Fitting {
  const char* name;
  std::string text;
  std::size_t columns;
  std::string fitting;
};

std::ostream& operator<<(std::ostream& out, const Fitting& row) {
  return out << row.name;
}

class FittingText : public ::testing::TestWithParam<Fitting> {};

TEST_P(FittingText, FitsTheColumns) {
  EXPECT_EQ(fitToColumns(GetParam().text, GetParam().columns), GetParam().fitting);
}

const Fitting kFittings[] = {
    {"ShortLinesStay", "one two\n\n  three\n", 20, "one two\n\n  three\n"},
    {"LineBreaksAtABlank", "one two three four five", 20, "one two three four\n  five"},
    {"ShortIndentedLineStays", "  one two three four", 20, "  one two three four"},
    {"IndentedLine", "  one two three four five", 20, "  one two three four\n    five"},
    {"LongWordBreaks", "a bcdefghijklmnopqrstuvwxyz b", 20, "a\nbcdefghijklmnopqrstu\n  vwxyz b"},
    {"TableContinuesInItsSecondColumn", "  --option     one two three four five six seven", 45,
     "  --option     one two three four five six\n               seven"},
    {"TableWithoutRoomContinuesBelow", "  --option     one two three four", 30,
     "  --option     one two three\n    four"},
    {"DeepLineKeepsItsIndent", std::string(15, ' ') + "one two three four five six seven eight", 45,
     std::string(15, ' ') + "one two three four five six\n" + std::string(15, ' ') + "seven eight"},
    {"DeepLineWithoutRoomLosesItsIndent", std::string(30, ' ') + "one two three four", 24,
     std::string(10, ' ') + "one two three\n" + std::string(10, ' ') + "four"},
};
INSTANTIATE_TEST_SUITE_P(Texts, FittingText, ::testing::ValuesIn(kFittings),
                         [](const auto& row) { return row.param.name; });

class HelpOf : public ::testing::TestWithParam<const char*> {};

TEST_P(HelpOf, FitsTheTerminal) {
  for (const std::size_t columns : {60U, 80U}) {
    test_support::ToolSurroundings around;
    around.environment = {"COLUMNS=" + std::to_string(columns)};
    std::istringstream help(test_support::runTool({GetParam(), "--help"}, around).out);
    for (std::string line; std::getline(help, line);) {
      EXPECT_TRUE(line.size() <= columns ||
                  line.find(' ', line.find_first_not_of(' ')) == std::string::npos)
          << line;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Subcommands, HelpOf,
                         ::testing::Values("query", "show", "plan", "lint", "diff", "fmt", "report",
                                           "why", "list"),
                         [](const auto& row) { return std::string(row.param); });

}  // namespace
}  // namespace update_metadata_tool::command
