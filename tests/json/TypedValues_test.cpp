#include "json/TypedValues.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <ostream>
#include <string>
#include <string_view>
#include <tuple>

#include <gtest/gtest.h>

#include "json/ParseResult.h"
#include "json/TreeBuilder.h"
#include "support/ValueText.h"

namespace foundation::json {
namespace {

using namespace std::string_view_literals;
using test_support::quoted;
using test_support::valueText;

constexpr std::string_view kSignedNames[] = {"int8", "int16", "int32", "int64"};
constexpr std::string_view kUnsignedNames[] = {"uint8", "uint16", "uint32", "uint64"};
constexpr std::string_view kOtherNames[] = {
    "",       "int",    "uint",  "int7",  "Int8",  "INT64",   "int8 ", " int8",   "int08",
    "int128", "double", "float", "sint8", "int88", "uint641", "bool",  "int8\0"sv};

TEST(TypeNames, AreEightComparedExactly) {
  for (const std::string_view name : kSignedNames) {
    EXPECT_EQ(knownTypeName(name), name);
  }
  for (const std::string_view name : kUnsignedNames) {
    EXPECT_EQ(knownTypeName(name), name);
  }
  for (const std::string_view name : kOtherNames) {
    EXPECT_EQ(knownTypeName(name), "") << quoted(name);
  }
}

TEST(TypeNames, OutliveTheTextThatTheyCameFrom) {
  std::string text = "uint16";
  const std::string_view known = knownTypeName(text);
  text = "xxxxxx";
  EXPECT_EQ(known, "uint16");
}

TEST(TypeNames, AreOfTheSignedOrTheUnsignedGroup) {
  for (const std::string_view name : kSignedNames) {
    EXPECT_TRUE(isSignedType(name)) << name;
  }
  for (const std::string_view name : kUnsignedNames) {
    EXPECT_FALSE(isSignedType(name)) << name;
  }
}

// -------------------------------------------------------------------------------------------------
// Conversion

constexpr std::int64_t kMin = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t kMax = std::numeric_limits<std::int64_t>::max();
constexpr std::uint64_t kUnsignedMax = std::numeric_limits<std::uint64_t>::max();

struct Conversion {
  const char* name;
  std::string_view digits;
  std::int64_t positive;
  std::int64_t negative;
  std::uint64_t unsignedPositive;
};

void PrintTo(const Conversion& row, std::ostream* stream) {
  *stream << row.digits;
}

class IntegerConversion : public ::testing::TestWithParam<Conversion> {};

TEST_P(IntegerConversion, SaturatesSignedNumbers) {
  EXPECT_EQ(toSaturatedInt64(GetParam().digits, false), GetParam().positive);
  EXPECT_EQ(toSaturatedInt64(GetParam().digits, true), GetParam().negative);
}

TEST_P(IntegerConversion, SaturatesUnsignedNumbersAndReadsNegativeOnesAsZero) {
  EXPECT_EQ(toSaturatedUint64(GetParam().digits, false), GetParam().unsignedPositive);
  EXPECT_EQ(toSaturatedUint64(GetParam().digits, true), 0u);
}

constexpr Conversion kConversions[] = {
    {"Zero", "0", 0, 0, 0},
    {"One", "1", 1, -1, 1},
    {"Nine", "9", 9, -9, 9},
    {"BeyondEightBits", "300", 300, -300, 300},
    {"EighteenDigits", "999999999999999999", 999999999999999999, -999999999999999999,
     999999999999999999},
    {"NineteenDigits", "1000000000000000000", 1000000000000000000, -1000000000000000000,
     1000000000000000000},
    {"BeforeTheSignedMaximum", "9223372036854775806", kMax - 1, -(kMax - 1), 9223372036854775806u},
    {"SignedMaximum", "9223372036854775807", kMax, -kMax, 9223372036854775807u},
    {"SignedMinimum", "9223372036854775808", kMax, kMin, 9223372036854775808u},
    {"AfterTheSignedMinimum", "9223372036854775809", kMax, kMin, 9223372036854775809u},
    {"NextTen", "9223372036854775810", kMax, kMin, 9223372036854775810u},
    {"LargestOfNineteenDigits", "9999999999999999999", kMax, kMin, 9999999999999999999u},
    {"TwentyDigits", "10000000000000000000", kMax, kMin, 10000000000000000000u},
    {"BeforeTheUnsignedMaximum", "18446744073709551614", kMax, kMin, kUnsignedMax - 1},
    {"UnsignedMaximum", "18446744073709551615", kMax, kMin, kUnsignedMax},
    {"AfterTheUnsignedMaximum", "18446744073709551616", kMax, kMin, kUnsignedMax},
    {"NextTenAfterTheUnsignedMaximum", "18446744073709551620", kMax, kMin, kUnsignedMax},
    {"LargestOfTwentyDigits", "99999999999999999999", kMax, kMin, kUnsignedMax},
    {"WouldWrapRoundToASmallNumber", "184467440737095516160000000001", kMax, kMin, kUnsignedMax},
    {"FortyDigits", "1234567890123456789012345678901234567890", kMax, kMin, kUnsignedMax},
};
INSTANTIATE_TEST_SUITE_P(Digits, IntegerConversion, ::testing::ValuesIn(kConversions),
                         [](const auto& row) { return row.param.name; });

TEST(IntegerConversionOfManyDigits, Saturates) {
  const std::string digits(100000, '7');
  EXPECT_EQ(toSaturatedInt64(digits, false), kMax);
  EXPECT_EQ(toSaturatedInt64(digits, true), kMin);
  EXPECT_EQ(toSaturatedUint64(digits, false), kUnsignedMax);
  EXPECT_EQ(toSaturatedUint64(digits, true), 0u);
}

// -------------------------------------------------------------------------------------------------
// One element

struct Element {
  const char* name;
  std::string_view text;
  ParseResult result;
  std::size_t accepted;     ///< bytes consumed
  std::string_view digits;  ///< only on success
  bool negative;
};

void PrintTo(const Element& row, std::ostream* stream) {
  *stream << quoted(row.text);
}

class IntegerElement : public ::testing::TestWithParam<Element> {};

TEST_P(IntegerElement, IsAMinusSignAndDigits) {
  const Element& row = GetParam();
  const char* const begin = row.text.data();
  const char* position = begin;
  std::string_view digits;
  bool negative = false;
  const ParseResult result = readInteger(position, begin + row.text.size(), digits, negative);
  EXPECT_EQ(std::make_tuple(result, position - begin),
            std::make_tuple(row.result, static_cast<std::ptrdiff_t>(row.accepted)));
  if (result == kSuccess) {
    EXPECT_EQ(std::make_tuple(digits, negative), std::make_tuple(row.digits, row.negative));
  }
}

constexpr Element kElements[] = {
    {"Digit", "5", kSuccess, 1, "5", false},
    {"Digits", "123]", kSuccess, 3, "123", false},
    {"Negative", "-123,", kSuccess, 4, "123", true},
    {"Zero", "0]", kSuccess, 1, "0", false},
    {"ZeroAtTheEnd", "0", kSuccess, 1, "0", false},
    {"NegativeZero", "-0]", kSuccess, 2, "0", true},
    {"ZeroStandsAlone", "012]", kSuccess, 1, "0", false},
    {"NegativeZeroStandsAlone", "-012]", kSuccess, 2, "0", true},
    {"BlankAfter", "7 .", kSuccess, 1, "7", false},
    {"LetterAfter", "7x", kSuccess, 1, "7", false},
    {"BracketAfter", "7[", kSuccess, 1, "7", false},
    {"MinusAfter", "7-", kSuccess, 1, "7", false},
    {"HighByteAfter", "7\xB2", kSuccess, 1, "7", false},
    {"NulAfter", "7\0"sv, kSuccess, 1, "7", false},
    {"PointAfter", "7.5", kNoInteger, 1, "", false},
    {"ExponentAfter", "7e5", kNoInteger, 1, "", false},
    {"UpperCaseExponentAfter", "7E5", kNoInteger, 1, "", false},
    {"QuoteAfter", "7\"", kNoInteger, 1, "", false},
    {"BraceAfter", "7{", kNoInteger, 1, "", false},
    {"PointAfterZero", "0.5", kNoInteger, 1, "", false},
    {"PointAfterNegativeZero", "-0.", kNoInteger, 2, "", false},
    {"Plus", "+1", kNoInteger, 0, "", false},
    {"Point", ".5", kNoInteger, 0, "", false},
    {"Letter", "x", kNoInteger, 0, "", false},
    {"Quote", "\"1\"", kNoInteger, 0, "", false},
    {"ClosingBracket", "]", kNoInteger, 0, "", false},
    {"Literal", "null", kNoInteger, 0, "", false},
    {"HighByte", "\xB2", kNoInteger, 0, "", false},
    {"TwoMinuses", "--1", kNoInteger, 1, "", false},
    {"MinusAndBlank", "- 1", kNoInteger, 1, "", false},
    {"MinusAndBracket", "-]", kNoInteger, 1, "", false},
    {"MinusAtTheEnd", "-", kEndOfText, 1, "", false},
};
INSTANTIATE_TEST_SUITE_P(Texts, IntegerElement, ::testing::ValuesIn(kElements),
                         [](const auto& row) { return row.param.name; });

// -------------------------------------------------------------------------------------------------
// Payloads

struct PayloadReading {
  ParseResult result;
  std::ptrdiff_t accepted;
  std::string value;  ///< only on success

