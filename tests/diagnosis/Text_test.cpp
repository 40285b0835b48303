#include "diagnosis/Text.h"

#include <cstddef>
#include <string>

#include <gtest/gtest.h>

#include "support/NaiveText.h"

namespace install::update_metadata_parser::diagnosis {
namespace {

TEST(Utf8OfUtf16, KeepsControlCharactersAndReplacesUnpairedSurrogates) {
  EXPECT_EQ(toUtf8(std::u16string(u"a\0\u001B\U0001F5FA\xDC00", 6)),
            std::string("a\0\x1B\xF0\x9F\x97\xBA\xEF\xBF\xBD", 10));
}

TEST(Utf8OfUtf16, HasCharactersOfEveryLength) {
  EXPECT_EQ(toUtf8(u"a\u00FC\uFB01\U0001F5FA"), "a\xC3\xBC\xEF\xAC\x81\xF0\x9F\x97\xBA");
}

TEST(Utf8OfUtf16, ReplacesEverySurrogateWithoutItsOtherHalf) {
  EXPECT_EQ(toUtf8(std::u16string{0xD83D}), "\xEF\xBF\xBD");
  EXPECT_EQ(toUtf8(std::u16string{0xD83D, u'x'}), "\xEF\xBF\xBDx");
  EXPECT_EQ(toUtf8(std::u16string{0xDC00, 0xD83D}), "\xEF\xBF\xBD\xEF\xBF\xBD");
}

TEST(LowerCase, ChangesOnlyLettersOfAscii) {
  std::string changed;
  for (const char byte : std::string("@AZ[`az{\xC4")) {
    changed += toLowerCase(byte);
  }
  EXPECT_EQ(changed, "@az[`az{\xC4");
}

std::string visible(const char* bytes) {
  std::string shown;
  appendVisible(firstCharacter(bytes), shown);
  return shown;
}

TEST(VisibleCharacter, IsItsCodeIfItCannotBeSeen) {
  EXPECT_EQ(visible("a"), "a");
  EXPECT_EQ(visible("\x1B"), "<U+001B>");
  EXPECT_EQ(visible("\xE2\x80\x8B"), "<U+200B>");
  EXPECT_EQ(visible("\xF3\xA0\x81\x81"), "<U+E0041>");
  EXPECT_EQ(visible("\xF0\x9F\x97\xBA"), "\xF0\x9F\x97\xBA");
  EXPECT_EQ(visible("\xFF"), "<FF>");
}

TEST(Utf16OfUtf8, AcceptsCharactersOfEveryLength) {
  EXPECT_EQ(toUtf16("a\xC3\xBC\xEF\xAC\x81\xF0\x9F\x97\xBA"), u"a\u00FC\uFB01\U0001F5FA");
}

TEST(Utf16OfUtf8, ReplacesEachByteThatIsNotPartOfACharacter) {
  EXPECT_EQ(toUtf16("a\xFF\xE2\x82z"), u"a\uFFFD\uFFFD\uFFFDz");
}

TEST(Utf8Check, RejectsMalformedText) {
  EXPECT_TRUE(isUtf8("a\xC3\xBC\xF0\x9F\x97\xBA"));
  EXPECT_FALSE(isUtf8("\xFF"));
  EXPECT_FALSE(isUtf8("a\xC3"));
  EXPECT_FALSE(isUtf8("\xC0\x80"));
  EXPECT_FALSE(isUtf8("\xED\xA0\x80"));
}

TEST(Utf8Check, FindsWhereTheTextIsMalformed) {
  EXPECT_EQ(lengthOfUtf8(""), 0U);
  EXPECT_EQ(lengthOfUtf8("a\xC3\xBC"), 3U);
  EXPECT_EQ(lengthOfUtf8("a\xC3\xBC\xF0\x9F\x97z"), 3U);
}

// The character that two, three or four bytes encode, according to the naive conversion.
bool isCharacter(const std::string& bytes) {
  const std::u16string units = test_support::naiveToUtf16(bytes);
  return test_support::naiveToUtf8(units) == bytes && (units.size() == 1 || bytes.size() == 4);
}

TEST(FirstCharacter, IsThatOfTheNaiveConversionForAllBytesThatBeginOne) {
  constexpr unsigned kOthers[] = {0x00, 0x7F, 0x80, 0x8F, 0x90, 0x9F, 0xA0, 0xBF, 0xC0, 0xFF};
  for (unsigned first = 0x80; first != 0x100; ++first) {
    for (const unsigned second : kOthers) {
      for (const unsigned third : kOthers) {
        for (const unsigned fourth : kOthers) {
          std::string bytes;
          for (const unsigned byte : {first, second, third, fourth}) {
            bytes += static_cast<char>(byte);
          }
          const std::size_t size = first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
          const bool isWhole = isCharacter(bytes.substr(0, size));
          const Character character = firstCharacter(bytes);
          ASSERT_EQ(character.isUtf8, isWhole) << ::testing::PrintToString(bytes);
          ASSERT_EQ(character.bytes, isWhole ? size : 1) << ::testing::PrintToString(bytes);
          if (isWhole) {
            std::string shown;
            test_support::appendUtf8(shown, character.code);
            ASSERT_EQ(shown, bytes.substr(0, size));
          } else {
            ASSERT_EQ(character.code, first);
          }
        }
      }
    }
  }
}

}  // namespace
}  // namespace install::update_metadata_parser::diagnosis
