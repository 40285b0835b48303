#pragma once

namespace foundation::json {

/// The result of reading JSON text, or a part of it: 0 for success, otherwise what is wrong at the
/// position where reading stopped.
using ParseResult = int;

// Every result: its name, number and description. Numbers that are not listed are unused.
#define FOUNDATION_JSON_PARSE_RESULTS(RESULT)                                             \
  RESULT(kSuccess, 0, "Success")                                                          \
  RESULT(kNoNull, 1, "Expected 'null'")                                                   \
  RESULT(kNoBoolean, 2, "Expected 'true' or 'false'")                                     \
  RESULT(kBadUnicodeEscape, 5, "Expected four hexadecimal digits or a second \\u escape") \
  RESULT(kBadEscape, 6, "Expected a valid character after a backslash")                   \
  RESULT(kNoOpeningQuote, 8, "Expected a value or a string")                              \
  RESULT(kNoDigit, 11, "Expected a digit")                                                \
  RESULT(kNoFractionDigit, 12, "Expected a digit after the decimal point")                \
  RESULT(kNoExponentDigit, 13, "Expected a digit in the exponent")                        \
  RESULT(kNoOpeningBracket, 14, "Expected '['")                                           \
  RESULT(kNoArraySeparator, 15, "Expected ',' or ']' after an array element")             \
  RESULT(kNoOpeningBrace, 16, "Expected '{'")                                             \
  RESULT(kNoObjectSeparator, 17, "Expected ',' or '}' after an object member")            \
  RESULT(kNoColon, 18, "Expected ':' after a member key")                                 \
  RESULT(kEndOfText, 19, "Unexpected end of text")                                        \
  RESULT(kNoInteger, 20, "Expected an integer without fraction or exponent")

/// The results by name: kSuccess and the failures of the table above.
enum ParseResultCode : ParseResult {
#define FOUNDATION_JSON_ENUMERATOR(NAME, NUMBER, DESCRIPTION) NAME = (NUMBER),
  FOUNDATION_JSON_PARSE_RESULTS(FOUNDATION_JSON_ENUMERATOR)
#undef FOUNDATION_JSON_ENUMERATOR
};

/// Describes a result in English; numbers that are not listed share one general text. Static text.
const char* get_parse_result_description(ParseResult result) noexcept;

}  // namespace foundation::json
