// All short texts: the reader and the naive reader agree on each.

#include <cstddef>
#include <string>
#include <string_view>
#include <tuple>

#include <gtest/gtest.h>

#include "support/JsonOutcome.h"
#include "support/Sequences.h"
#include "support/ValueText.h"

namespace {

using test_support::bytesOf;
using test_support::naiveOutcomeOf;
using test_support::outcomeOf;
using test_support::Parts;
using test_support::quoted;
using test_support::Sequences;

// Tests and counts all sequences of parts that begin with `first`.
void expectAgreement(const Parts& parts, const std::string& first, std::size_t more,
                     const std::string& separator = "") {
  std::size_t count = 0;
  Sequences(parts, more, separator).forEach([&](const std::string& rest) {
    const std::string text = rest.empty() ? first : first + separator + rest;
    ASSERT_EQ(outcomeOf(text), naiveOutcomeOf(text)) << "for " << quoted(text);
    ++count;
  });
  ::testing::Test::RecordProperty("inputs", std::to_string(count));
}

constexpr std::string_view kSymbols = "[]{},:\"\\u01-.e \n";

class TextsOfSixSymbols : public ::testing::TestWithParam<std::tuple<char, char>> {};

TEST_P(TextsOfSixSymbols, AreReadAlike) {
  const auto [first, second] = GetParam();
  expectAgreement(bytesOf(kSymbols), std::string{first, second}, 4);
}

INSTANTIATE_TEST_SUITE_P(StartingWith, TextsOfSixSymbols,
                         ::testing::Combine(::testing::ValuesIn(kSymbols),
                                            ::testing::ValuesIn(kSymbols)));

TEST(TextsOfOneSymbol, AreReadAlike) {
  for (const char symbol : kSymbols) {
    expectAgreement({}, std::string(1, symbol), 0);
  }
  expectAgreement({}, "", 0);
}

const Parts kTokens = {"{",
                       "}",
                       "[",
                       "]",
                       ",",
                       ":",
                       "\"qztype\"",
                       "\"qzdata\"",
                       "\"qztyp\\u0065\"",
                       "\"int64\"",
                       "\"uint8\"",
                       "\"int7\"",
                       "\"k\"",
                       "\"\\u00e9\\n\\uD83D\\uDE00\"",
                       "\"\\uD83Dx\"",
                       "\"cut",
                       "true",
                       "false",
                       "null",
                       "nul",
                       "-",
                       "12345678901234567890123",
                       "-0.5e-3",
                       "[1,-2]"};

class TextsOfFourTokens : public ::testing::TestWithParam<std::size_t> {};

TEST_P(TextsOfFourTokens, AreReadAlike) {
  expectAgreement(kTokens, kTokens[GetParam()], 3);
}

TEST_P(TextsOfFourTokens, AreReadAlikeWithBlanksBetween) {
  expectAgreement(kTokens, kTokens[GetParam()], 3, " ");
}

TEST_P(TextsOfFourTokens, AreReadAlikeInsideAnObjectWithAType) {
  expectAgreement(kTokens, "{\"qztype\":\"int16\",\"qzdata\":" + kTokens[GetParam()], 3);
}

TEST_P(TextsOfFourTokens, AreReadAlikeAfterAPayload) {
  expectAgreement(kTokens, "{\"qzdata\":[1,2],\"qztype\":" + kTokens[GetParam()], 3);
}

INSTANTIATE_TEST_SUITE_P(StartingWithNumber, TextsOfFourTokens,
                         ::testing::Range<std::size_t>(0, 24));

}  // namespace
