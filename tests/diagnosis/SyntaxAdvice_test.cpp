#include "diagnosis/SyntaxAdvice.h"

#include <optional>
#include <ostream>
#include <string>

#include <gtest/gtest.h>

#include "diagnosis/source/SourceTree.h"

namespace install::update_metadata_parser::diagnosis {
namespace {

struct Notation {
  const char* name;
  std::string text;
  std::string marked;
  std::string message;
  std::string advice;
};

std::ostream& operator<<(std::ostream& out, const Notation& row) {
  return out << row.name;
}

class NotationOfAnotherFormat : public ::testing::TestWithParam<Notation> {};

TEST_P(NotationOfAnotherFormat, IsRecognized) {
  const std::string& text = GetParam().text;
  const source::SourceTree tree(text);
  ASSERT_TRUE(tree.fault());
  const std::optional<KnownMistake> mistake = findKnownMistake(text, *tree.fault());
  ASSERT_TRUE(mistake);
  EXPECT_EQ(text.substr(mistake->offset, mistake->length), GetParam().marked);
  EXPECT_EQ(mistake->message, GetParam().message);
  EXPECT_EQ(mistake->advice, GetParam().advice);
}

const Notation kNotations[] = {
    {"Hexadecimal", R"({"size": 0x1F})", "0x1F", "JSON has no hexadecimal numbers",
     "write it in decimal: 31"},
    {"HexadecimalInCapitals", R"([0XFF])", "0XFF", "JSON has no hexadecimal numbers",
     "write it in decimal: 255"},
    {"HexadecimalBeyond64Bits", R"([0x11112222333344445])", "0x11112222333344445",
     "JSON has no hexadecimal numbers", "write it in decimal"},
    {"HexadecimalThatIsNone", R"([0xG])", "0xG", "JSON has no hexadecimal numbers",
     "write it in decimal"},
    {"Underscore", R"([1_000])", "_", "the digits of this number are grouped with '_'",
     "write the number without separators"},
    {"Unit", R"([5 MB])", "MB", "the number is followed by a unit, 'MB'",
     "write the number of bytes, without a unit"},
    {"SingleQuote", R"(['a'])", "'", "a string cannot start with '",
     "put strings in double quotation marks"},
    {"Backtick", R"([`a`])", "`", "a string cannot start with `",
     "put strings in double quotation marks"},
    {"CurlyQuote",
     "[\xE2\x80\x9C"
     "a\xE2\x80\x9D]",
     "\xE2\x80\x9C", "a curly or angled quotation mark cannot start a string",
     "put names and strings in straight double quotation marks (\")"},
    {"NotANumber", R"([NaN])", "NaN", "'NaN' is not a JSON value",
     "write a number: JSON has no NaN"},
    {"Infinity", R"([Infinity])", "Infinity", "'Infinity' is not a JSON value",
     "write a number: JSON has no Infinity"},
    {"ShortInfinity", R"([inf])", "inf", "'inf' is not a JSON value",
     "write a number: JSON has no inf"},
    {"NegativeInfinity", R"([-inf])", "inf", "'inf' is not a JSON value",
     "write a number: JSON has no inf"},
    {"AnotherTrue", R"([yes])", "yes", "'yes' is not a JSON value", "write true"},
    {"BareText", R"([bare])", "bare", "'bare' is not a JSON value",
     "put strings in double quotation marks; the only other words are true, false and null"},
    {"BareName", R"({name: 1})", "name", "the name 'name' has no quotation marks",
     "put names in double quotation marks"},
    {"EqualSign", R"({"a" = 1})", "=", "a name and its value are separated by '='",
     "write ':' between a name and its value"},
    {"Arrow", R"({"a" => 1})", "=>", "a name and its value are separated by '=>'",
     "write ':' between a name and its value"},
    {"Semicolon", R"({"a": 1; "b": 2})", ";", "two values are separated by ';'",
     "write ',' between two values, and nothing after the last one"},
};
INSTANTIATE_TEST_SUITE_P(Notations, NotationOfAnotherFormat, ::testing::ValuesIn(kNotations),
                         [](const auto& row) { return row.param.name; });

TEST(SyntaxAdvice, DoesNotTakeEveryFaultForANotation) {
  for (const char* const text : {R"(["\q"])", R"([1 2])", R"({"a": 1 = 2})", R"([;])",
                                 R"({"qztype": 1, "qzdata": [x]})", "[", ""}) {
    const std::string copy = text;
    const source::SourceTree tree(copy);
    ASSERT_TRUE(tree.fault()) << text;
    const std::optional<KnownMistake> mistake = findKnownMistake(copy, *tree.fault());
    EXPECT_EQ(mistake ? mistake->message : "", "") << text;
  }
}

struct Punctuation {
  const char* name;
  std::string text;
  std::string advice;
};

std::ostream& operator<<(std::ostream& out, const Punctuation& row) {
  return out << row.name;
}

class PunctuationFault : public ::testing::TestWithParam<Punctuation> {};

TEST_P(PunctuationFault, HasItsRemedy) {
  const std::string& text = GetParam().text;
  const source::SourceTree tree(text);
  ASSERT_TRUE(tree.fault());
  EXPECT_EQ(adviseOnSyntax(text, 0, *tree.fault()), GetParam().advice);
}

const Punctuation kPunctuations[] = {
    {"TwoCommas", "[1,\n ,2]", "remove one of the two commas"},
    {"NoColon", R"({"a" {}})", "write ':' between the name and its value"},
    {"NameWithoutValue", R"({"a", "b": 1})", "write ':' and a value after this name"},
    {"LastNameWithoutValue", R"({"a"})", "write ':' and a value after this name"},
    {"BracketInAnObject", R"({"a": [1]], "b": 2})", "remove this ']', or close the '{' before it"},
    {"BraceInAnArray", R"({"a": [1}, "b": 2})", "remove this '}', or close the '[' before it"},
    {"FirstComma", "[,1]", "correct the text here or just before"},
    {"BracketInsteadOfAValue", R"({"a": ]})", "correct the text here or just before"},
};
INSTANTIATE_TEST_SUITE_P(Faults, PunctuationFault, ::testing::ValuesIn(kPunctuations),
                         [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace install::update_metadata_parser::diagnosis
