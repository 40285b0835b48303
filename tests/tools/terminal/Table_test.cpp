#include "terminal/Table.h"

#include <ostream>
#include <sstream>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "terminal/Characters.h"

namespace update_metadata_tool::terminal {
namespace {

Table makeTable() {
  Table table("Name", {"Count", "Size"});
  table.addRow({{"a rather long name"}, {"code-of-many-letters", ", 1 item"}},
               {{"1"}, {"1.0 KiB", "1024"}});
  table.addRow({{kIdeograph}}, {{"12345"}, {}});
  return table;
}

std::string written(const Table& table, std::size_t width) {
  std::ostringstream out;
  table.write(width, out);
  return out.str();
}

struct WrittenTable {
  const char* name;
  std::size_t width;
  std::string text;
};

std::ostream& operator<<(std::ostream& out, const WrittenTable& row) {
  return out << row.name;
}

class WrittenTables : public ::testing::TestWithParam<WrittenTable> {};

TEST_P(WrittenTables, FitTheWidth) {
  EXPECT_EQ(written(makeTable(), GetParam().width), GetParam().text);
}

const std::string kWhole =
    "Name                            Count     Size\n"
    "a rather long name                  1  1.0 KiB\n"
    "  code-of-many-letters, 1 item            1024\n" +
    kIdeograph + "                              12345\n";

const std::string kAsList =
    "Name\n"
    "  a rather long name\n"
    "    code-of-many-letters, 1 item\n"
    "    Count        1\n"
    "    Size   1.0 KiB  1024\n"
    "  " +
    kIdeograph +
    "\n"
    "    Count    12345\n";

const WrittenTable kWrittenTables[] = {
    {"Wide", 200, kWhole},
    {"JustWideEnough", 46, kWhole},
    {"NamesCut", 45,
     "Name                           Count     Size\n"
     "a rather long name                 1  1.0 KiB\n"
     "  code-of-m" +
         kEllipsis + "y-letters, 1 item            1024\n" + kIdeograph +
         "                             12345\n"},
    {"NamesCutAsMuchAsIsUseful", 42,
     "Name                        Count     Size\n"
     "a rather long name              1  1.0 KiB\n"
     "  code-of-" +
         kEllipsis + "letters, 1 item            1024\n" + kIdeograph +
         "                          12345\n"},
    {"TooNarrowForColumns", 41, kAsList},
    {"NarrowerStill", 20,
     "Name\n"
     "  a rather long name\n"
     "    code-of" +
         kEllipsis +
         "letters,\n"
         "        1 item\n"
         "    Count        1\n"
         "    Size   1.0 KiB\n"
         "      1024\n"
         "  " +
         kIdeograph + "\n    Count    12345\n"},
};
INSTANTIATE_TEST_SUITE_P(Widths, WrittenTables, ::testing::ValuesIn(kWrittenTables),
                         [](const auto& row) { return row.param.name; });

TEST(Table, LeavesOneVeryLongNameOutOfTheColumns) {
  const std::string longName(150, 'x');
  Table table("Name", {"Size"});
  table.addRow({{longName}}, {{"1"}});
  table.addRow({{"short"}}, {{"2"}});
  EXPECT_EQ(written(table, 1000), "Name" + std::string(98, ' ') + "Size\n" + longName +
                                      "     1\n"
                                      "short" +
                                      std::string(100, ' ') + "2\n");
}

TEST(Table, WrapsNumbersThatHaveNoRoomSideBySide) {
  Table table("Name", {"Size"});
  table.addRow({{"long-name"}}, {{"-8.0 EiB", "-9223372036854775808"}});
  EXPECT_EQ(written(table, 30),
            "Name\n"
            "  long-name\n"
            "    Size  -8.0 EiB\n"
            "      -9223372036854775808\n");
}

TEST(Table, CutsNoWordsAndNoHeading) {
  Table table("Quite a long heading", {"Size"});
  table.addRow({{"", "and 1234 more of them"}}, {{}});
  EXPECT_EQ(written(table, 27),
            "Quite a long heading   Size\n"
            "and 1234 more of them\n");
  EXPECT_EQ(written(table, 26),
            "Quite a long heading\n"
            "  and 1234 more of them\n");
  EXPECT_EQ(written(table, 20),
            "Quite a long heading\n"
            "  and 1234 more of\n"
            "      them\n");
  Table words("Quite a long heading", {"Size"});
  words.addRow({{"x", ""}}, {{"1"}});
  EXPECT_EQ(written(words, 26),
            "Quite a long heading  Size\n"
            "x                        1\n");
  EXPECT_EQ(written(words, 25),
            "Quite a long heading\n"
            "  x\n"
            "    Size  1\n");
}

TEST(Table, WrapsLongNamesOnRequest) {
  Table table("Name", {"Size"}, LongNames::kWrap);
  table.addRow({{"a name of twenty-one"}}, {{"1"}});
  table.addRow({{"a name of twenty-three."}}, {{"2"}});
  EXPECT_EQ(written(table, 26),
            "Name                  Size\n"
            "a name of twenty-one     1\n"
            "a name of twenty-three.\n"
            "                         2\n");
  EXPECT_EQ(written(table, 22),
            "Name              Size\n"
            "a name of twenty-one\n"
            "                     1\n"
            "a name of twenty-three\n"
            "    .\n"
            "                     2\n");
  EXPECT_EQ(written(table, 20),
            "Name\n"
            "  a name of twenty-o\n"
            "      ne\n"
            "    Size  1\n"
            "  a name of twenty-t\n"
            "      hree.\n"
            "    Size  2\n");
}

TEST(Table, WritesItsHeadingAloneWithoutRows) {
  EXPECT_EQ(written(Table("Name", {"Size"}), 80), "Name\n");
}

}  // namespace
}  // namespace update_metadata_tool::terminal
