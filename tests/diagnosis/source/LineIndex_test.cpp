#include "diagnosis/source/LineIndex.h"

#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

namespace install::update_metadata_parser::diagnosis::source {
namespace {

struct Place {
  const char* name;
  std::string_view text;
  std::size_t offset;
  std::size_t line;
  std::size_t column;
  std::string_view lineText;
};

std::ostream& operator<<(std::ostream& out, const Place& row) {
  return out << row.name;
}

class PlaceInText : public ::testing::TestWithParam<Place> {};

TEST_P(PlaceInText, HasALineAndAColumnFromOneAndTheTextOfItsLine) {
  const LineIndex lines(GetParam().text);
  const Position position = lines.positionOf(GetParam().offset);
  EXPECT_EQ(position.line, GetParam().line);
  EXPECT_EQ(position.column, GetParam().column);
  EXPECT_EQ(lines.lineText(position.line), GetParam().lineText);
}

constexpr Place kPlaces[] = {
    {"EmptyText", "", 0, 1, 1, ""},
    {"FirstByte", "ab\ncd", 0, 1, 1, "ab"},
    {"LineFeedItself", "ab\ncd", 2, 1, 3, "ab"},
    {"FirstByteOfALine", "ab\ncd", 3, 2, 1, "cd"},
    {"EndOfText", "ab\ncd", 5, 2, 3, "cd"},
    {"BeyondTheEnd", "ab\ncd", 50, 2, 3, "cd"},
    {"BehindAFinalLineFeed", "ab\n", 3, 2, 1, ""},
    {"EmptyLine", "a\n\nb", 2, 2, 1, ""},
    {"ColumnsCountBytes", "\xC3\xBC\xC3\xBC!", 4, 1, 5, "\xC3\xBC\xC3\xBC!"},
    {"OnlyLineFeedsEndLines", "a\rb\r\nc", 5, 2, 1, "c"},
    {"CarriageReturnsStayInTheLine", "a\rb\r\nc", 2, 1, 3, "a\rb\r"},
};
INSTANTIATE_TEST_SUITE_P(Places, PlaceInText, ::testing::ValuesIn(kPlaces),
                         [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace install::update_metadata_parser::diagnosis::source
