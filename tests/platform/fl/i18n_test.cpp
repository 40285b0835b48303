#include "fl/i18n.h"

#include <cstddef>
#include <cstring>
#include <ostream>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "support/GuardedText.h"
#include "support/NaiveText.h"

namespace {

using namespace std::string_literals;

using test_support::appendUtf16;
using test_support::appendUtf8;
using test_support::GuardedText;
using test_support::naiveToUtf16;
using test_support::naiveToUtf8;

using Bytes = std::string;
using Units = std::u16string;

char toByte(unsigned value) {
  return static_cast<char>(static_cast<unsigned char>(value));
}

// ---------------------------------------------------------------------------------------------
// Both operations that read UTF-8.

struct Reading {
  const char* name;
  Units (*convert)(std::string_view);
};

void PrintTo(const Reading& reading, std::ostream* stream) {
  *stream << reading.name;
}

class Utf8ToUtf16 : public ::testing::TestWithParam<Reading> {
 protected:
  static Units convert(std::string_view text) { return GetParam().convert(text); }
};

INSTANTIATE_TEST_SUITE_P(Operations, Utf8ToUtf16,
                         ::testing::Values(Reading{"to_ustring", fl::i18n::to_ustring},
                                           Reading{"utf8_to_ustring", fl::i18n::utf8_to_ustring}),
                         [](const auto& reading) { return reading.param.name; });

TEST_P(Utf8ToUtf16, ConvertsEveryCodePointThereAndBack) {
  std::size_t count = 0;
  for (char32_t codePoint = 0; codePoint <= 0x10FFFF; ++codePoint) {
    if (codePoint >= 0xD800 && codePoint <= 0xDFFF) {
      continue;
    }
    Units units;
    appendUtf16(units, codePoint);
    Bytes bytes;
    appendUtf8(bytes, codePoint);
    ASSERT_EQ(convert(bytes), units) << static_cast<unsigned>(codePoint);
    ASSERT_EQ(fl::i18n::to_string(units), bytes) << static_cast<unsigned>(codePoint);
    ++count;
  }
  EXPECT_EQ(count, 1'112'064U);
}

TEST_P(Utf8ToUtf16, ConvertsOneTextOfAllCodePoints) {
  Units units;
  Bytes bytes;
  for (char32_t codePoint = 0; codePoint <= 0x10FFFF; ++codePoint) {
    if (codePoint < 0xD800 || codePoint > 0xDFFF) {
      appendUtf16(units, codePoint);
      appendUtf8(bytes, codePoint);
    }
  }
  EXPECT_TRUE(convert(bytes) == units);
  EXPECT_TRUE(fl::i18n::to_string(units) == bytes);
}

TEST_P(Utf8ToUtf16, AgreesWithTheTableOnEveryTextOfOneAndOfTwoBytes) {
  for (unsigned first = 0; first < 0x100; ++first) {
    const Bytes one(1, toByte(first));
    ASSERT_EQ(convert(one), naiveToUtf16(one)) << first;
    for (unsigned second = 0; second < 0x100; ++second) {
      const Bytes two = one + toByte(second);
      ASSERT_EQ(convert(two), naiveToUtf16(two)) << first << ' ' << second;
    }
  }
}

TEST_P(Utf8ToUtf16, AgreesWithTheTableAtTheEdgesOfEveryClassOfBytes) {
  constexpr unsigned kBorders[] = {0x00, 0x7F, 0x80, 0x8F, 0x90, 0x9F, 0xA0, 0xBF,
                                   0xC0, 0xC1, 0xC2, 0xDF, 0xE0, 0xE1, 0xEC, 0xED,
                                   0xEE, 0xEF, 0xF0, 0xF1, 0xF3, 0xF4, 0xF5, 0xFF};
  Bytes text(4, '\0');
  for (const unsigned first : kBorders) {
    text[0] = toByte(first);
    for (const unsigned second : kBorders) {
      text[1] = toByte(second);
      for (const unsigned third : kBorders) {
        text[2] = toByte(third);
        for (const unsigned fourth : kBorders) {
          text[3] = toByte(fourth);
          ASSERT_EQ(convert(text), naiveToUtf16(text))
              << first << ' ' << second << ' ' << third << ' ' << fourth;
        }
      }
    }
  }
}

TEST_P(Utf8ToUtf16, ConvertsOtherCharactersAtEveryPlaceBetweenAsciiOnes) {
  const Bytes kInserted[] = {"\0"s,          "\x7F",      "\x80", "\xC3\xA4", "\xE2\x82\xAC",
                             "\xED\xA0\x80", "\xE2\x82x", "\xF0", "\xFF",     "\xF0\x9F\x98\x80"};
  for (std::size_t length = 0; length <= 40; ++length) {
    for (std::size_t place = 0; place <= length; ++place) {
      for (const Bytes& inserted : kInserted) {
        Bytes text;
        for (std::size_t i = 0; i < length; ++i) {
          text += static_cast<char>('!' + i);
        }
        text.insert(place, inserted);
        ASSERT_EQ(convert(text), naiveToUtf16(text)) << length << ' ' << place << ' ' << inserted;
      }
    }
  }
}

TEST_P(Utf8ToUtf16, ConvertsTextsOfEveryLength) {
  for (std::size_t length = 0; length <= 1100; ++length) {
    const Bytes ascii(length, 'a');
    ASSERT_EQ(convert(ascii), Units(length, u'a')) << length;
    Bytes other;
    for (std::size_t i = 0; i < length; ++i) {
      other += i % 3 == 0 ? "\xC3\xA4" : "z";
    }
    ASSERT_EQ(convert(other), naiveToUtf16(other)) << length;
  }
}

TEST_P(Utf8ToUtf16, ReadsNothingBeyondTheEndOfTheText) {
  GuardedText guarded;
  for (const char* const ending : {"", "\xC3", "\xE2\x82", "\xF0\x9F\x98", "\xFF"}) {
    for (std::size_t length = std::strlen(ending); length <= 40; ++length) {
      const Bytes text = Bytes(length - std::strlen(ending), 'a') + ending;
      EXPECT_EQ(convert(guarded.place(text)), naiveToUtf16(text)) << text;
    }
  }
  for (std::size_t length = 0; length <= 40; ++length) {
    Units text(length, u'a');
    if (length != 0) {
      text.back() = 0xD83D;
    }
    const void* const units = text.data();
    const void* const address =
        guarded.place({static_cast<const char*>(units), length * sizeof(char16_t)}).data();
    const std::u16string_view atTheEnd(static_cast<const char16_t*>(address), length);
    EXPECT_EQ(fl::i18n::to_string(atTheEnd), naiveToUtf8(text)) << length;
  }
}

TEST_P(Utf8ToUtf16, ConvertsAnEmptyTextToAnEmptyOne) {
  EXPECT_EQ(convert(std::string_view()), u"");
  EXPECT_EQ(convert(""), u"");
}

struct NamedText {
  const char* name;
  Bytes bytes;
  Units units;
};

void PrintTo(const NamedText& text, std::ostream* stream) {
  *stream << text.name;
}

const NamedText kReadTexts[] = {
    {"KeepsANul", "a\0b\0"s, u"a\0b\0"s},
    {"KeepsAByteOrderMark", "\xEF\xBB\xBF{}", u"\uFEFF{}"},
    {"KeepsANoncharacter", "\xEF\xBF\xBF", Units(1, 0xFFFF)},
    {"PairsTheHighestCodePoint", "\xF4\x8F\xBF\xBF", Units{0xDBFF, 0xDFFF}},
    {"RejectsWhatLiesAboveIt", "\xF4\x90\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD"},
    {"RejectsAStrayContinuationByte", "a\x80z", u"a\uFFFDz"},
    {"RejectsAnOverlongSlash", "\xC0\xAF", u"\uFFFD\uFFFD"},
    {"RejectsAnOverlongSlashOfThreeBytes", "\xE0\x80\xAF", u"\uFFFD\uFFFD\uFFFD"},
    {"RejectsAnOverlongSlashOfFourBytes", "\xF0\x80\x80\xAF", u"\uFFFD\uFFFD\uFFFD\uFFFD"},
    {"RejectsAnEncodedSurrogate", "\xED\xA0\x80", u"\uFFFD\uFFFD\uFFFD"},
    {"RejectsAnEncodedSurrogatePair", "\xED\xA0\xBD\xED\xB8\x80",
     u"\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD"},
    {"ReplacesACutSequenceOnce", "\xE2\x82", u"\uFFFD"},
    {"ReplacesALongerCutSequenceOnce", "\xF0\x9F\x98", u"\uFFFD"},
    {"ReadsOnAfterACutSequence", "\xF0\x9F\x98z\xE2\x82\xC3\xA4", u"\uFFFDz\uFFFD\u00E4"},
    {"ReplacesBytesThatNeverOccur", "\xC0\xC1\xF5\xFE\xFF", u"\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD"},
};

class Utf8Text : public ::testing::TestWithParam<NamedText> {};

INSTANTIATE_TEST_SUITE_P(Reading, Utf8Text, ::testing::ValuesIn(kReadTexts),
                         [](const auto& row) { return row.param.name; });

TEST_P(Utf8Text, IsReadAlikeByBothOperations) {
  EXPECT_EQ(fl::i18n::to_ustring(GetParam().bytes), GetParam().units);
  EXPECT_EQ(fl::i18n::utf8_to_ustring(GetParam().bytes), GetParam().units);
}

// ---------------------------------------------------------------------------------------------
// UTF-16 to UTF-8.

TEST(ToString, AgreesWithTheNaiveConversionOnEveryUnit) {
  for (unsigned unit = 0; unit <= 0xFFFF; ++unit) {
    const Units text(1, static_cast<char16_t>(unit));
    ASSERT_EQ(fl::i18n::to_string(text), naiveToUtf8(text)) << unit;
  }
}

TEST(ToString, AgreesWithTheNaiveConversionAtTheEdgesOfEveryClassOfUnits) {
  constexpr char16_t kBorders[] = {0x0000, 0x007F, 0x0080, 0x07FF, 0x0800, 0xD7FF, 0xD800, 0xDBFF,
                                   0xDC00, 0xDFFF, 0xE000, 0xFEFF, 0xFFFD, 0xFFFE, 0xFFFF};
  for (const char16_t first : kBorders) {
    for (const char16_t second : kBorders) {
      for (const char16_t third : kBorders) {
        const Units text{first, second, third};
        ASSERT_EQ(fl::i18n::to_string(text), naiveToUtf8(text))
            << unsigned{first} << ' ' << unsigned{second} << ' ' << unsigned{third};
      }
    }
  }
}

TEST(ToString, ConvertsOtherCharactersAtEveryPlaceBetweenAsciiOnes) {
  const Units kInserted[] = {u"\0"s, u"\u007F", u"\u0080", u"\u20AC", {0xD83D}, {0xD83D, 0xDE00}};
  for (std::size_t length = 0; length <= 40; ++length) {
    for (std::size_t place = 0; place <= length; ++place) {
      for (const Units& inserted : kInserted) {
        Units text;
        for (std::size_t i = 0; i < length; ++i) {
          text += static_cast<char16_t>(u'!' + i);
        }
        text.insert(place, inserted);
        ASSERT_EQ(fl::i18n::to_string(text), naiveToUtf8(text)) << length << ' ' << place;
      }
    }
  }
}

TEST(ToString, ConvertsTextsOfEveryLength) {
  for (std::size_t length = 0; length <= 1100; ++length) {
    ASSERT_EQ(fl::i18n::to_string(Units(length, u'a')), Bytes(length, 'a')) << length;
    const Units euros(length, u'\u20AC');
    ASSERT_EQ(fl::i18n::to_string(euros), naiveToUtf8(euros)) << length;
  }
}

const NamedText kWrittenTexts[] = {
    {"GivesAnEmptyTextForAnEmptyOne", "", u""},
    {"KeepsANul", "a\0b\0"s, u"a\0b\0"s},
    {"KeepsAByteOrderMark", "\xEF\xBB\xBFz", u"\uFEFFz"},
    {"JoinsAPair", "\xF0\x9F\x98\x80", {0xD83D, 0xDE00}},
    {"ReplacesALoneHighSurrogate", "a\xEF\xBF\xBDz", {u'a', 0xD83D, u'z'}},
    {"ReplacesALoneLowSurrogate", "a\xEF\xBF\xBDz", {u'a', 0xDE00, u'z'}},
    {"ReplacesAFinalHighSurrogate", "a\xEF\xBF\xBD", {u'a', 0xD83D}},
    {"ReplacesBothOfAReversedPair", "\xEF\xBF\xBD\xEF\xBF\xBD", {0xDE00, 0xD83D}},
    {"ReplacesTheFirstOfTwoHighOnes", "\xEF\xBF\xBD\xF0\x9F\x98\x80", {0xD83D, 0xD83D, 0xDE00}},
};

class Utf16Text : public ::testing::TestWithParam<NamedText> {};

INSTANTIATE_TEST_SUITE_P(Writing, Utf16Text, ::testing::ValuesIn(kWrittenTexts),
                         [](const auto& row) { return row.param.name; });

TEST_P(Utf16Text, IsWrittenAsUtf8) {
  EXPECT_EQ(fl::i18n::to_string(GetParam().units), GetParam().bytes);
}

}  // namespace
