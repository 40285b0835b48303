#include "lint/MarkedLine.h"

#include <cstddef>
#include <ostream>
#include <string>

#include <gtest/gtest.h>

namespace update_metadata_tool::lint {
namespace {

struct Mark {
  const char* name;
  std::string line;
  std::size_t offset;
  std::size_t length;
  std::string shown;
  std::string marks;
};

std::ostream& operator<<(std::ostream& out, const Mark& row) {
  return out << row.name;
}

class MarkedPlace : public ::testing::TestWithParam<Mark> {};

TEST_P(MarkedPlace, IsPointedAtBelowTheLine) {
  const MarkedLine marked = markLine(GetParam().line, GetParam().offset, GetParam().length);
  EXPECT_EQ(marked.line, GetParam().shown);
  EXPECT_EQ(marked.marks, GetParam().marks);
}

const Mark kMarks[] = {
    {"OneByte", "[1, 2]", 4, 1, "[1, 2]", "    ^"},
    {"SeveralBytes", "{\"size\": 1}", 1, 6, "{\"size\": 1}", " ^~~~~~"},
    {"NoByteStillHasItsCaret", "[1, 2]", 4, 0, "[1, 2]", "    ^"},
    {"MoreThanTheLineHolds", "[1, 2]", 4, 100, "[1, 2]", "    ^~"},
    {"BehindTheLine", "[1, 2", 5, 1, "[1, 2", "     ^"},
    {"EmptyLine", "", 0, 1, "", "^"},
    {"BlanksAtTheBeginningAreLeftOut", "  \t \"a\": 1", 9, 1, "\"a\": 1", "     ^"},
    {"BlanksThatAreMarkedStay", "  {}", 0, 2, "  {}", "^~"},
    {"BlanksFromThePlaceOnStay", "    {}", 2, 1, "  {}", "^"},
    {"BlanksAloneAreLeftOut", "   ", 3, 1, "", "^"},
    {"TabIsFourBlanks", "1\t\t2", 3, 1, "1        2", "         ^"},
    {"MarkedTab", "1\t2", 1, 1, "1    2", " ^~~~"},
    {"ControlCharacterIsShownByItsCode", "\"\x1B[m\" 1", 6, 1, "\"<U+001B>[m\" 1",
     "             ^"},
    {"MarkedControlCharacter", std::string("\"\0\"", 3), 1, 1, "\"<U+0000>\"", " ^~~~~~~~"},
    {"ByteThatIsNotUtf8", "\"\xFF\" 1", 4, 1, "\"<FF>\" 1", "       ^"},
    {"TwoByteCharacter", "\"\xC3\xBC\" 1", 5, 1, "\"\xC3\xBC\" 1", "    ^"},
    {"SecondByteOfACharacter", "\"\xC3\xBC\" 1", 2, 1, "\"\xC3\xBC\" 1", " ^"},
    {"WideCharacter", "\"\xE6\x97\xA5\" 1", 6, 1, "\"\xE6\x97\xA5\" 1", "     ^"},
    {"MarkedWideCharacter", "\"\xE6\x97\xA5\"", 1, 3, "\"\xE6\x97\xA5\"", " ^~"},
    {"CombiningCharacter", "\"u\xCC\x88\" 1", 6, 1, "\"u\xCC\x88\" 1", "    ^"},
    {"ByteOrderMark", "\xEF\xBB\xBF{}", 0, 3, "<U+FEFF>{}", "^~~~~~~~"},
    {"CarriageReturnOfALinesEndIsLeftOut", "[1, 2]\r", 4, 1, "[1, 2]", "    ^"},
    {"CarriageReturnThatIsMarked", "[1]\r", 3, 1, "[1]<U+000D>", "   ^~~~~~~~"},
    {"CarriageReturnBeforeThePlace", "[1]\r", 4, 1, "[1]<U+000D>", "           ^"},
};
INSTANTIATE_TEST_SUITE_P(Places, MarkedPlace, ::testing::ValuesIn(kMarks),
                         [](const auto& row) { return row.param.name; });

// The digits 0 to 9 repeatedly, which show what part of a line is printed.
std::string digits(std::size_t first, std::size_t count) {
  std::string text;
  for (std::size_t place = first; place != first + count; ++place) {
    text += static_cast<char>('0' + place % 10);
  }
  return text;
}

struct LongLine {
  const char* name;
  std::size_t offset;
  std::size_t length;
  std::string shown;
  std::string marks;
};

std::ostream& operator<<(std::ostream& out, const LongLine& row) {
  return out << row.name;
}

class PlaceInALongLine : public ::testing::TestWithParam<LongLine> {};

TEST_P(PlaceInALongLine, IsShownWithItsSurroundings) {
  const MarkedLine marked = markLine(digits(0, 1000), GetParam().offset, GetParam().length);
  EXPECT_EQ(marked.line, GetParam().shown);
  EXPECT_EQ(marked.marks, GetParam().marks);
}

const LongLine kLongLines[] = {
    {"AtTheBeginning", 0, 2, digits(0, 74) + "...", "^~"},
    {"NearTheBeginning", 20, 1, digits(0, 74) + "...", std::string(20, ' ') + "^"},
    {"InTheMiddle", 500, 3, "..." + digits(466, 74) + "...", std::string(37, ' ') + "^~~"},
    {"MarkedBeyondWhatIsShown", 500, 300, "..." + digits(466, 74) + "...",
     std::string(37, ' ') + "^" + std::string(39, '~')},
    {"NearTheEnd", 990, 1, "..." + digits(926, 74), std::string(67, ' ') + "^"},
    {"AtTheEnd", 1000, 1, "..." + digits(926, 74), std::string(77, ' ') + "^"},
};
INSTANTIATE_TEST_SUITE_P(Places, PlaceInALongLine, ::testing::ValuesIn(kLongLines),
                         [](const auto& row) { return row.param.name; });

TEST(LongLine, IsCutToTheWidth) {
  for (const std::size_t offset : {0U, 10U, 500U, 999U, 1000U}) {
    const MarkedLine marked = markLine(digits(0, 1000), offset, 40, 30);
    EXPECT_LE(marked.line.size(), 30U) << offset;
    EXPECT_LE(marked.marks.size(), 30U) << offset;
  }
  const MarkedLine marked = markLine(digits(0, 1000), 500, 1, 30);
  EXPECT_EQ(marked.line, "..." + digits(491, 24) + "...");
  EXPECT_EQ(marked.marks, std::string(12, ' ') + "^");
}

TEST(LongLine, IsNotCutIfOnlyBlanksAreLeftOut) {
  const MarkedLine marked = markLine("\t\t\t\t" + digits(0, 70), 64, 1);
  EXPECT_EQ(marked.line, digits(0, 70));
  EXPECT_EQ(marked.marks, std::string(60, ' ') + "^");
}

TEST(LongLine, IsNotCutInsideACharacter) {
  std::string line;
  for (int count = 0; count != 400; ++count) {
    line += "\xEF\xAC\x81";
  }
  std::string part;
  for (int count = 0; count != 74; ++count) {
    part += "\xEF\xAC\x81";
  }
  for (std::size_t offset = 597; offset != 603; ++offset) {
    const MarkedLine marked = markLine(line, offset, 1);
    EXPECT_EQ(marked.line, "..." + part + "...") << offset;
    EXPECT_EQ(marked.marks, std::string(37, ' ') + "^") << offset;
  }
}

TEST(LongLine, OfStrayContinuationBytesIsCutAnywhere) {
  const MarkedLine marked = markLine(std::string(1000, '\x80'), 500, 1);
  std::string part;
  for (int count = 0; count != 18; ++count) {
    part += "<80>";
  }
  EXPECT_EQ(marked.line, "..." + part + "...");
  EXPECT_EQ(marked.marks, std::string(35, ' ') + "^~~~");
}

}  // namespace
}  // namespace update_metadata_tool::lint
