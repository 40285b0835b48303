#include <algorithm>
#include <cstddef>
#include <map>
#include <random>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <typeinfo>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "foundation/json/Value.h"
#include "support/ValueText.h"

namespace foundation::json {
namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;
using test_support::quoted;
using test_support::valueText;

using Members = std::vector<std::pair<std::string, Value>>;

static_assert(std::is_nothrow_default_constructible_v<Object>);
static_assert(std::is_nothrow_copy_constructible_v<Object>);
static_assert(std::is_nothrow_move_constructible_v<Object>);
static_assert(std::is_nothrow_move_assignable_v<Object>);

std::vector<std::string> keysOf(const Object& object) {
  std::vector<std::string> keys;
  for (const auto& [key, value] : object) {
    keys.emplace_back(key);
  }
  return keys;
}

TEST(Object, IsEmptyUnlessItIsMadeFromMembers) {
  for (const Object& object : {Object(), Object(Members())}) {
    EXPECT_TRUE(object.empty());
    EXPECT_EQ(object.size(), 0u);
    EXPECT_EQ(object.begin(), object.end());
    EXPECT_EQ(object.find("a"), object.end());
    EXPECT_EQ(object.count(""), 0u);
  }
}

TEST(Object, OrdersItsMembersByTheBytesOfTheirKeysAsUnsignedNumbersAPrefixFirst) {
  const Object object{{"b", nullptr},        {"\xFF", nullptr},  {"a", nullptr},
                      {"\xC3\xA9", nullptr}, {"ab", nullptr},    {"", nullptr},
                      {"B", nullptr},        {"a\0"sv, nullptr}, {"\x7F", nullptr}};
  EXPECT_EQ(keysOf(object), (std::vector<std::string>{"", "B", "a", "a\0"s, "ab", "b", "\x7F",
                                                      "\xC3\xA9", "\xFF"}));
}

TEST(Object, KeepsTheFirstOfEqualKeys) {
  const Object object{{"b", 1.0}, {"a", 2.0}, {"b", 3.0}, {"a", 4.0}, {"b", 5.0}};
  EXPECT_EQ(valueText(object), R"({"a": 2, "b": 1})");
  EXPECT_EQ(valueText(Object(Members{{"b", 1.0}, {"a", 2.0}, {"b", 3.0}})), R"({"a": 2, "b": 1})");
}

TEST(Object, FindsItsMembers) {
  const Object object{{"a", 1.0}, {"c", 2.0}, {"e\0f"sv, 3.0}};
  EXPECT_EQ(object.find("c")->first, "c");
  EXPECT_EQ(object.find("c")->second, Value(2.0));
  EXPECT_EQ(object.find("c"), object.begin() + 1);
  EXPECT_EQ(object.at("e\0f"sv), Value(3.0));
  EXPECT_EQ(&object.at("a"), &object.begin()->second);
  for (const char* key : {"", "A", "b", "d", "e", "f", "aa"}) {
    EXPECT_EQ(object.find(key), object.end()) << key;
    EXPECT_EQ(object.count(key), 0u) << key;
  }
  EXPECT_EQ(object.count("a"), 1u);
}

TEST(Object, ThrowsOutOfRangeForAnAbsentMember) {
  for (const Object& object : {Object(), Object{{"a", 1.0}}}) {
    try {
      object.at("b");
      ADD_FAILURE() << "nothing thrown";
    } catch (const std::exception& error) {
      EXPECT_EQ(typeid(error), typeid(std::out_of_range));
      EXPECT_STREQ(error.what(), "map::at");
    }
  }
}

TEST(Object, BehavesAsAnOrderedMap) {
  std::mt19937_64 random(1);
  for (std::size_t size = 0; size != 70; ++size) {
    Members members;
    std::map<std::string, Value> expected;
    for (std::size_t i = 0; i != size; ++i) {
      std::string key(random() % 3, 'x');
      for (char& byte : key) {
        byte = "\0ab\x80\xFF"[random() % 5];
      }
      members.emplace_back(key, static_cast<double>(i));
      expected.emplace(key, static_cast<double>(i));
    }
    const Object object(members);
    ASSERT_TRUE(std::equal(object.begin(), object.end(), expected.begin(), expected.end(),
                           [](const Member& left, const auto& right) {
                             return left.first == right.first && left.second == right.second;
                           }));
    for (const auto& [key, value] : members) {
      EXPECT_EQ(object.at(key), expected.at(key)) << quoted(key);
    }
  }
}

TEST(Object, CopiesItsKeys) {
  std::string key = "a key that is too long to be stored in place";
  const Object object{{key, 1.0}};
  key.assign(key.size(), 'x');
  EXPECT_EQ(keysOf(object),
            std::vector<std::string>{"a key that is too long to be stored in place"});
}

TEST(Object, IsReturnedByItsValue) {
  const Object object{{"a", 1.0}};
  const Value value(object);
  EXPECT_EQ(value.as<Object>(), object);
  EXPECT_EQ(value.as<Object>().begin(), object.begin());
}

TEST(Object, OutlivesItsValueAndItsCopies) {
  Object object;
  {
    const Value value(Object{{"a key that is too long to be stored in place", "text"}});
    object = value.as<Object>();
    const Object copy = object;
  }
  EXPECT_EQ(valueText(object), R"({"a key that is too long to be stored in place": "text"})");
}

TEST(Object, IsComparedMemberByMember) {
  EXPECT_EQ(Object(), Object());
  EXPECT_EQ((Object{{"a", 1.0}, {"b", 2.0}}), (Object{{"b", 2.0}, {"a", 1.0}}));
  EXPECT_NE((Object{{"a", 1.0}}), (Object{{"a", 2.0}}));
  EXPECT_NE((Object{{"a", 1.0}}), (Object{{"b", 1.0}}));
  EXPECT_NE((Object{{"a", 1.0}}), (Object{{"a", 1.0}, {"b", 1.0}}));
  EXPECT_NE(Object(), (Object{{"", Value()}}));
}

TEST(ObjectMove, LeavesTheSourceEmpty) {
  Object source{{"a", 1.0}};
  Object moved = std::move(source);
  EXPECT_EQ(valueText(moved), R"({"a": 1})");
  EXPECT_TRUE(source.empty());  // NOLINT(bugprone-use-after-move): that is the contract
  Object assigned{{"b", 2.0}};
  assigned = std::move(moved);
  EXPECT_EQ(valueText(assigned), R"({"a": 1})");
}

TEST(ObjectAssignment, ToItselfChangesNothing) {
  Object object{{"a", 1.0}};
  Object& same = object;
  object = same;
  EXPECT_EQ(valueText(object), R"({"a": 1})");
}

TEST(ObjectAssignment, OfAPartReplacesTheWhole) {
  Object object{{"a", Object{{"b", Object{{"c", 1.0}}}}}};
  object = object.at("a").as<Object>();
  object = object.at("b").as<Object>();
  EXPECT_EQ(valueText(object), R"({"c": 1})");
}

TEST(Object, FindsEachOfItsMembersHoweverManyThereAre) {
  for (int count = 0; count != 40; ++count) {
    std::vector<std::pair<std::string, Value>> members;
    for (int i = 0; i != count; ++i) {
      members.emplace_back("key " + std::to_string(2 * i), double(i));
    }
    const Object object(std::move(members));
    const Value value(object);
    for (int i = 0; i != count; ++i) {
      const std::string key = "key " + std::to_string(2 * i);
      const std::string other = "key " + std::to_string(2 * i + 1);
      EXPECT_EQ(object.at(key), Value(double(i)));
      EXPECT_EQ(value[key], Value(double(i)));
      EXPECT_EQ(object.find(other), object.end());
      EXPECT_TRUE(value[other].is<Undefined>());
    }
    EXPECT_EQ(object.find(""), object.end());
  }
}

}  // namespace
}  // namespace foundation::json
