#include "json/scan/StringDecoding.h"

#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "json/ParseResult.h"
#include "support/GuardedText.h"
#include "support/ValueText.h"

namespace foundation::json {
namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;
using test_support::GuardedText;
using test_support::quoted;

/// The outcome of decoding a text from its first byte.
struct Decoding {
  ParseResult result;
  std::ptrdiff_t accepted;  ///< bytes consumed
  std::string text;         ///< only on success

  friend bool operator==(const Decoding& left, const Decoding& right) {
    return left.result == right.result && left.accepted == right.accepted &&
           left.text == right.text;
  }
  friend void PrintTo(const Decoding& decoding, std::ostream* stream) {
    *stream << "code " << decoding.result << " after " << decoding.accepted
            << " bytes: " << quoted(decoding.text);
  }
};

// The text ends where readable memory ends.
Decoding decode(std::string_view text, std::string start = "") {
  GuardedText guarded;
  const std::string_view placed = guarded.place(text);
  const char* position = placed.data();
  const ParseResult result = decodeString(position, position + placed.size(), start);
  return {result, position - placed.data(), result == kSuccess ? start : ""};
}

struct EncodedString {
  const char* name;
  std::string_view text;
  Decoding decoding;
};

void PrintTo(const EncodedString& row, std::ostream* stream) {
  *stream << quoted(row.text);
}

class StringDecoding : public ::testing::TestWithParam<EncodedString> {};

TEST_P(StringDecoding, EndsAfterTheQuoteOrAtTheByteThatIsNotAccepted) {
  EXPECT_EQ(decode(GetParam().text), GetParam().decoding);
}

const EncodedString kDecodedTexts[] = {
    {"ClosingQuoteOnly", "\"", {kSuccess, 1, ""}},
    {"Plain", "abc\"def", {kSuccess, 4, "abc"}},
    {"AllShortEscapes", R"(\"\/\\\b\f\n\r\t")", {kSuccess, 17, "\"/\\\b\f\n\r\t"}},
    {"Unit", R"(\u0041")", {kSuccess, 7, "A"}},
    {"Nul", R"(\u0000")", {kSuccess, 7, "\0"s}},
    {"Pair", R"(\uD83D\uDE00")", {kSuccess, 13, "\xF0\x9F\x98\x80"}},
    {"LowSurrogate", R"(\uDC00")", {kSuccess, 7, "\xEF\xBF\xBD"}},
    {"HighSurrogateBeforeAnotherUnit",
     R"(\uDBFF\u0041")",
     {kSuccess, 13,
      "\xEF\xBF\xBD"
      "A"}},
    {"LastUnitBeforeTheSurrogates", R"(\uD7FF")", {kSuccess, 7, "\xED\x9F\xBF"}},
    {"FirstUnitAfterTheSurrogates", R"(\uE000")", {kSuccess, 7, "\xEE\x80\x80"}},
    {"Mixed",
     R"(a\nb\u00e9c"d")",
     {kSuccess, 12,
      "a\nb\xC3\xA9"
      "c"}},
    {"RawBytes", "\\n\t\n\x01\xFF\"", {kSuccess, 7, "\n\t\n\x01\xFF"}},
    {"Nothing", "", {kEndOfText, 0, ""}},
    {"NoQuote", "abc", {kEndOfText, 3, ""}},
    {"NoQuoteAfterAnEscape", R"(\n)", {kEndOfText, 2, ""}},
    {"Backslash", "\\", {kEndOfText, 1, ""}},
    {"BackslashAfterText", "abc\\", {kEndOfText, 4, ""}},
    {"EscapedQuote", R"(\")", {kEndOfText, 2, ""}},
    {"NoDigits", R"(\u)", {kEndOfText, 2, ""}},
    {"OneByteAfterTheU", R"(\u1)", {kEndOfText, 2, ""}},
    {"TwoBytesAfterTheU", R"(\u12)", {kEndOfText, 2, ""}},
    {"ThreeBytesAfterTheU", R"(\u123)", {kEndOfText, 2, ""}},
    {"ThreeBytesWithTheQuote", R"(\u12")", {kEndOfText, 2, ""}},
    {"FourDigitsAtTheEnd", R"(\u1234)", {kEndOfText, 6, ""}},
    {"HighSurrogateAtTheEnd", R"(\uD800)", {kEndOfText, 6, ""}},
    {"FiveBytesAfterAHighSurrogate", R"(\uD800\uDC0)", {kEndOfText, 6, ""}},
    {"FiveOtherBytesAfterAHighSurrogate", R"(\uD800abcd")", {kEndOfText, 6, ""}},
    {"PairAtTheEnd", R"(\uD800\uDC00)", {kEndOfText, 12, ""}},
    {"SixOtherBytesAfterAHighSurrogate", R"(\uD800abcde")", {kBadUnicodeEscape, 6, ""}},
    {"BackslashWithoutU", R"(\uD800\nabcd")", {kBadUnicodeEscape, 7, ""}},
    {"UWithoutBackslash", R"(\uD800uDC000")", {kBadUnicodeEscape, 6, ""}},
    {"BadDigitOfTheSecondUnit", R"(\uD800\uDCx0")", {kBadUnicodeEscape, 10, ""}},
    {"BadFirstDigit", R"(\ux234")", {kBadUnicodeEscape, 2, ""}},
    {"BadSecondDigit", R"(\u1x34")", {kBadUnicodeEscape, 3, ""}},
    {"BadThirdDigit", R"(\u12x4")", {kBadUnicodeEscape, 4, ""}},
    {"BadFourthDigit", R"(\u123x")", {kBadUnicodeEscape, 5, ""}},
    {"QuoteAmongTheDigits", R"(\u123"ab)", {kBadUnicodeEscape, 5, ""}},
};
INSTANTIATE_TEST_SUITE_P(Texts, StringDecoding, ::testing::ValuesIn(kDecodedTexts),
                         [](const auto& row) { return row.param.name; });

