// All texts of three bytes, and all texts of four bytes that begin a four-byte sequence with one
// representative per class of the remaining bytes, alone and amid ASCII: they convert as the naive
// conversion does.

#include <cstddef>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "fl/i18n.h"
#include "support/GuardedText.h"
#include "support/NaiveText.h"
#include "support/ValueText.h"

namespace {

using test_support::GuardedText;
using test_support::naiveToUtf16;
using test_support::naiveToUtf8;
using test_support::quoted;

char toByte(int value) {
  return static_cast<char>(static_cast<unsigned char>(value));
}

class TextsStartingWith : public ::testing::TestWithParam<int> {
 protected:
  // Converts the text at the end of readable memory.
  void expectAgreement(const std::string& text) {
    const std::u16string expected = naiveToUtf16(text);
    const std::string_view placed = memory_.place(text);
    ASSERT_EQ(fl::i18n::to_ustring(placed), expected) << quoted(text);
    ASSERT_EQ(fl::i18n::utf8_to_ustring(placed), expected) << quoted(text);
    ++count_;
  }

  void TearDown() override { RecordProperty("inputs", std::to_string(count_)); }

  std::size_t count_ = 0;

 private:
  GuardedText memory_;
};

TEST_P(TextsStartingWith, AnyByteAndOfThreeBytesAreReadAsTheTableSays) {
  std::string text(3, toByte(GetParam()));
  for (int second = 0; second < 256; ++second) {
    text[1] = toByte(second);
    for (int third = 0; third < 256; ++third) {
      text[2] = toByte(third);
      expectAgreement(text);
      if (HasFatalFailure()) {
        return;
      }
    }
  }
}

TEST_P(TextsStartingWith, AnyByteAndOfFourBytesAreReadAsTheTableSays) {
  constexpr int kBorders[] = {0x00, 0x41, 0x7F, 0x80, 0x8F, 0x90, 0x9F, 0xA0, 0xBF, 0xC0,
                              0xC2, 0xDF, 0xE0, 0xE1, 0xED, 0xEF, 0xF0, 0xF1, 0xF4, 0xFF};
  std::string text(4, toByte(GetParam()));
  for (const int second : kBorders) {
    text[1] = toByte(second);
    for (const int third : kBorders) {
      text[2] = toByte(third);
      for (const int fourth : kBorders) {
        text[3] = toByte(fourth);
        expectAgreement(text);
        expectAgreement("abcdefgh" + text + "ijklmnopq");
        if (HasFatalFailure()) {
          return;
        }
      }
    }
  }
}

TEST_P(TextsStartingWith, AnyUnitAreWrittenAsTheNaiveConversionDoes) {
  constexpr char16_t kBorders[] = {0x0000, 0x007F, 0x0080, 0x07FF, 0x0800, 0xD7FF, 0xD800, 0xD83D,
                                   0xDBFF, 0xDC00, 0xDE00, 0xDFFF, 0xE000, 0xFFFD, 0xFFFF};
  for (int low = 0; low < 256; ++low) {
    const auto unit = static_cast<char16_t>(GetParam() * 256 + low);
    for (const char16_t second : kBorders) {
      for (const char16_t third : kBorders) {
        const std::u16string text = {unit, second, third};
        ASSERT_EQ(fl::i18n::to_string(text), naiveToUtf8(text)) << quoted(naiveToUtf8(text));
        ++count_;
      }
    }
  }
}

INSTANTIATE_TEST_SUITE_P(EveryByte, TextsStartingWith, ::testing::Range(0, 256));

}  // namespace
