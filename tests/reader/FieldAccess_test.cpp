#include "reader/FieldAccess.h"

#include <cstdint>
#include <ostream>
#include <string>

#include <gtest/gtest.h>

#include "support/Failure.h"
#include "support/SampleDocument.h"

namespace install::update_metadata_parser {
namespace {

using foundation::json::Array;
using foundation::json::Object;
using foundation::json::traits;
using foundation::json::Undefined;
using foundation::json::Value;
using test_support::failureOf;
using test_support::invalidConversion;
using test_support::invalidData;
using test_support::Kind;
using test_support::kinds;

/// A getter for one kind: a value that it accepts, and its failure for every other kind.
struct Getter {
  const char* name;
  std::string wanted;
  std::string (*failure)(const Value& object, const char* context);
};

void PrintTo(const Getter& getter, std::ostream* stream) {
  *stream << getter.name;
}

template <class T, T (*get)(std::string_view, const Value&, std::string_view)>
std::string failureOfGetter(const Value& object, const char* context) {
  return failureOf([&] { get("member", object, context); });
}

const Getter kGetters[] = {
    {"String", traits<std::string>::name, failureOfGetter<std::string, getString>},
    {"Number", traits<double>::name, failureOfGetter<double, getNumber>},
    {"Boolean", traits<bool>::name, failureOfGetter<bool, getMember<bool>>},
    {"Object", traits<Object>::name, failureOfGetter<Object, getObject>},
    {"Array", traits<Array>::name, failureOfGetter<Array, getArray>},
};

class GetterOfEachKind : public ::testing::TestWithParam<Getter> {};

TEST_P(GetterOfEachKind, AcceptsItsOwnKindAndTellsANullFromEveryOther) {
  for (const Kind& kind : kinds()) {
    SCOPED_TRACE(kind.name);
    const std::string expected = kind.name == GetParam().wanted ? "nothing"
                                 : kind.name == traits<std::nullptr_t>::name
                                     ? invalidConversion(kind.name, GetParam().wanted)
                                     : invalidData("member");
    EXPECT_EQ(GetParam().failure(Object{{"member", kind.value}}, ""), expected);
  }
}

TEST_P(GetterOfEachKind, TreatsAnAbsentMemberAsOneOfAnotherKind) {
  EXPECT_EQ(GetParam().failure(Object(), ""), invalidData("member"));
  EXPECT_EQ(GetParam().failure(Object{{"Member", nullptr}, {"membe", nullptr}}, ""),
            invalidData("member"))
      << "keys are compared byte by byte";
}

TEST_P(GetterOfEachKind, PutsTheContextDirectlyBeforeTheKey) {
  EXPECT_EQ(GetParam().failure(Object(), "base"), invalidData("basemember"));
  EXPECT_EQ(GetParam().failure(Object(), "a 'b' "), invalidData("a 'b' member"));
}

TEST_P(GetterOfEachKind, LeavesTheContextOutOfAConversionFailure) {
  EXPECT_EQ(GetParam().failure(Object{{"member", nullptr}}, "base"),
            invalidConversion(traits<std::nullptr_t>::name, GetParam().wanted));
}

TEST_P(GetterOfEachKind, RejectsALookUpInAnythingButAnObject) {
  for (const Kind& kind : kinds()) {
    SCOPED_TRACE(kind.name);
    const std::string expected = kind.name == traits<Object>::name
                                     ? invalidData("basemember")
                                     : invalidConversion(kind.name, traits<Object>::name);
    EXPECT_EQ(GetParam().failure(kind.value, "base"), expected);
  }
}

INSTANTIATE_TEST_SUITE_P(FieldAccess, GetterOfEachKind, ::testing::ValuesIn(kGetters),
                         [](const auto& row) { return row.param.name; });

TEST(FieldAccess, ReturnsTheMembersValue) {
  const Array array = {1.0, "one"};
  const Object inner = {{"one", 1.0}};
  const Value object = Object{{"string", std::string_view("a\0b", 3)},
                              {"empty", ""},
                              {"number", -12.75},
                              {"boolean", true},
                              {"object", inner},
                              {"array", array}};
  EXPECT_EQ(getString("string", object, ""), std::string("a\0b", 3));
  EXPECT_EQ(getString("empty", object, "context"), "");
  EXPECT_EQ(getNumber("number", object, ""), -12.75);
  EXPECT_TRUE(getMember<bool>("boolean", object, ""));
  EXPECT_EQ(getObject("object", object, ""), inner);
  EXPECT_EQ(getArray("array", object, ""), array);
}

TEST(FieldAccess, ReturnsCopiesThatOutliveTheObject) {
  Value object = test_support::sampleDocument();
  const Object metadata = getObject("metadata", object, "");
  const Array comps = getArray("delete", object["products"]["Scale"], "");
  object = Value();
  EXPECT_EQ(metadata.at("arch"), Value("x86"));
  EXPECT_EQ(comps, (Array{"extra", "core"}));
}

TEST(FieldAccess, UsesKeysWithNulsAndHighBytesVerbatim) {
  const std::string key("a\0\xFF", 3);
  const Value object = Object{{key, "whole"}, {"a", "part"}};
  EXPECT_EQ(getString(key, object, ""), "whole");
}

TEST(ValueConversion, NamesBothKindsForEveryPair) {
  for (const Kind& kind : kinds()) {
    SCOPED_TRACE(kind.name);
    const auto expected = [&](const std::string& wanted) {
      return kind.name == wanted ? "nothing" : invalidConversion(kind.name, wanted);
    };
    EXPECT_EQ(failureOf([&] { kind.value.as<bool>(); }), expected(traits<bool>::name));
    EXPECT_EQ(failureOf([&] { kind.value.as<double>(); }), expected(traits<double>::name));
    EXPECT_EQ(failureOf([&] { kind.value.as<std::string>(); }),
              expected(traits<std::string>::name));
    EXPECT_EQ(failureOf([&] { kind.value.as<Array>(); }), expected(traits<Array>::name));
    EXPECT_EQ(failureOf([&] { kind.value.as<Object>(); }), expected(traits<Object>::name));
  }
}

TEST(MemberLookUp, ReturnsTheOneUndefinedValueForAnAbsentKey) {
  const Value object = Object{{"a", 1.0}};
  EXPECT_EQ(&object["b"], &Value::UNDEFINED);
  EXPECT_EQ(&Value(Object())[""], &Value::UNDEFINED);
  EXPECT_TRUE(Value::UNDEFINED.is<Undefined>());
  EXPECT_EQ(object, Value(Object{{"a", 1.0}})) << "nothing is inserted";
}

}  // namespace
}  // namespace install::update_metadata_parser