TEST(DecodedBytes, AreAppended) {
  EXPECT_EQ(decode("\\tend\"", "start"), (Decoding{kSuccess, 6, "start\tend"}));
}

TEST(DecodedBytes, AreThoseOfALongRowOfEscapesToo) {
  std::string text;
  std::string expected;
  for (int escape = 0; escape != 300; ++escape) {
    text += R"(\u00e9\n)";
    expected += "\xC3\xA9\n";
  }
  EXPECT_EQ(decode(text + '"'),
            (Decoding{kSuccess, static_cast<std::ptrdiff_t>(text.size() + 1), expected}));
}

TEST(DecodedBytes, AreThoseOfALongStringToo) {
  std::string text;
  std::string expected;
  for (int part = 0; part != 200000; ++part) {
    text += R"(twelve bytes\n)";
    expected += "twelve bytes\n";
  }
  text += '"';
  const char* position = text.data();
  const char* const end = position + text.size();
  std::string decoded;
  EXPECT_EQ(decodeString(position, end, decoded), kSuccess);
  EXPECT_EQ(position, end);
  EXPECT_TRUE(decoded == expected);
}

TEST(Escapes, AreNine) {
  for (int number = 0; number < 256; ++number) {
    const char byte = static_cast<char>(static_cast<unsigned char>(number));
    const std::string text = "\\"s + byte + "0041\"";
    if ("\"/\\bfnrtu"sv.find(byte) == std::string_view::npos) {
      EXPECT_EQ(decode(text), (Decoding{kBadEscape, 1, ""})) << "byte " << number;
    } else {
      EXPECT_EQ(decode(text).result, kSuccess) << "byte " << number;
    }
  }
}

TEST(HexadecimalDigits, AreTwentyTwo) {
  for (int number = 0; number < 256; ++number) {
    const char byte = static_cast<char>(static_cast<unsigned char>(number));
    const std::string text = "\\u004"s + byte + "\"";
    const std::size_t digit = "0123456789abcdefABCDEF"sv.find(byte);
    if (digit == std::string_view::npos) {
      EXPECT_EQ(decode(text), (Decoding{kBadUnicodeEscape, 5, ""})) << "byte " << number;
    } else {
      const std::size_t value = digit < 16 ? digit : digit - 6;
      EXPECT_EQ(decode(text),
                (Decoding{kSuccess, 7, std::string(1, static_cast<char>(0x40 + value))}));
    }
  }
}

}  // namespace
}  // namespace foundation::json
