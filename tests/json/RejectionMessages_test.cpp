// The whole messages of rejected texts.

#include <ostream>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "json/JsonText.h"
#include "json/ParserException.h"
#include "support/ValueText.h"

namespace foundation::json {
namespace {

using test_support::quoted;
using ::testing::StrEq;
using ::testing::ThrowsMessage;

struct Rejection {
  const char* name;
  std::string text;
  std::string message;
};

void PrintTo(const Rejection& row, std::ostream* stream) {
  *stream << quoted(row.text);
}

class RejectionMessages : public ::testing::TestWithParam<Rejection> {};

TEST_P(RejectionMessages, NameCodeAndPlaceAndShowTheLine) {
  EXPECT_THAT([] { parseJsonText(GetParam().text); },
              ThrowsMessage<ParserException>(StrEq(GetParam().message)));
}

INSTANTIATE_TEST_SUITE_P(
    Texts, RejectionMessages,
    ::testing::Values(
        Rejection{
            "EmptyText", "",
            "JSON ParserException (E0019): Unexpected end of text (Line 1, Column 1)\n\t\n\t^"},
        Rejection{"TrailingLineFeed", "1\n",
                  "JSON ParserException (E0000): Parse incomplete (Line 1, Column 2)\n\t1\n\t ^"},
        Rejection{"BadUnicodeEscape", "\"\\u00x0\"",
                  "JSON ParserException (E0005): Expected four hexadecimal digits or a second \\u "
                  "escape (Line 1, Column 6)\n\t\"\\u00x0\"\n\t     ^"},
        Rejection{"BadEscape", "\"\\x\"",
                  "JSON ParserException (E0006): Expected a valid character after a backslash "
                  "(Line 1, Column 3)\n\t\"\\x\"\n\t  ^"},
        Rejection{"NoValue", "[true,fals]",
                  "JSON ParserException (E0008): Expected a value or a string (Line 1, Column 7)"
                  "\n\t[true,fals]\n\t      ^"},
        Rejection{"NoDigit", "-x",
                  "JSON ParserException (E0011): Expected a digit (Line 1, Column 2)\n\t-x\n\t ^"},
        Rejection{"NoFractionDigit", "1.x",
                  "JSON ParserException (E0012): Expected a digit after the decimal point "
                  "(Line 1, Column 3)\n\t1.x\n\t  ^"},
        Rejection{"NoExponentDigit", "1ex",
                  "JSON ParserException (E0013): Expected a digit in the exponent "
                  "(Line 1, Column 3)\n\t1ex\n\t  ^"},
        Rejection{"NoBracket", "{\"qztype\":\"int8\",\n\"qzdata\":7}",
                  "JSON ParserException (E0014): Expected '[' (Line 2, Column 10)"
                  "\n\t\"qzdata\":7}\n\t         ^"},
        Rejection{"NoArraySeparator", "[1 2]",
                  "JSON ParserException (E0015): Expected ',' or ']' after an array element "
                  "(Line 1, Column 4)\n\t[1 2]\n\t   ^"},
        Rejection{"NoObjectSeparator", "{\"a\":1 \"b\":2}",
                  "JSON ParserException (E0017): Expected ',' or '}' after an object member "
                  "(Line 1, Column 8)\n\t{\"a\":1 \"b\":2}\n\t       ^"},
        Rejection{"NoColon", "{\n\t\"a\":\n\t\"b\",\t\"c\"\t1}\n",
                  "JSON ParserException (E0018): Expected ':' after a member key "
                  "(Line 3, Column 11)\n\t\t\"b\",\t\"c\"\t1}\n\t          ^"},
        Rejection{"EndOfText", "{\"a\":\n[",
                  "JSON ParserException (E0019): Unexpected end of text (Line 2, Column 2)"
                  "\n\t[\n\t ^"},
        Rejection{"NoInteger", "{\"qztype\":\"int8\",\"qzdata\":[1.5]}",
                  "JSON ParserException (E0020): Expected an integer without fraction or exponent "
                  "(Line 1, Column 29)\n\t{\"qztype\":\"int8\",\"qzdata\":[1.5]}\n\t" +
                      std::string(28, ' ') + "^"},
        Rejection{"MiddleOfALongLine", "[" + std::string(199, ' ') + "x" + std::string(199, '-'),
                  "JSON ParserException (E0008): Expected a value or a string (Line 1, Column 201)"
                  "\n\t" +
                      std::string(80, ' ') + "x" + std::string(79, '-') + "\n\t" +
                      std::string(80, ' ') + "^"}),
    [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace foundation::json
