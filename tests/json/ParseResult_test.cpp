#include "json/ParseResult.h"

#include <map>
#include <string>
#include <type_traits>

#include <gtest/gtest.h>

namespace foundation::json {
namespace {

static_assert(std::is_same_v<ParseResult, int>);

TEST(ParseResult, HasANumberThatNeverChanges) {
  EXPECT_EQ(kSuccess, 0);
  EXPECT_EQ(kNoNull, 1);
  EXPECT_EQ(kNoBoolean, 2);
  EXPECT_EQ(kBadUnicodeEscape, 5);
  EXPECT_EQ(kBadEscape, 6);
  EXPECT_EQ(kNoOpeningQuote, 8);
  EXPECT_EQ(kNoDigit, 11);
  EXPECT_EQ(kNoFractionDigit, 12);
  EXPECT_EQ(kNoExponentDigit, 13);
  EXPECT_EQ(kNoOpeningBracket, 14);
  EXPECT_EQ(kNoArraySeparator, 15);
  EXPECT_EQ(kNoOpeningBrace, 16);
  EXPECT_EQ(kNoObjectSeparator, 17);
  EXPECT_EQ(kNoColon, 18);
  EXPECT_EQ(kEndOfText, 19);
  EXPECT_EQ(kNoInteger, 20);
}

TEST(ParseResultDescription, IsOneOfEachAndAGeneralOneForEveryOtherNumber) {
  const std::map<ParseResult, std::string> descriptions = {
      {0, "Success"},
      {1, "Expected 'null'"},
      {2, "Expected 'true' or 'false'"},
      {5, "Expected four hexadecimal digits or a second \\u escape"},
      {6, "Expected a valid character after a backslash"},
      {8, "Expected a value or a string"},
      {11, "Expected a digit"},
      {12, "Expected a digit after the decimal point"},
      {13, "Expected a digit in the exponent"},
      {14, "Expected '['"},
      {15, "Expected ',' or ']' after an array element"},
      {16, "Expected '{'"},
      {17, "Expected ',' or '}' after an object member"},
      {18, "Expected ':' after a member key"},
      {19, "Unexpected end of text"},
      {20, "Expected an integer without fraction or exponent"},
  };
  for (ParseResult result = -10; result != 300; ++result) {
    const auto found = descriptions.find(result);
    EXPECT_EQ(get_parse_result_description(result),
              found == descriptions.end() ? "Unknown parse result" : found->second)
        << result;
  }
}

TEST(ParseResultDescription, IsStaticText) {
  EXPECT_EQ(get_parse_result_description(kEndOfText), get_parse_result_description(kEndOfText));
}

}  // namespace
}  // namespace foundation::json
