#include "output/Text.h"

#include <ostream>
#include <string>

#include <gtest/gtest.h>

namespace update_metadata_tool::output {
namespace {

struct VisibleText {
  const char* name;
  std::u16string text;
  std::string shown;
};

std::ostream& operator<<(std::ostream& out, const VisibleText& row) {
  return out << row.name;
}

class VisibleTextOf : public ::testing::TestWithParam<VisibleText> {};

TEST_P(VisibleTextOf, IsSafeForATerminal) {
  EXPECT_EQ(toVisible(GetParam().text), GetParam().shown);
}

const VisibleText kVisibleTexts[] = {
    {"Empty", u"", "(empty)"},
    {"Ascii", u" ~\\\"", " ~\\\""},
    {"Nul", std::u16string(u"a\0b", 3), "a<U+0000>b"},
    {"EscapeSequence", u"\u001B[31m", "<U+001B>[31m"},
    {"LineFeed", u"a\nb", "a<U+000A>b"},
    {"Delete", u"\u007F", "<U+007F>"},
    {"LastC1Control", u"\u009F", "<U+009F>"},
    {"NoBreakSpace", u"\u00A0", "\xC2\xA0"},
    {"DirectionOverride", u"\u202Egpj.exe", "<U+202E>gpj.exe"},
    {"DirectionIsolate", u"\u2066", "<U+2066>"},
    {"LineSeparator", u"\u2028", "<U+2028>"},
    {"ByteOrderMark", u"\uFEFF", "<U+FEFF>"},
    {"SoftHyphen", u"a\u00AD", "a<U+00AD>"},
    {"ZeroWidthSpace", u"a\u200B", "a<U+200B>"},
    {"ZeroWidthJoiner", u"a\u200D", "a<U+200D>"},
    {"WordJoiner", u"\u2060", "<U+2060>"},
    {"Filler", u"\u3164\uFFA0", "<U+3164><U+FFA0>"},
    {"BrailleBlank", u"\u2800", "<U+2800>"},
    {"VowelSeparator", u"\u180E", "<U+180E>"},
    {"VariationSelector", u"a\uFE0F", "a<U+FE0F>"},
    {"VariationSelectorOfFourBytes", u"a\U000E0100", "a<U+E0100>"},
    {"Tag", u"a\U000E0041", "a<U+E0041>"},
    {"CombiningMark", u"u\u0308", "u\xCC\x88"},
    {"TwoBytes", u"\u00FC", "\xC3\xBC"},
    {"ThreeBytes", u"\uFB01", "\xEF\xAC\x81"},
    {"FourBytes", u"\U0001F5FA", "\xF0\x9F\x97\xBA"},
    {"LoneHighSurrogate", u"\xD83D", "\xEF\xBF\xBD"},
    {"LoneLowSurrogate", std::u16string{0xDC00, u'x'}, "\xEF\xBF\xBDx"},
    {"HighSurrogateBeforeText", std::u16string{0xD83D, u'x'}, "\xEF\xBF\xBDx"},
};
INSTANTIATE_TEST_SUITE_P(Texts, VisibleTextOf, ::testing::ValuesIn(kVisibleTexts),
                         [](const auto& row) { return row.param.name; });

struct VisibleName {
  const char* name;
  std::u16string text;
  std::string shown;
};

std::ostream& operator<<(std::ostream& out, const VisibleName& row) {
  return out << row.name;
}

class VisibleNameOf : public ::testing::TestWithParam<VisibleName> {};

TEST_P(VisibleNameOf, ShowsBlanksAtItsEnds) {
  EXPECT_EQ(toVisibleName(GetParam().text), GetParam().shown);
}

const VisibleName kVisibleNames[] = {
    {"Empty", u"", "(empty)"},
    {"Blanks", u"  ", "<U+0020><U+0020>"},
    {"WithoutBlanks", u"a", "a"},
    {"BlanksInside", u"a  b", "a  b"},
    {"BlanksInFront", u"  a b", "<U+0020><U+0020>a b"},
    {"BlanksBehind", u"a b  ", "a b<U+0020><U+0020>"},
    {"BlanksAround", u" a\u001B ", "<U+0020>a<U+001B><U+0020>"},
};
INSTANTIATE_TEST_SUITE_P(Names, VisibleNameOf, ::testing::ValuesIn(kVisibleNames),
                         [](const auto& row) { return row.param.name; });

struct VisibleBytes {
  const char* name;
  std::string bytes;
  std::string shown;
};

std::ostream& operator<<(std::ostream& out, const VisibleBytes& row) {
  return out << row.name;
}

class VisibleTextOfBytes : public ::testing::TestWithParam<VisibleBytes> {};

TEST_P(VisibleTextOfBytes, IsSafeForATerminal) {
  EXPECT_EQ(toVisible(GetParam().bytes), GetParam().shown);
}

const VisibleBytes kVisibleBytes[] = {
    {"Empty", "", "(empty)"},
    {"Ascii", " ~\\\"", " ~\\\""},
    {"Nul", std::string("a\0b", 3), "a<U+0000>b"},
    {"EscapeSequence", "\x1B[31m", "<U+001B>[31m"},
    {"ByteOrderMark", "\xEF\xBB\xBF{", "<U+FEFF>{"},
    {"EncodedC1Control", "\xC2\x9F", "<U+009F>"},
    {"DirectionOverride", "\xE2\x80\xAEgpj.exe", "<U+202E>gpj.exe"},
    {"TwoToFourBytes", "\xC3\xBC\xEF\xAC\x81\xF0\x9F\x97\xBA",
     "\xC3\xBC\xEF\xAC\x81\xF0\x9F\x97\xBA"},
    {"AnotherEncoding", "M\xFCnchen", "M<FC>nchen"},
    {"CutOffAtTheEnd", "a\xF0\x9F\x97", "a<F0><9F><97>"},
    {"CutOffBeforeText", "\xF0\x9F!", "<F0><9F>!"},
    {"OverlongForm", "\xC0\x80", "<C0><80>"},
    {"EncodedSurrogate", "\xED\xA0\x80", "<ED><A0><80>"},
};
INSTANTIATE_TEST_SUITE_P(Texts, VisibleTextOfBytes, ::testing::ValuesIn(kVisibleBytes),
                         [](const auto& row) { return row.param.name; });

TEST(Utf16Check, RejectsUnpairedSurrogates) {
  EXPECT_TRUE(isUtf16(u""));
  EXPECT_TRUE(isUtf16(std::u16string(u"a\0\U0001F5FA", 4)));
  EXPECT_FALSE(isUtf16(std::u16string{0xD83D}));
  EXPECT_FALSE(isUtf16(std::u16string{0xD83D, u'x'}));
  EXPECT_FALSE(isUtf16(std::u16string{0xDC00, u'x'}));
  EXPECT_FALSE(isUtf16(std::u16string{0xD83D, 0xDC00, 0xDC00}));
}

}  // namespace
}  // namespace update_metadata_tool::output
