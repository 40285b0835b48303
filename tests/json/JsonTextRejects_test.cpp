#include <cstddef>
#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>
#include <tuple>

#include <gtest/gtest.h>

#include "json/ParseResult.h"
#include "support/JsonOutcome.h"
#include "support/ValueText.h"

namespace foundation::json {
namespace {

using namespace std::string_view_literals;
using test_support::JsonOutcome;
using test_support::outcomeOf;
using test_support::quoted;

struct RejectedText {
  const char* name;
  std::string_view text;
  ParseResult code;
  std::uint64_t line;
  std::uint64_t column;
};

void PrintTo(const RejectedText& row, std::ostream* stream) {
  *stream << quoted(row.text);
}

std::uint64_t offsetOf(std::string_view text, std::uint64_t line, std::uint64_t column) {
  std::size_t offset = 0;
  for (; line != 1; --line) {
    offset = text.find('\n', offset) + 1;
  }
  return offset + column - 1;
}

void expectRejection(const RejectedText& row, bool allowComments) {
  const JsonOutcome outcome = outcomeOf(std::string(row.text), allowComments);
  EXPECT_EQ(outcome.kind, JsonOutcome::Kind::kParserException);
  EXPECT_EQ(
      std::make_tuple(outcome.code, outcome.line, outcome.column, outcome.offset),
      std::make_tuple(row.code, row.line, row.column, offsetOf(row.text, row.line, row.column)))
      << outcome;
}

class JsonTextRejects : public ::testing::TestWithParam<RejectedText> {};

TEST_P(JsonTextRejects, AText) {
  expectRejection(GetParam(), false);
}

constexpr RejectedText kTopLevel[] = {
    {"EmptyText", "", kEndOfText, 1, 1},
    {"LeadingBlank", " 1", kNoOpeningQuote, 1, 1},
    {"LeadingLineFeed", "\n1", kNoOpeningQuote, 1, 1},
    {"BlankOnly", " ", kNoOpeningQuote, 1, 1},
    {"ByteOrderMark", "\xEF\xBB\xBF{}", kNoOpeningQuote, 1, 1},
    {"Nul", "\0"sv, kNoOpeningQuote, 1, 1},
    {"TrailingLineFeed", "1\n", kSuccess, 1, 2},
    {"TrailingBlank", "{} ", kSuccess, 1, 3},
    {"TrailingLineFeedAfterAnObject", "{\n}\n", kSuccess, 2, 2},
    {"TrailingNul", "1\0"sv, kSuccess, 1, 2},
    {"TwoValues", "1 2", kSuccess, 1, 2},
    {"TwoStrings", "\"a\"\"b\"", kSuccess, 1, 4},
    {"SecondClosingBracket", "[]]", kSuccess, 1, 3},
    {"Comma", ",", kNoOpeningQuote, 1, 1},
    {"Colon", ":", kNoOpeningQuote, 1, 1},
    {"ClosingBracket", "]", kNoOpeningQuote, 1, 1},
    {"ClosingBrace", "}", kNoOpeningQuote, 1, 1},
    {"SingleQuote", "'a'", kNoOpeningQuote, 1, 1},
    {"Comment", "// a\n1", kNoOpeningQuote, 1, 1},
    {"HighByte", "\xFF", kNoOpeningQuote, 1, 1},
};
INSTANTIATE_TEST_SUITE_P(TopLevel, JsonTextRejects, ::testing::ValuesIn(kTopLevel),
                         [](const auto& row) { return row.param.name; });

constexpr RejectedText kLiterals[] = {
    {"HalfTrue", "tru", kNoOpeningQuote, 1, 1},
    {"HalfTrueWithMore", "trux", kNoOpeningQuote, 1, 1},
    {"HalfNull", "nul", kNoOpeningQuote, 1, 1},
    {"FirstLetter", "f", kNoOpeningQuote, 1, 1},
    {"UpperCase", "True", kNoOpeningQuote, 1, 1},
    {"GluedLetter", "nullx", kSuccess, 1, 5},
    {"GluedLiteral", "truefalse", kSuccess, 1, 5},
    {"GluedLetterInAnArray", "[nullx]", kNoArraySeparator, 1, 6},
    {"HalfFalseInAnArray", "[true,fals]", kNoOpeningQuote, 1, 7},
    {"HalfLiteralAtTheEndOfAnArray", "[true,fals", kNoOpeningQuote, 1, 7},
    {"HalfLiteralInAnObject", "{\"a\":nul}", kNoOpeningQuote, 1, 6},
    {"LiteralAsKey", "{null:1}", kNoOpeningQuote, 1, 2},
};
INSTANTIATE_TEST_SUITE_P(Literal, JsonTextRejects, ::testing::ValuesIn(kLiterals),
                         [](const auto& row) { return row.param.name; });

constexpr RejectedText kNumbers[] = {
    {"Plus", "+1", kNoOpeningQuote, 1, 1},
    {"PlusInAnArray", "[+1]", kNoOpeningQuote, 1, 2},
    {"Minus", "-", kEndOfText, 1, 2},
    {"MinusAndLetter", "-x", kNoDigit, 1, 2},
    {"TwoMinuses", "--1", kNoDigit, 1, 2},
    {"MinusAndPoint", "-.5", kNoDigit, 1, 2},
    {"MinusAndBlank", "[- 1]", kNoDigit, 1, 3},
    {"MinusAndBracket", "[-]", kNoDigit, 1, 3},
    {"Point", ".5", kNoOpeningQuote, 1, 1},
    {"EndAfterThePoint", "1.", kEndOfText, 1, 3},
    {"LetterAfterThePoint", "1.x", kNoFractionDigit, 1, 3},
    {"ExponentAfterThePoint", "1.e5", kNoFractionDigit, 1, 3},
    {"TwoPoints", "1..5", kNoFractionDigit, 1, 3},
    {"SecondPoint", "1.5.2", kSuccess, 1, 4},
    {"EndAfterTheMarker", "1e", kEndOfText, 1, 3},
    {"EndAfterTheSign", "1e+", kEndOfText, 1, 4},
    {"EndAfterTheMinusSign", "1.5E-", kEndOfText, 1, 6},
    {"LetterAfterTheMarker", "1ex", kNoExponentDigit, 1, 3},
    {"LetterAfterTheSign", "1e+x", kNoExponentDigit, 1, 4},
    {"TwoSigns", "1e+-5", kNoExponentDigit, 1, 4},
    {"PointInTheExponent", "1e.5", kNoExponentDigit, 1, 3},
    {"PointAfterTheExponent", "1e5.5", kSuccess, 1, 4},
    {"Hexadecimal", "0x1F", kSuccess, 1, 2},
    {"HexadecimalInAnArray", "[0x1F]", kNoArraySeparator, 1, 3},
    {"Infinity", "inf", kNoOpeningQuote, 1, 1},
    {"NegativeInfinity", "-inf", kNoDigit, 1, 2},
    {"NotANumber", "nan", kNoOpeningQuote, 1, 1},
    {"HighByteAfterDigits", "[1\xB2]", kNoArraySeparator, 1, 3},
};
INSTANTIATE_TEST_SUITE_P(Number, JsonTextRejects, ::testing::ValuesIn(kNumbers),
                         [](const auto& row) { return row.param.name; });

constexpr RejectedText kStrings[] = {
    {"QuoteOnly", "\"", kEndOfText, 1, 2},
    {"Unclosed", "\"abc", kEndOfText, 1, 5},
    {"UnclosedAfterALineFeed", "\"a\nbc", kEndOfText, 2, 3},
    {"FinalBackslash", "\"a\\", kEndOfText, 1, 4},
    {"UnclosedAfterAnEscape", "\"a\\n", kEndOfText, 1, 5},
    {"EscapedClosingQuote", "\"a\\\"", kEndOfText, 1, 5},
    {"UnknownEscape", "\"a\\x\"", kBadEscape, 1, 4},
    {"UpperCaseEscape", "\"\\N\"", kBadEscape, 1, 3},
    {"EscapedLineFeed", "\"\\\n\"", kBadEscape, 1, 3},
    {"EscapedHighByte", "\"\\\xC3\xA9\"", kBadEscape, 1, 3},
    {"EscapedNul", "\"\\\0\""sv, kBadEscape, 1, 3},
    {"EndAfterTheU", "\"\\u", kEndOfText, 1, 4},
    {"ThreeBytesAfterTheU", "\"\\u004", kEndOfText, 1, 4},
    {"ThreeBytesWithTheQuoteAfterTheU", "\"\\u00\"", kEndOfText, 1, 4},
    {"FewBytesThatAreNoDigits", "\"\\uxyz", kEndOfText, 1, 4},
    {"NoFirstDigit", "\"\\ug000\"", kBadUnicodeEscape, 1, 4},
    {"NoSecondDigit", "\"\\u0g00\"", kBadUnicodeEscape, 1, 5},
    {"NoThirdDigit", "\"\\u00g0\"", kBadUnicodeEscape, 1, 6},
    {"NoFourthDigit", "\"\\u000\"\"", kBadUnicodeEscape, 1, 7},
    {"UpperCaseU", "\"\\U0041\"", kBadEscape, 1, 3},
    {"EndAfterAHighSurrogate", "\"\\uD83D", kEndOfText, 1, 8},
    {"QuoteAfterAHighSurrogate", "\"\\uD83D\"", kEndOfText, 1, 8},
    {"FiveBytesAfterAHighSurrogate", "\"\\uD83Dabcd\"", kEndOfText, 1, 8},
    {"FiveBytesOfASecondUnit", "\"\\uD83D\\uDE0", kEndOfText, 1, 8},
    {"SixOtherBytesAfterAHighSurrogate", "\"\\uD83Dabcde\"", kBadUnicodeEscape, 1, 8},
    {"OtherEscapeAfterAHighSurrogate", "\"\\uD83D\\n    \"", kBadUnicodeEscape, 1, 9},
    {"BadDigitInTheSecondUnit", "\"\\uD83D\\uDE0g\"", kBadUnicodeEscape, 1, 13},
    {"BadFirstDigitInTheSecondUnit", "\"\\uD83D\\u DE00\"", kBadUnicodeEscape, 1, 10},
    {"LowestHighSurrogate", "\"\\uD800\"", kEndOfText, 1, 8},
    {"HighestHighSurrogate", "\"\\uDBFF\"", kEndOfText, 1, 8},
    {"InAnArray", "[\"a\\x\"]", kBadEscape, 1, 5},
    {"InAKey", "{\"a\\x\":1}", kBadEscape, 1, 5},
};
INSTANTIATE_TEST_SUITE_P(String, JsonTextRejects, ::testing::ValuesIn(kStrings),
                         [](const auto& row) { return row.param.name; });

constexpr RejectedText kArrays[] = {
    {"Open", "[", kEndOfText, 1, 2},
    {"OpenWithSpace", "[ \n ", kEndOfText, 2, 2},
    {"OpenAfterAnElement", "[1", kEndOfText, 1, 3},
    {"OpenAfterSpace", "[1 ", kEndOfText, 1, 4},
    {"OpenAfterAComma", "[1,", kEndOfText, 1, 4},
    {"OpenAfterACommaAndSpace", "[1, ", kEndOfText, 1, 5},
    {"TrailingComma", "[1,]", kNoOpeningQuote, 1, 4},
    {"TrailingCommaAndSpace", "[1, ]", kNoOpeningQuote, 1, 5},
    {"LeadingComma", "[,1]", kNoOpeningQuote, 1, 2},
    {"TwoCommas", "[1,,2]", kNoOpeningQuote, 1, 4},
    {"NoComma", "[1 2]", kNoArraySeparator, 1, 4},
    {"NoCommaButALineFeed", "[1\n\n 2]", kNoArraySeparator, 3, 2},
    {"NoCommaBetweenStrings", "[\"a\"\"b\"]", kNoArraySeparator, 1, 5},
    {"NoCommaBetweenArrays", "[[] []]", kNoArraySeparator, 1, 5},
    {"BraceCloses", "[1}", kNoArraySeparator, 1, 3},
    {"BraceInside", "[}", kNoOpeningQuote, 1, 2},
    {"Colon", "[1:2]", kNoArraySeparator, 1, 3},
    {"DeepInside", "[[[[1 2]]]]", kNoArraySeparator, 1, 7},
    {"Comment", "[/**/1]", kNoOpeningQuote, 1, 2},
    {"CommentAfterAnElement", "[1/**/]", kNoArraySeparator, 1, 3},
    {"NoBreakSpace",
     "[\xC2\xA0"
     "1]",
     kNoOpeningQuote, 1, 2},
};
INSTANTIATE_TEST_SUITE_P(Array, JsonTextRejects, ::testing::ValuesIn(kArrays),
                         [](const auto& row) { return row.param.name; });

constexpr RejectedText kObjects[] = {
    {"Open", "{", kEndOfText, 1, 2},
    {"OpenWithSpace", "{ ", kEndOfText, 1, 3},
    {"OpenAfterAKey", "{\"a\"", kEndOfText, 1, 5},
    {"OpenAfterAColon", "{\"a\":", kEndOfText, 1, 6},
    {"OpenAfterAColonAndSpace", "{\"a\": ", kEndOfText, 1, 7},
    {"OpenAfterAValue", "{\"a\":1", kEndOfText, 1, 7},
    {"OpenAfterAComma", "{\"a\":1,", kEndOfText, 1, 8},
    {"OpenInsideAKey", "{\"a", kEndOfText, 1, 4},
    {"KeyWithoutQuotes", "{a:1}", kNoOpeningQuote, 1, 2},
    {"NumberAsKey", "{1:2}", kNoOpeningQuote, 1, 2},
    {"ArrayAsKey", "{[]:2}", kNoOpeningQuote, 1, 2},
    {"TrailingComma", "{\"a\":1,}", kNoOpeningQuote, 1, 8},
    {"LeadingComma", "{,\"a\":1}", kNoOpeningQuote, 1, 2},
    {"NoColon", "{\"a\" 1}", kNoColon, 1, 6},
    {"NoColonButTheEnd", "{\"a\"}", kNoColon, 1, 5},
    {"NoColonButAComma", "{\"a\",\"b\"}", kNoColon, 1, 5},
    {"EqualsSign", "{\"a\"=1}", kNoColon, 1, 5},
    {"TwoColons", "{\"a\"::1}", kNoOpeningQuote, 1, 6},
    {"NoValue", "{\"a\":}", kNoOpeningQuote, 1, 6},
    {"NoValueButAComma", "{\"a\":,\"b\":1}", kNoOpeningQuote, 1, 6},
    {"NoComma", "{\"a\":1 \"b\":2}", kNoObjectSeparator, 1, 8},
    {"BracketCloses", "{\"a\":1]", kNoObjectSeparator, 1, 7},
    {"BracketInside", "{]", kNoOpeningQuote, 1, 2},
    {"OnALaterLine", "{\n  \"a\": 1,\n  \"b\" 2\n}", kNoColon, 3, 7},
    {"AfterCarriageReturns", "{\r\n\r\"a\"\r1}", kNoColon, 2, 6},
    {"RepeatedKeyWithABadValue", "{\"a\":1,\"a\":tru}", kNoOpeningQuote, 1, 12},
    {"BadValueInsideAnObjectInside", "{\"a\":{\"b\":[1,{\"c\":-}]}}", kNoDigit, 1, 20},
    {"Comment", "{//\n}", kNoOpeningQuote, 1, 2},
    {"CommentAfterAValue", "{\"a\":1//\n}", kNoObjectSeparator, 1, 7},
};
INSTANTIATE_TEST_SUITE_P(Object, JsonTextRejects, ::testing::ValuesIn(kObjects),
                         [](const auto& row) { return row.param.name; });

class JsonTextWithCommentsRejects : public ::testing::TestWithParam<RejectedText> {};

TEST_P(JsonTextWithCommentsRejects, AText) {
  expectRejection(GetParam(), true);
}

constexpr RejectedText kCommented[] = {
    {"CommentBeforeTheValue", "/**/1", kNoOpeningQuote, 1, 1},
    {"CommentAfterTheValue", "1//", kSuccess, 1, 2},
    {"UnclosedBlockComment", "[/* 1]", kEndOfText, 1, 7},
    {"UnclosedLineComment", "[// 1]", kEndOfText, 1, 7},
    {"CommentOfOneStar", "[/*/", kEndOfText, 1, 5},
    {"SlashAtTheEnd", "[/", kNoOpeningQuote, 1, 2},
    {"SlashAndAnotherByte", "[/1]", kNoOpeningQuote, 1, 2},
    {"SlashAfterAnElement", "[1/2]", kNoArraySeparator, 1, 3},
    {"SlashAfterAComment", "[/**//]", kNoOpeningQuote, 1, 6},
    {"SlashInsteadOfAColon", "{\"a\"/1}", kNoColon, 1, 5},
    {"CommentInsideANumber", "[1/**/2]", kNoArraySeparator, 1, 7},
    {"ErrorAfterALineComment", "[// a\n // b\n 1 2]", kNoArraySeparator, 3, 4},
};
INSTANTIATE_TEST_SUITE_P(Comments, JsonTextWithCommentsRejects, ::testing::ValuesIn(kCommented),
                         [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace foundation::json
