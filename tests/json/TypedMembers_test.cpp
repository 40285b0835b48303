#include <ostream>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "json/JsonText.h"
#include "support/ValueText.h"

namespace foundation::json {
namespace {

using test_support::quoted;
using test_support::valueText;

struct TypedText {
  const char* name;
  std::string_view text;
  const char* value;
};

void PrintTo(const TypedText& row, std::ostream* stream) {
  *stream << quoted(row.text);
}

class TypedMembers : public ::testing::TestWithParam<TypedText> {};

TEST_P(TypedMembers, AreReadAs) {
  EXPECT_EQ(valueText(parseJsonText(std::string(GetParam().text))), GetParam().value);
}

constexpr TypedText kTypeBeforePayload[] = {
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

constexpr TypedText kPayloadBeforeType[] = {
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

constexpr TypedText kUntyped[] = {
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

constexpr TypedText kRepeatedMembers[] = {
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

constexpr TypedText kElsewhere[] = {
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

}  // namespace
}  // namespace foundation::json
