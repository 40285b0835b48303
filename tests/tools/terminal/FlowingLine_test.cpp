#include "terminal/FlowingLine.h"

#include <cstddef>
#include <ostream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/LongNames.h"
#include "terminal/Characters.h"

namespace update_metadata_tool::terminal {
namespace {

struct Piece {
  enum { kWords, kName } kind;
  std::string text;
};

Piece words(const std::string& text) {
  return {Piece::kWords, text};
}

Piece name(const std::string& text) {
  return {Piece::kName, text};
}

struct Flow {
  const char* name;
  std::vector<Piece> pieces;
  std::string text;
};

std::ostream& operator<<(std::ostream& out, const Flow& row) {
  return out << row.name;
}

class Flows : public ::testing::TestWithParam<Flow> {};

TEST_P(Flows, FitTwentyColumns) {
  FlowingLine line(20, 2);
  for (const Piece& piece : GetParam().pieces) {
    piece.kind == Piece::kName ? line.name(piece.text) : line.words(piece.text);
  }
  EXPECT_EQ(line.text(), GetParam().text);
  EXPECT_LE(test_support::widestLine(line.text()), 20U);
}

const std::string kNineteen(19, 'x');
const std::string kTwenty(20, 'x');

const Flow kFlows[] = {
    {"Nothing", {}, ""},
    {"NoWords", {words("")}, ""},
    {"OnlyBlanks", {words("  ")}, ""},
    {"WordsThatFit", {words("just as wide as that")}, "just as wide as that"},
    {"WordsWrapAtBlanks", {words("one more than as wide")}, "one more than as\n  wide"},
    {"BlanksAreDroppedWhereWordsWrap",
     {words("one more than as    wide")},
     "one more than as\n  wide"},
    {"BlanksBetweenWordsStay", {words("a:   b")}, "a:   b"},
    {"LeadingBlanksStay", {words("    a b")}, "    a b"},
    {"IndentCounts",
     {words("a bcdefghijklmnopqrst"), words(" uv")},
     "a\n bcdefghijklmnopqrst\n  uv"},
    {"WideWords",
     {words(kIdeograph + kIdeograph + kIdeograph + kIdeograph + kIdeograph + " "),
      words(kIdeograph + kIdeograph + kIdeograph + kIdeograph + kIdeograph)},
     kIdeograph + kIdeograph + kIdeograph + kIdeograph + kIdeograph + "\n  " + kIdeograph +
         kIdeograph + kIdeograph + kIdeograph + kIdeograph},
    {"NumbersKeepTheirUnits", {words("this would be at 17 bytes")}, "this would be at\n  17 bytes"},
    {"NumbersKeepTheirMark", {words("this would be at ! -5 B")}, "this would be at\n  ! -5 B"},
    {"NumbersAtTheEnd", {words("this would be: 17  ")}, "this would be: 17"},
    {"NumbersInARow", {words("1 2 3 4 5 6 7 8 9 0 1 2 3")}, "1 2 3 4\n  5 6 7 8 9 0 1 2 3"},
    {"LongNumbersLoseTheirUnits",
     {words("at 123456789012345678 bytes (8.0 EiB)")},
     "at\n  123456789012345678\n  bytes (8.0 EiB)"},
    {"LongerNumbersLoseTheirIndent",
     {words("    ! -9223372036854775808 bytes")},
     "    !\n-9223372036854775808\n  bytes"},
    {"NumbersThatFillALineKeepTogether",
     {words("at -9223372036854775808, or")},
     "at\n-9223372036854775808\n  , or"},
    {"NumbersThatFillALineLoseTheirBound",
     {words("    Deleted <-9223372036854775808")},
     "    Deleted <\n-9223372036854775808"},
    {"NumbersAtTheBeginningLoseTheirIndent", {words("    " + kNineteen)}, " " + kNineteen},
    {"NamesWrapAnywhere",
     {words("    "), name("one more than as wide as that")},
     "    one more than as\n   wide as that"},
    {"NamesLoseNoBlanks", {name(kTwenty + "   y")}, kTwenty + "\n     y"},
    {"NamesThatFitIntoTheNextLine",
     {words("  + kind: "), name("just as wide here")},
     "  + kind:\n  just as wide here"},
    {"NamesThatFitNoLine",
     {words("  + kind: "), name("more than is wide here")},
     "  + kind: more than \n  is wide here"},
    {"NamesWithoutRoomForTheirBeginning",
     {words("these are 19 columns "), name(kTwenty)},
     "these are 19 columns\n  xxxxxxxxxxxxxxxxxx\n  xx"},
    {"WordsAfterAName", {name("abc"), words(": 17 bytes (1.0 KiB)")}, "abc: 17 bytes\n  (1.0 KiB)"},
    {"WordsAfterANameThatFillsItsLine",
     {name(kTwenty), words(": 17 bytes")},
     kTwenty + "\n  : 17 bytes"},
    {"MarksStayWithTheirCharacters",
     {name(kTwenty + kAcute + "y" + kAcute)},
     kTwenty + kAcute + "\n  y" + kAcute},
    {"WideCharactersStayWhole", {name(kNineteen + kIdeograph)}, kNineteen + "\n  " + kIdeograph},
};
INSTANTIATE_TEST_SUITE_P(Lines, Flows, ::testing::ValuesIn(kFlows),
                         [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace update_metadata_tool::terminal
