#include "foundation/json/Value.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <typeinfo>
#include <vector>

#include <gtest/gtest.h>

#include "foundation/json/ValueSamples.h"
#include "support/ValueText.h"

namespace foundation::json {
namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;
using test_support::Sample;
using test_support::samples;

static_assert(sizeof(Value) == 16);
static_assert(std::is_nothrow_default_constructible_v<Value>);
static_assert(std::is_copy_constructible_v<Value> && std::is_copy_assignable_v<Value>);
static_assert(std::is_nothrow_move_constructible_v<Value>);
static_assert(std::is_nothrow_move_assignable_v<Value>);
static_assert(std::is_nothrow_swappable_v<Value>);
static_assert(std::is_nothrow_destructible_v<Value>);

// Only exact alternatives convert to a value.
static_assert(!std::is_constructible_v<Value, int> && !std::is_constructible_v<Value, unsigned>);
static_assert(!std::is_constructible_v<Value, char>);
// The other type of 64 bits, of `long` and `long long`.
using OtherInt64 = std::conditional_t<std::is_same_v<std::int64_t, long>, long long, long>;
static_assert(!std::is_constructible_v<Value, OtherInt64>);
static_assert(!std::is_constructible_v<Value, std::make_unsigned_t<OtherInt64>>);
static_assert(!std::is_constructible_v<Value, short> && !std::is_constructible_v<Value, char16_t>);
static_assert(!std::is_constructible_v<Value, long double>);
static_assert(!std::is_constructible_v<Value, void*> && !std::is_constructible_v<Value, int*>);
static_assert(std::is_convertible_v<double, Value> && std::is_convertible_v<bool, Value>);
static_assert(std::is_convertible_v<const char*, Value>);

template <class T>
struct Kind {
  using Type = T;
};

// Calls `visit` for each kind that a value can be read as.
template <class Visit>
void forEachKind(const Visit& visit) {
  visit(Kind<bool>());
  visit(Kind<double>());
  visit(Kind<std::string>());
  visit(Kind<Array>());
  visit(Kind<Object>());
  visit(Kind<float>());
  visit(Kind<std::int64_t>());
  visit(Kind<std::uint64_t>());
}

// The message of an exception of exactly the type Error; a note if none was thrown.
template <class Error, class Action>
std::string messageOf(const Action& action) {
  try {
    action();
  } catch (const std::exception& error) {
    return typeid(error) == typeid(Error) ? error.what() : "another type: "s + error.what();
  }
  return "nothing thrown";
}

std::string invalidConversion(const char* actual, const char* expected) {
  return "invalid conversion: "s + actual + " to " + expected;
}

// -------------------------------------------------------------------------------------------------
// Kinds

TEST(ValueTraits, NameTheTenKinds) {
  std::vector<std::string> names;
  for (const Sample& sample : samples()) {
    names.emplace_back(sample.name);
  }
  EXPECT_EQ(names, (std::vector<std::string>{"undefined", "null", "boolean", "double", "string",
                                             "array", "object", "float", "int64", "uint64"}));
}

TEST(Value, KnowsItsKind) {
  for (const Sample& sample : samples()) {
    EXPECT_EQ(sample.value.index(), sample.index) << sample.name;
    EXPECT_STREQ(sample.value.typeName(), sample.name);
    forEachKind([&](auto kind) {
      using T = typename decltype(kind)::Type;
      EXPECT_EQ(sample.value.is<T>(), traits<T>::index == sample.index) << sample.name;
    });
    EXPECT_EQ(sample.value.is<Undefined>(), sample.index == 0);
    EXPECT_EQ(sample.value.is<std::nullptr_t>(), sample.index == 1);
  }
}

TEST(Value, IsUndefinedUnlessItIsMadeFromSomething) {
  EXPECT_TRUE(Value().is<Undefined>());
  EXPECT_TRUE(Value(Undefined()).is<Undefined>());
  EXPECT_TRUE(Value::UNDEFINED.is<Undefined>());
}

TEST(Value, ReturnsWhatItIsMadeFrom) {
  EXPECT_TRUE(Value(true).as<bool>());
  EXPECT_FALSE(Value(false).as<bool>());
  for (const double number :
       {0.0, -1.5, std::numeric_limits<double>::max(), std::numeric_limits<double>::infinity()}) {
    EXPECT_EQ(Value(number).as<double>(), number);
  }
  EXPECT_TRUE(std::signbit(Value(-0.0).as<double>()));
  EXPECT_TRUE(std::isnan(Value(std::nan("")).as<double>()));
  EXPECT_EQ(Value(1.5f).as<float>(), 1.5f);
  for (const std::int64_t number : {std::numeric_limits<std::int64_t>::min(), std::int64_t{-1},
                                    std::numeric_limits<std::int64_t>::max()}) {
    EXPECT_EQ(Value(number).as<std::int64_t>(), number);
  }
  EXPECT_EQ(Value(UINT64_MAX).as<std::uint64_t>(), UINT64_MAX);
}

TEST(Value, ReturnsEveryStringThatItIsMadeFrom) {
  const std::string longText(100000, 'x');
  for (const std::string& text : {""s, "a"s, "0123456"s, "01234567"s, "0123456789abcdef"s, "a\0b"s,
                                  "\0"s, "\xFF\xC3"s, longText}) {
    const Value fromString(text);
    const Value fromView{std::string_view(text)};
    EXPECT_EQ(fromString.as<std::string>(), text);
    EXPECT_EQ(fromString.as<std::string_view>(), text);
    EXPECT_EQ(fromView.as<std::string>(), text);
    EXPECT_EQ(fromString, fromView);
  }
  EXPECT_EQ(Value("literal").as<std::string>(), "literal");
  EXPECT_EQ(Value("").as<std::string_view>(), "");
}

TEST(Value, ReadsAStringInPlace) {
  const Value value("a string");
  const char* const characters = value.as<std::string_view>().data();
  EXPECT_EQ(characters, value.as<std::string_view>().data());
}

TEST(Value, IsNotReadAsAnotherKind) {
  for (const Sample& sample : samples()) {
    forEachKind([&](auto kind) {
      using T = typename decltype(kind)::Type;
      const std::string message =
          messageOf<std::runtime_error>([&] { static_cast<void>(sample.value.as<T>()); });
      EXPECT_EQ(message, traits<T>::index == sample.index
                             ? "nothing thrown"
                             : invalidConversion(sample.name, traits<T>::name));
    });
    if (sample.index != traits<std::string>::index) {
      EXPECT_EQ(messageOf<std::runtime_error>(
                    [&] { static_cast<void>(sample.value.as<std::string_view>()); }),
                invalidConversion(sample.name, traits<std::string>::name));
    }
  }
}

TEST(Value, NamesBothKindsOfAFailedConversion) {
  EXPECT_EQ(messageOf<std::runtime_error>([] { Value(nullptr).as<std::string>(); }),
            "invalid conversion: null to string");
  EXPECT_EQ(messageOf<std::runtime_error>([] { Value(std::uint64_t{1}).as<double>(); }),
            "invalid conversion: uint64 to double");
}

// -------------------------------------------------------------------------------------------------
// Look-up

TEST(ValueLookUp, FindsMembers) {
  const Value value(Object{{"a", 1.0}, {"", "empty"}, {"a\0b"sv, true}});
  EXPECT_EQ(value["a"], Value(1.0));
  EXPECT_EQ(value[""], Value("empty"));
  EXPECT_EQ(value["a\0b"sv], Value(true));
}

TEST(ValueLookUp, RefersToTheMemberItself) {
  const Value value(Object{{"a", 1.0}});
  EXPECT_EQ(&value["a"], &value["a"]);
  EXPECT_EQ(&value["a"], &value.as<Object>().begin()->second);
}

TEST(ValueLookUp, OfAnAbsentMemberIsTheOneUndefinedValue) {
  const Value value(Object{{"b", 1.0}, {"d", 2.0}});
  for (const char* key : {"", "a", "c", "e", "bb", "B"}) {
    EXPECT_EQ(&value[key], &Value::UNDEFINED) << key;
  }
  const Value empty{Object()};
  EXPECT_EQ(&empty["a"], &Value::UNDEFINED);
  EXPECT_EQ(value, Value(Object{{"b", 1.0}, {"d", 2.0}}));
}

TEST(ValueLookUp, FindsAMemberThatIsUndefinedItself) {
  const Value value(Object{{"a", Value()}});
  EXPECT_TRUE(value["a"].is<Undefined>());
  EXPECT_NE(&value["a"], &Value::UNDEFINED);
}

TEST(ValueLookUp, NeedsAnObject) {
  for (const Sample& sample : samples()) {
    const std::string message =
        messageOf<std::runtime_error>([&] { static_cast<void>(sample.value["key"]); });
    EXPECT_EQ(message, sample.index == traits<Object>::index
                           ? "nothing thrown"
                           : invalidConversion(sample.name, traits<Object>::name));
  }
}

// -------------------------------------------------------------------------------------------------
// Comparison

TEST(ValueComparison, TellsKindsApart) {
  const std::vector<Sample> all = samples();
  for (const Sample& left : all) {
    for (const Sample& right : all) {
      EXPECT_EQ(left.value == right.value, left.index == right.index);
      EXPECT_EQ(left.value != right.value, left.index != right.index);
    }
  }
  EXPECT_NE(Value(1.0), Value(1.0f));
  EXPECT_NE(Value(std::int64_t{1}), Value(std::uint64_t{1}));
  EXPECT_NE(Value(false), Value(nullptr));
  EXPECT_NE(Value(""), Value(Array()));
  EXPECT_NE(Value(Array()), Value(Object()));
}

TEST(ValueComparison, TellsContentsApart) {
  EXPECT_NE(Value(true), Value(false));
  EXPECT_NE(Value(1.0), Value(2.0));
  EXPECT_NE(Value(1.0f), Value(2.0f));
  EXPECT_NE(Value(std::int64_t{1}), Value(std::int64_t{-1}));
  EXPECT_NE(Value(std::uint64_t{1}), Value(UINT64_MAX));
  EXPECT_NE(Value("a"), Value("b"));
  EXPECT_NE(Value("a"), Value("ab"));
  EXPECT_NE(Value("a\0b"s), Value("a\0c"s));
}

TEST(ValueComparison, FollowsTheEqualityOfNumbers) {
  EXPECT_EQ(Value(0.0), Value(-0.0));
  EXPECT_EQ(Value(0.0f), Value(-0.0f));
  const Value notANumber(std::nan(""));
  EXPECT_FALSE(notANumber == notANumber);
  EXPECT_TRUE(notANumber != notANumber);
  EXPECT_FALSE(Value(Array{notANumber}) == Value(Array{notANumber}));
}

TEST(ValueComparison, ComparesTheContentsOfContainers) {
  const auto nested = [](double innermost) {
    return Value(Array{Object{{"a", Array{innermost, "b"}}, {"c", nullptr}}, true});
  };
  EXPECT_EQ(nested(1.0), nested(1.0));
  EXPECT_NE(nested(1.0), nested(2.0));
}

}  // namespace
}  // namespace foundation::json