  friend bool operator==(const PayloadReading& left, const PayloadReading& right) {
    return std::tie(left.result, left.accepted, left.value) ==
           std::tie(right.result, right.accepted, right.value);
  }
  friend void PrintTo(const PayloadReading& reading, std::ostream* stream) {
    *stream << "code " << reading.result << " after " << reading.accepted
            << " bytes: " << reading.value;
  }
};

PayloadReading readPayload(std::string_view typeName, std::string_view text,
                           bool allowComments = false) {
  TreeBuilder builder{std::string(text)};
  const char* const begin = builder.text().data();
  const char* position = begin;
  const ParseResult result =
      readTypedPayload(typeName, position, begin + text.size(), allowComments, builder);
  return {result, position - begin, result == kSuccess ? valueText(builder.finish()) : ""};
}

TEST(TypedPayload, IsOfSignedIntegersForEverySignedName) {
  for (const std::string_view name : kSignedNames) {
    EXPECT_EQ(readPayload(name, "[300, -2]"),
              (PayloadReading{kSuccess, 9, "[int64(300), int64(-2)]"}));
  }
}

TEST(TypedPayload, IsOfUnsignedIntegersForEveryUnsignedName) {
  for (const std::string_view name : kUnsignedNames) {
    EXPECT_EQ(readPayload(name, "[70000, -2]"),
              (PayloadReading{kSuccess, 11, "[uint64(70000), uint64(0)]"}));
  }
}

TEST(TypedPayload, IsNotReadForAnyOtherName) {
  for (const std::string_view name : kOtherNames) {
    for (const std::string_view text : {"[1]"sv, "7"sv, ""sv}) {
      EXPECT_EQ(readPayload(name, text), (PayloadReading{kEndOfText, 0, ""}));
    }
  }
}

TEST(TypedPayload, MayHaveCommentsWhereTheyAreAllowed) {
  constexpr std::string_view kPayload = "[/**/1/**/,//\n2/**/]";
  EXPECT_EQ(readPayload("int8", kPayload, true),
            (PayloadReading{kSuccess, static_cast<std::ptrdiff_t>(kPayload.size()),
                            "[int64(1), int64(2)]"}));
  EXPECT_EQ(readPayload("int8", kPayload), (PayloadReading{kNoInteger, 1, ""}));
  EXPECT_EQ(readPayload("int8", "[1/*]", true), (PayloadReading{kEndOfText, 5, ""}));
}

TEST(TypedPayload, EndsAfterItsBracket) {
  EXPECT_EQ(readPayload("int8", "[1]]"), (PayloadReading{kSuccess, 3, "[int64(1)]"}));
  EXPECT_EQ(readPayload("int8", "[ ]["), (PayloadReading{kSuccess, 3, "[]"}));
}

}  // namespace
}  // namespace foundation::json
