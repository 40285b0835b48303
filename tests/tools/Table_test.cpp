#include "Table.h"

#include <ostream>
#include <sstream>
#include <string>
#include <utility>

#include <gtest/gtest.h>

namespace update_metadata_tool {
namespace {

const std::string kEllipsis = "\xE2\x80\xA6";
const std::string kIdeograph = "\xE4\xB8\x80";  // two columns

Table makeTable() {
  Table table({"Name", "Count", "Size"});
  table.addRow({{"a rather long name", "  with a line below"}, {"1"}, {"1.0 KiB", "1024"}});
  table.addRow({{kIdeograph}, {"12345"}, {}});
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

TEST_P(WrittenTables, KeepToTheWidth) {
  EXPECT_EQ(written(makeTable(), GetParam().width), GetParam().text);
}

const std::string kWhole =
    "Name                 Count     Size\n"
    "a rather long name       1  1.0 KiB\n"
    "  with a line below            1024\n" +
    kIdeograph + "                   12345\n";

const std::string kOneBelowTheOther =
    "Name\n"
    "  a rather long name\n"
    "    with a line below\n"
    "    Count        1\n"
    "    Size   1.0 KiB  1024\n"
    "  " +
    kIdeograph +
    "\n"
    "    Count    12345\n";

const WrittenTable kWrittenTables[] = {
    {"Wide", 200, kWhole},
    {"JustWideEnough", 35, kWhole},
    {"NamesCut", 34,
     "Name                Count     Size\n"
     "a rather long name      1  1.0 KiB\n"
     "  with a " +
         kEllipsis + "ne below            1024\n" + kIdeograph + "                  12345\n"},
    {"NamesCutAsFarAsIsUseful", 32,
     "Name              Count     Size\n"
     "a rather" +
         kEllipsis +
         "ng name      1  1.0 KiB\n"
         "  with a" +
         kEllipsis + "e below            1024\n" + kIdeograph + "                12345\n"},
    {"TooNarrowForColumns", 31, kOneBelowTheOther},
    {"NarrowerStill", 20,
     "Name\n"
     "  a rather long name\n"
     "    with a " +
         kEllipsis +
         "ne below\n"
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
  Table table({"Name", "Size"});
  table.addRow({{longName}, {"1"}});
  table.addRow({{"short"}, {"2"}});
  EXPECT_EQ(written(table, 1000), "Name" + std::string(98, ' ') + "Size\n" + longName +
                                      "     1\n"
                                      "short" +
                                      std::string(100, ' ') + "2\n");
}

TEST(Table, PutsNumbersBelowEachOtherIfTwoHaveNoRoom) {
  Table table({"Name", "Size"});
  table.addRow({{"long-name"}, {"-8.0 EiB", "-9223372036854775808"}});
  EXPECT_EQ(written(table, 30),
            "Name\n"
            "  long-name\n"
            "    Size  -8.0 EiB\n"
            "      -9223372036854775808\n");
}

TEST(Table, WritesNothingWithoutRows) {
  EXPECT_EQ(written(Table({"Name", "Size"}), 80), "");
}

}  // namespace
}  // namespace update_metadata_tool
