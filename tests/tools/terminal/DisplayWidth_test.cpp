#include "terminal/DisplayWidth.h"

#include <ostream>
#include <string>

#include <gtest/gtest.h>

#include "terminal/Characters.h"

namespace update_metadata_tool::terminal {
namespace {

struct CharacterWidth {
  const char* name;
  char32_t character;
  std::size_t width;
};

std::ostream& operator<<(std::ostream& out, const CharacterWidth& row) {
  return out << row.name;
}

class CharacterWidths : public ::testing::TestWithParam<CharacterWidth> {};

TEST_P(CharacterWidths, AreThoseOfTerminals) {
  EXPECT_EQ(displayWidth(GetParam().character), GetParam().width);
}

const CharacterWidth kCharacterWidths[] = {
    {"Letter", U'a', 1},
    {"BeforeTheFirstMark", 0x02FF, 1},
    {"FirstMark", 0x0300, 0},
    {"LastMark", 0xE01EF, 0},
    {"HangulInitial", 0x1100, 2},
    {"BeforeTheWatch", 0x2319, 1},
    {"Watch", 0x231A, 2},
    {"HourglassWithSand", 0x23F3, 2},
    {"Umbrella", 0x2614, 2},
    {"HighVoltage", 0x26A1, 2},
    {"CheckMark", 0x2705, 2},
    {"CrossMark", 0x274C, 2},
    {"Star", 0x2B50, 2},
    {"HalfSpace", 0x303F, 1},
    {"Ideograph", 0x4E00, 2},
    {"FullWidthLetter", 0xFF21, 2},
    {"HalfWidthLetter", 0xFF71, 1},
    {"WorldMap", 0x1F5FA, 1},
    {"BeforeTheOrangeCircle", 0x1F7DF, 1},
    {"OrangeCircle", 0x1F7E0, 2},
    {"BrownSquare", 0x1F7EB, 2},
    {"LastWide", 0x3FFFD, 2},
    {"BehindTheLastWide", 0x3FFFE, 1},
};
INSTANTIATE_TEST_SUITE_P(Characters, CharacterWidths, ::testing::ValuesIn(kCharacterWidths),
                         [](const auto& row) { return row.param.name; });

struct CutText {
  const char* name;
  std::string text;
  std::size_t width;  ///< of the whole text
  std::size_t room;
  std::string cut;
};

std::ostream& operator<<(std::ostream& out, const CutText& row) {
  return out << row.name;
}

class CutTexts : public ::testing::TestWithParam<CutText> {};

TEST_P(CutTexts, AreMeasuredInColumns) {
  EXPECT_EQ(displayWidth(GetParam().text), GetParam().width);
}

TEST_P(CutTexts, LoseTheirMiddleWhereTheyDoNotFit) {
  const std::string cut = cutInTheMiddle(GetParam().text, GetParam().room);
  EXPECT_EQ(cut, GetParam().cut);
  EXPECT_LE(displayWidth(cut), GetParam().room);
}

const CutText kCutTexts[] = {
    {"Empty", "", 0, 0, ""},
    {"NoRoom", "abc", 3, 0, ""},
    {"RoomForTheEllipsis", "abc", 3, 1, kEllipsis},
    {"RoomForOneMore", "abc", 3, 2, "a" + kEllipsis},
    {"Fits", "abc", 3, 3, "abc"},
    {"OneTooLong", "abcd", 4, 3, "a" + kEllipsis + "d"},
    {"EvenRoom", "abcdefgh", 8, 6, "abc" + kEllipsis + "gh"},
    {"OddRoom", "abcdefgh", 8, 7, "abc" + kEllipsis + "fgh"},
    {"TwoBytesOneColumn", kUmlaut + kUmlaut + kUmlaut, 3, 2, kUmlaut + kEllipsis},
    {"WideCharacters", kIdeograph + kIdeograph + kIdeograph, 6, 5,
     kIdeograph + kEllipsis + kIdeograph},
    {"HalfAWideCharacter", kIdeograph + kIdeograph + kIdeograph, 6, 4, kIdeograph + kEllipsis},
    {"NoRoomForAWideOne", kPicture + kPicture, 4, 2, kEllipsis},
    {"MarksStayWithTheirCharacters", "a" + kAcute + "bcd" + kAcute, 4, 3,
     "a" + kAcute + kEllipsis + "d" + kAcute},
    {"MarkInFront", kAcute + "abc", 3, 2, kAcute + "a" + kEllipsis},
};
INSTANTIATE_TEST_SUITE_P(Texts, CutTexts, ::testing::ValuesIn(kCutTexts),
                         [](const auto& row) { return row.param.name; });

TEST(Padding, CountsColumns) {
  EXPECT_EQ(padRight(kIdeograph, 4), kIdeograph + "  ");
  EXPECT_EQ(padLeft(kIdeograph, 4), "  " + kIdeograph);
  EXPECT_EQ(padRight("abc", 2), "abc");
  EXPECT_EQ(padLeft("abc", 2), "abc");
}

}  // namespace
}  // namespace update_metadata_tool::terminal
