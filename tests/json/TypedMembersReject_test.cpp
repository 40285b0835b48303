// Typed members that are rejected: payloads, and types that are not strings.

#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>
#include <tuple>

#include <gtest/gtest.h>

#include "foundation/json/Value.h"
#include "json/ParseResult.h"
#include "support/JsonOutcome.h"
#include "support/ValueText.h"

namespace foundation::json {
namespace {

using test_support::JsonOutcome;
using test_support::outcomeOf;
using test_support::quoted;

struct RejectedPayload {
  const char* name;
  std::string_view text;
  ParseResult code;
  std::size_t column;
};

void PrintTo(const RejectedPayload& row, std::ostream* stream) {
  *stream << quoted(row.text);
}

class TypedMembersReject : public ::testing::TestWithParam<RejectedPayload> {};

TEST_P(TypedMembersReject, AText) {
  const JsonOutcome outcome = outcomeOf(std::string(GetParam().text));
  EXPECT_EQ(
      std::make_tuple(outcome.kind, outcome.code, outcome.column),
      std::make_tuple(JsonOutcome::Kind::kParserException, GetParam().code, GetParam().column))
      << outcome;
}

constexpr RejectedPayload kRejectedPayloads[] = {
    {"Fraction", R"({"qztype":"int64","qzdata":[1.5]})", kNoInteger, 30},
    {"Exponent", R"({"qztype":"int64","qzdata":[1e5]})", kNoInteger, 30},
    {"NoComma", R"({"qztype":"int64","qzdata":[1 2]})", kNoArraySeparator, 31},
    {"NoArray", R"({"qztype":"int64","qzdata":7})", kNoOpeningBracket, 28},
    {"String", R"({"qztype":"int64","qzdata":"1"})", kNoOpeningBracket, 28},
    {"Null", R"({"qztype":"int64","qzdata":null})", kNoOpeningBracket, 28},
    {"Object", R"({"qztype":"int64","qzdata":{}})", kNoOpeningBracket, 28},
    {"NoValue", R"({"qztype":"int64","qzdata":})", kNoOpeningBracket, 28},
    {"LeadingZero", R"({"qztype":"int64","qzdata":[012]})", kNoArraySeparator, 30},
    {"TrailingComma", R"({"qztype":"int64","qzdata":[1,]})", kNoInteger, 31},
    {"LeadingComma", R"({"qztype":"int64","qzdata":[,1]})", kNoInteger, 29},
    {"Plus", R"({"qztype":"int64","qzdata":[+1]})", kNoInteger, 29},
    {"MinusOnly", R"({"qztype":"int64","qzdata":[-]})", kNoInteger, 30},
    {"GluedString", R"({"qztype":"int64","qzdata":[1"a"]})", kNoInteger, 30},
    {"GluedObject", R"({"qztype":"int64","qzdata":[1{}]})", kNoInteger, 30},
    {"GluedArray", R"({"qztype":"int64","qzdata":[1[]]})", kNoArraySeparator, 30},
    {"PointAfterABlank", R"({"qztype":"int64","qzdata":[1 .5]})", kNoArraySeparator, 31},
    {"StringAfterABlank", R"({"qztype":"int64","qzdata":[1 "a"]})", kNoArraySeparator, 31},
    {"LaterElement", R"({"qztype":"int64","qzdata":[1, 2, true]})", kNoInteger, 35},
    {"ArrayInside", R"({"qztype":"int64","qzdata":[[1]]})", kNoInteger, 29},
    {"EndAfterTheColon", R"({"qztype":"int64","qzdata":)", kEndOfText, 28},
    {"EndAfterTheBracket", R"({"qztype":"int64","qzdata":[)", kEndOfText, 29},
    {"EndAfterABlank", R"({"qztype":"int64","qzdata":[ )", kEndOfText, 30},
    {"EndAfterAMinus", R"({"qztype":"int64","qzdata":[-)", kEndOfText, 30},
    {"EndAfterADigit", R"({"qztype":"int64","qzdata":[1)", kEndOfText, 30},
    {"EndAfterAComma", R"({"qztype":"int64","qzdata":[1,)", kEndOfText, 31},
    {"EndAfterThePayload", R"({"qztype":"int64","qzdata":[1])", kEndOfText, 31},
    {"GarbageAfterThePayload", R"({"qztype":"int64","qzdata":[1]x)", kNoObjectSeparator, 31},
};
INSTANTIATE_TEST_SUITE_P(TypeBeforePayload, TypedMembersReject,
                         ::testing::ValuesIn(kRejectedPayloads),
                         [](const auto& row) { return row.param.name; });

constexpr RejectedPayload kRejectedAgain[] = {
    {"Fraction", R"({"qzdata":[1, 2.5],"qztype":"int8"})", kNoInteger, 16},
    {"NoArray", R"({"qzdata":7,"qztype":"int8"})", kNoOpeningBracket, 11},
    {"String", R"({"qzdata":"a","qztype":"uint8"})", kNoOpeningBracket, 11},
    {"ArrayInside", R"({"qzdata":[[1]],"qztype":"int8"})", kNoInteger, 12},
    {"LeadingZero", R"({"qzdata":[012],"qztype":"int8"})", kNoArraySeparator, 13},
    {"BeforeTheEndIsMissed", R"({"qzdata":[1.5],"qztype":"int8")", kNoInteger, 13},
    {"LaterPayloadWithTheTypeBefore", R"({"qztype":"int8","qzdata":[1],"qzdata":[1.5]})",
     kNoInteger, 42},
    {"LaterPayloadOfTwo", R"({"qzdata":[1],"qzdata":[1.5],"qztype":"int8"})", kNoInteger, 26},
    {"LaterUntypedPayload", R"({"qzdata":[1],"qzdata":tru})", kNoOpeningQuote, 24},
    {"UnknownNameAfterAnUnreadablePayload", R"({"qzdata":[1.5],"qztype":"other","qztype":"int8"})",
     kNoInteger, 13},
    {"OnlyTheFirstPayloadIsBad", R"({"qzdata":[1.5],"qzdata":[1],"qztype":"int8",})",
     kNoOpeningQuote, 46},
};
INSTANTIATE_TEST_SUITE_P(PayloadBeforeType, TypedMembersReject, ::testing::ValuesIn(kRejectedAgain),
                         [](const auto& row) { return row.param.name; });

// -------------------------------------------------------------------------------------------------
// Types that are not strings

struct UnreadableType {
  const char* name;
  std::string_view text;
  const char* kind;
};

void PrintTo(const UnreadableType& row, std::ostream* stream) {
  *stream << quoted(row.text);
}

class TypeThatIsNotAString : public ::testing::TestWithParam<UnreadableType> {};

TEST_P(TypeThatIsNotAString, IsARuntimeErrorAndNoParserException) {
  const JsonOutcome outcome = outcomeOf(std::string(GetParam().text));
  EXPECT_EQ(outcome.kind, JsonOutcome::Kind::kRuntimeError);
  EXPECT_EQ(outcome.message, std::string("invalid conversion: ") + GetParam().kind + " to " +
                                 traits<std::string>::name);
}

constexpr UnreadableType kUnreadableTypes[] = {
    {"Number", R"({"qztype": 5})", traits<double>::name},
    {"True", R"({"qztype":true})", traits<bool>::name},
    {"False", R"({"qztype":false})", traits<bool>::name},
    {"Null", R"({"qztype":null})", traits<std::nullptr_t>::name},
    {"EmptyArray", R"({"qztype":[]})", traits<Array>::name},
    {"Array", R"({"qztype":["int8"]})", traits<Array>::name},
    {"EmptyObject", R"({"qztype":{}})", traits<Object>::name},
    {"Object", R"({"qztype":{"qztype":"int8","qzdata":[1]}})", traits<Object>::name},
    {"NothingAfterTheKind", R"({"qztype":5)", traits<double>::name},
    {"GarbageAfterTheKind", R"({"qztype":5x)", traits<double>::name},
    {"LaterType", R"({"qztype":"int8","qztype":5})", traits<double>::name},
    {"AfterAPayload", R"({"qzdata":[1],"qztype":5})", traits<double>::name},
    {"EscapedKey", R"({"qz\u0074ype":5})", traits<double>::name},
    {"InsideAType", R"({"qztype":{"qztype":5}})", traits<double>::name},
    {"InsideAnUntypedPayload", R"({"qzdata":{"qztype":5}})", traits<double>::name},
    {"DeepInside", R"([{"a":[[{"qztype":5}]]}])", traits<double>::name},
    {"BeforeAnotherError", R"([{"qztype":5},tru])", traits<double>::name},
    {"NoValue", R"({"qztype":})", traits<Undefined>::name},
    {"EndOfText", R"({"qztype":)", traits<Undefined>::name},
    {"UnclosedString", R"({"qztype": "ab)", traits<Undefined>::name},
    {"BadEscape", R"({"qztype":"a\x"})", traits<Undefined>::name},
    {"HalfALiteral", R"({"qztype":tru})", traits<Undefined>::name},
    {"BadNumber", R"({"qztype":-x})", traits<Undefined>::name},
    {"UnclosedArray", R"({"qztype":["int8")", traits<Undefined>::name},
    {"BadArray", R"({"qztype":[1 2]})", traits<Undefined>::name},
    {"UnclosedObject", R"({"qztype":{)", traits<Undefined>::name},
    {"BadObject", R"({"qztype":{"a" 1}})", traits<Undefined>::name},
    {"BadPayloadInside", R"({"qztype":{"qztype":"int8","qzdata":[1.5]}})", traits<Undefined>::name},
    {"BadPayloadReadAgainInside", R"({"qztype":{"qzdata":[1.5],"qztype":"int8"}})",
     traits<Undefined>::name},
    {"ErrorDeepInside", R"({"qztype":[[{"a":[tru]}]]})", traits<Undefined>::name},
};
INSTANTIATE_TEST_SUITE_P(Kinds, TypeThatIsNotAString, ::testing::ValuesIn(kUnreadableTypes),
                         [](const auto& row) { return row.param.name; });

TEST(ErrorsAfterAType, AreParserExceptionsAgain) {
  for (const char* text : {R"({"a":[{"qztype":"int8"}],"b":tru})", R"({"qztype":"int8" 5})",
                           R"([{"qztype":"int8"},{"a":[-]}])", R"({"qztype")", R"({"qztype" 5})"}) {
    EXPECT_EQ(outcomeOf(text).kind, JsonOutcome::Kind::kParserException) << text;
  }
}

}  // namespace
}  // namespace foundation::json
