#include <cstddef>
#include <ostream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <tuple>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "foundation/json/Value.h"
#include "json/JsonText.h"
#include "json/ParseResult.h"
#include "support/JsonOutcome.h"
#include "support/ValueText.h"

namespace foundation::json {
namespace {

using test_support::JsonOutcome;
using test_support::outcomeOf;
using test_support::quoted;
using test_support::valueText;

struct AcceptedText {
  const char* name;
  std::string_view text;
  const char* value;
};

void PrintTo(const AcceptedText& row, std::ostream* stream) {
  *stream << quoted(row.text);
}

class TypedMembers : public ::testing::TestWithParam<AcceptedText> {};

TEST_P(TypedMembers, AreReadAs) {
  EXPECT_EQ(valueText(parseJsonText(std::string(GetParam().text))), GetParam().value);
}

constexpr AcceptedText kTypeBeforePayload[] = {
    {"Signed", R"({"qztype": "int32", "qzdata": [1, -2, 3]})",
     R"({"qzdata": [int64(1), int64(-2), int64(3)], "qztype": "int32"})"},
    {"Unsigned", R"({"qztype":"uint8","qzdata":[1,2]})",
     R"({"qzdata": [uint64(1), uint64(2)], "qztype": "uint8"})"},
    {"WithoutRangeTest", R"({"qztype":"int8","qzdata":[300]})",
     R"({"qzdata": [int64(300)], "qztype": "int8"})"},
    {"UnsignedSaturation",
     R"({"qztype":"uint64","qzdata":[18446744073709551615, 99999999999999999999]})",
     R"({"qzdata": [uint64(18446744073709551615), uint64(18446744073709551615)], )"
     R"("qztype": "uint64"})"},
    {"NegativeAsUnsigned",
     R"({"qztype":"uint16","qzdata":[-5,-99999999999999999999,-18446744073709551615]})",
     R"({"qzdata": [uint64(0), uint64(0), uint64(0)], "qztype": "uint16"})"},
    {"SignedSaturation",
     R"({"qztype":"int64","qzdata":[-99999999999999999999,99999999999999999999]})",
     R"({"qzdata": [int64(-9223372036854775808), int64(9223372036854775807)], )"
     R"("qztype": "int64"})"},
    {"SignedLimits", R"({"qztype":"int64","qzdata":[-9223372036854775808,9223372036854775807]})",
     R"({"qzdata": [int64(-9223372036854775808), int64(9223372036854775807)], )"
     R"("qztype": "int64"})"},
    {"BeyondExactDoubles", R"({"qztype":"int64","qzdata":[9007199254740993]})",
     R"({"qzdata": [int64(9007199254740993)], "qztype": "int64"})"},
    {"NegativeZero", R"({"qztype":"int64","qzdata":[-0]})",
     R"({"qzdata": [int64(0)], "qztype": "int64"})"},
    {"Empty", R"({"qztype":"int64","qzdata":[]})", R"({"qzdata": [], "qztype": "int64"})"},
    {"EmptyWithSpace", "{\"qztype\":\"int64\",\"qzdata\":[ \t\r\n\v\f]}",
     R"({"qzdata": [], "qztype": "int64"})"},
    {"SpaceAround", "{\"qztype\":\"int8\",\"qzdata\" : [ 1\t,\r2\n] }",
     R"({"qzdata": [int64(1), int64(2)], "qztype": "int8"})"},
    {"MembersBetween", R"({"qztype":"int8","a":1,"qzdata":[1],"b":[1]})",
     R"({"a": 1, "b": [1], "qzdata": [int64(1)], "qztype": "int8"})"},
};
INSTANTIATE_TEST_SUITE_P(TypeBeforePayload, TypedMembers, ::testing::ValuesIn(kTypeBeforePayload),
                         [](const auto& row) { return row.param.name; });

constexpr AcceptedText kPayloadBeforeType[] = {
    {"Unsigned", R"({"qzdata": [1, 2], "qztype": "uint8"})",
     R"({"qzdata": [uint64(1), uint64(2)], "qztype": "uint8"})"},
    {"Signed", R"({"qzdata":[9007199254740993],"qztype":"int16"})",
     R"({"qzdata": [int64(9007199254740993)], "qztype": "int16"})"},
    {"Empty", R"({"qzdata":[ ],"qztype":"uint8"})", R"({"qzdata": [], "qztype": "uint8"})"},
    {"OtherMembersAround", R"({"z":0,"qzdata":[1],"a":1,"qztype":"int8","b":2})",
     R"({"a": 1, "b": 2, "qzdata": [int64(1)], "qztype": "int8", "z": 0})"},
};
INSTANTIATE_TEST_SUITE_P(PayloadBeforeType, TypedMembers, ::testing::ValuesIn(kPayloadBeforeType),
                         [](const auto& row) { return row.param.name; });

constexpr AcceptedText kUntyped[] = {
    {"UnknownName", R"({"qztype":"double","qzdata":[1.5]})",
     R"({"qzdata": [1.5], "qztype": "double"})"},
    {"UnknownNameAfter", R"({"qzdata":[1.5],"qztype":"double"})",
     R"({"qzdata": [1.5], "qztype": "double"})"},
    {"EmptyName", R"({"qztype":"","qzdata":[1]})", R"({"qzdata": [1], "qztype": ""})"},
    {"UpperCaseName", R"({"qztype":"INT8","qzdata":[1]})", R"({"qzdata": [1], "qztype": "INT8"})"},
    {"NameWithNul", R"({"qztype":"int8\u0000","qzdata":[1]})",
     R"({"qzdata": [1], "qztype": "int8\x00"})"},
    {"NoType", R"({"qzdata":7})", R"({"qzdata": 7})"},
    {"NoTypeAndNoArray", R"({"qzdata":{"a":[1.5]}})", R"({"qzdata": {"a": [1.5]}})"},
    {"NoPayload", R"({"qztype":"int8","a":[1]})", R"({"a": [1], "qztype": "int8"})"},
    {"UpperCaseKeys", R"({"QZTYPE":5,"Qzdata":[1.5]})", R"({"QZTYPE": 5, "Qzdata": [1.5]})"},
    {"TypeOfTheObjectAround", R"({"qztype":"int8","a":{"qzdata":[1.5]}})",
     R"({"a": {"qzdata": [1.5]}, "qztype": "int8"})"},
    {"TypeOfTheObjectInside", R"({"a":{"qztype":"int8"},"qzdata":[1.5]})",
     R"({"a": {"qztype": "int8"}, "qzdata": [1.5]})"},
    {"TypeOfTheNeighbor", R"([{"qztype":"int8"},{"qzdata":[1.5]}])",
     R"([{"qztype": "int8"}, {"qzdata": [1.5]}])"},
    {"KeysAsStrings", R"(["qztype","int8","qzdata",[1.5]])",
     R"(["qztype", "int8", "qzdata", [1.5]])"},
};
INSTANTIATE_TEST_SUITE_P(Untyped, TypedMembers, ::testing::ValuesIn(kUntyped),
                         [](const auto& row) { return row.param.name; });

constexpr AcceptedText kRepeatedMembers[] = {
    {"LaterTypeCountsForALaterPayload", R"({"qztype":"int8","qztype":"uint8","qzdata":[1]})",
     R"({"qzdata": [uint64(1)], "qztype": "int8"})"},
    {"LaterTypeHasThePayloadReadAgain", R"({"qztype":"int8","qzdata":[-1],"qztype":"uint8"})",
     R"({"qzdata": [uint64(0)], "qztype": "int8"})"},
    {"TypeAndBack", R"({"qztype":"int8","qzdata":[-1],"qztype":"uint8","qztype":"int64"})",
     R"({"qzdata": [int64(-1)], "qztype": "int8"})"},
    {"UnknownNameKeepsTheType", R"({"qztype":"int8","qztype":"other","qzdata":[1]})",
     R"({"qzdata": [int64(1)], "qztype": "int8"})"},
    {"FirstNameUnknown", R"({"qztype":"other","qztype":"int8","qzdata":[1]})",
     R"({"qzdata": [int64(1)], "qztype": "other"})"},
    {"FirstOfTwoPayloads", R"({"qztype":"int8","qzdata":[1],"qzdata":[2]})",
     R"({"qzdata": [int64(1)], "qztype": "int8"})"},
    {"FirstOfTwoUntypedPayloads", R"({"qzdata":[1.5],"qzdata":7})", R"({"qzdata": [1.5]})"},
    {"LaterPayloadIsReadAgain", R"({"qzdata":[1],"qzdata":[2],"qztype":"int8"})",
     R"({"qzdata": [int64(2)], "qztype": "int8"})"},
    {"LaterPayloadReplacesAnyFirstOne", R"({"qzdata":7,"qzdata":[2],"qztype":"int8"})",
     R"({"qzdata": [int64(2)], "qztype": "int8"})"},
    {"UnknownNameHasThePayloadReadAgain",
     R"({"qztype":"int8","qzdata":[1],"qzdata":[2],"qztype":"other"})",
     R"({"qzdata": [int64(2)], "qztype": "int8"})"},
    {"PayloadAfterEverything", R"({"qzdata":[1],"qztype":"int8","qzdata":[2]})",
     R"({"qzdata": [int64(1)], "qztype": "int8"})"},
    {"TypeForEachPayload", R"({"qztype":"int8","qzdata":[1],"qztype":"uint8","qzdata":[2]})",
     R"({"qzdata": [uint64(1)], "qztype": "int8"})"},
};
INSTANTIATE_TEST_SUITE_P(RepeatedMembers, TypedMembers, ::testing::ValuesIn(kRepeatedMembers),
                         [](const auto& row) { return row.param.name; });

constexpr AcceptedText kElsewhere[] = {
    {"EscapedKeys", R"({"qz\u0074ype":"int8","\u0071zdata":[1]})",
     R"({"qzdata": [int64(1)], "qztype": "int8"})"},
    {"EscapedName", R"({"qztype":"\u0069nt8","qzdata":[1]})",
     R"({"qzdata": [int64(1)], "qztype": "int8"})"},
    {"EscapedNameAfter", R"({"qzdata":[1],"qztype":"uint\u0038"})",
     R"({"qzdata": [uint64(1)], "qztype": "uint8"})"},
    {"DeepInside", R"([[{"a":[{"qztype":"int8","qzdata":[1]}]}]])",
     R"([[{"a": [{"qzdata": [int64(1)], "qztype": "int8"}]}]])"},
    {"InAnUntypedPayload", R"({"qzdata":{"qztype":"int8","qzdata":[1]}})",
     R"({"qzdata": {"qzdata": [int64(1)], "qztype": "int8"}})"},
    {"AfterAnObjectInside", R"({"qztype":"int8","a":{"qztype":"uint8","qzdata":[1]},"qzdata":[2]})",
     R"({"a": {"qzdata": [uint64(1)], "qztype": "uint8"}, "qzdata": [int64(2)], "qztype": "int8"})"},
    {"ObjectInsideBetweenPayloadAndType",
     R"({"qzdata":[1],"a":[{"qzdata":[2],"qztype":"uint8"}],"qztype":"int8"})",
     R"({"a": [{"qzdata": [uint64(2)], "qztype": "uint8"}], "qzdata": [int64(1)], )"
     R"("qztype": "int8"})"},
    {"SeparateNeighbors",
     R"([{"qztype":"int8","qzdata":[1]},{"qzdata":[2]},{"qzdata":[3],"qztype":"uint8"}])",
     R"([{"qzdata": [int64(1)], "qztype": "int8"}, {"qzdata": [2]}, )"
     R"({"qzdata": [uint64(3)], "qztype": "uint8"}])"},
};
INSTANTIATE_TEST_SUITE_P(Elsewhere, TypedMembers, ::testing::ValuesIn(kElsewhere),
                         [](const auto& row) { return row.param.name; });

// -------------------------------------------------------------------------------------------------
// Payloads that are rejected

struct RejectedText {
  const char* name;
  std::string_view text;
  ParseResult code;
  std::size_t column;
};

void PrintTo(const RejectedText& row, std::ostream* stream) {
  *stream << quoted(row.text);
}

class TypedMembersReject : public ::testing::TestWithParam<RejectedText> {};

TEST_P(TypedMembersReject, AText) {
  const JsonOutcome outcome = outcomeOf(std::string(GetParam().text));
  EXPECT_EQ(
      std::make_tuple(outcome.kind, outcome.code, outcome.column),
      std::make_tuple(JsonOutcome::Kind::kParserException, GetParam().code, GetParam().column))
      << outcome;
}

constexpr RejectedText kRejectedPayloads[] = {
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

constexpr RejectedText kRejectedAgain[] = {
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
