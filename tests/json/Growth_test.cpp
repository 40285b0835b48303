#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <ostream>
#include <random>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "foundation/json/Value.h"
#include "json/JsonText.h"
#include "json/ParseResult.h"
#include "json/TextReader.h"
#include "json/TreeBuilder.h"

// Texts that would keep a careless reader busy for hours.

namespace foundation::json {
namespace {

constexpr std::size_t kMany = 100000;

// Six digits, so that the texts sort as the numbers do.
std::string sixDigits(std::size_t number) {
  std::string digits = std::to_string(number);
  digits.insert(0, 6 - digits.size(), '0');
  return digits;
}

std::string objectOf(const std::vector<std::pair<std::string, std::size_t>>& members) {
  std::string text = "{";
  for (const auto& [key, value] : members) {
    text += (text.size() == 1 ? "\"" : ",\"") + key + "\":" + std::to_string(value);
  }
  return text + "}";
}

// The members of an object in order; all values are numbers.
std::vector<std::pair<std::string, std::size_t>> membersOf(const Value& object) {
  std::vector<std::pair<std::string, std::size_t>> members;
  for (const auto& [key, value] : object.as<Object>()) {
    members.emplace_back(key, static_cast<std::size_t>(value.as<double>()));
  }
  return members;
}

TEST(ManyMembers, OfOneKeyKeepTheFirst) {
  std::vector<std::pair<std::string, std::size_t>> members;
  for (std::size_t i = 0; i != kMany; ++i) {
    members.emplace_back("key", i + 7);
  }
  EXPECT_EQ(parseJsonText(objectOf(members)), Value(Object{{"key", 7.0}}));
}

TEST(ManyMembers, OfDescendingKeysAreOrdered) {
  std::vector<std::pair<std::string, std::size_t>> members;
  for (std::size_t i = kMany; i != 0; --i) {
    members.emplace_back(sixDigits(i), i);
  }
  const Value value = parseJsonText(objectOf(members));
  std::reverse(members.begin(), members.end());
  EXPECT_TRUE(membersOf(value) == members);
}

TEST(ManyMembers, OfDescendingKeysBuiltByHandAreOrdered) {
  std::vector<std::pair<std::string, Value>> members;
  std::vector<std::pair<std::string, std::size_t>> expected;
  for (std::size_t i = kMany; i != 0; --i) {
    members.emplace_back(sixDigits(i), static_cast<double>(i));
    members.emplace_back(sixDigits(i), "dropped");
    expected.emplace_back(sixDigits(i), i);
  }
  const Value value = Object(std::move(members));
  std::reverse(expected.begin(), expected.end());
  EXPECT_TRUE(membersOf(value) == expected);
}

TEST(ManyMembers, OfShuffledAndRepeatedKeysAreOrderedAndKeepTheFirst) {
  std::mt19937_64 random(1);
  std::vector<std::pair<std::string, std::size_t>> members;
  for (std::size_t i = 0; i != kMany; ++i) {
    members.emplace_back(sixDigits(random() % (kMany / 3)), i);
  }
  const Value value = parseJsonText(objectOf(members));
  std::stable_sort(members.begin(), members.end(),
                   [](const auto& left, const auto& right) { return left.first < right.first; });
  members.erase(
      std::unique(members.begin(), members.end(),
                  [](const auto& left, const auto& right) { return left.first == right.first; }),
      members.end());
  EXPECT_TRUE(membersOf(value) == members);
}

TEST(ManyMembers, AreAllFound) {
  std::vector<std::pair<std::string, std::size_t>> members;
  for (std::size_t i = 0; i != kMany; ++i) {
    members.emplace_back(sixDigits(i), i);
  }
  const Value value = parseJsonText(objectOf(members));
  std::size_t found = 0;
  for (const auto& [key, number] : members) {
    found += value[key] == Value(static_cast<double>(number)) ? 1u : 0u;
    found += &value[key + "x"] == &Value::UNDEFINED ? 1u : 0u;
  }
  EXPECT_EQ(found, 2 * kMany);
}

TEST(ManyObjects, WithTypesAndPayloadsAreReadOneByOne) {
  std::string text = "[0";
  for (std::size_t i = 0; i != kMany; ++i) {
    text += i % 2 == 0 ? ",{\"qztype\":\"int8\",\"qzdata\":[-1]}"
                       : ",{\"qzdata\":[-1],\"qztype\":\"uint8\"}";
  }
  const Array array = parseJsonText(text + "]").as<Array>();
  ASSERT_EQ(array.size(), kMany + 1);
  std::size_t right = 0;
  for (std::size_t i = 0; i != kMany; ++i) {
    const Value element = i % 2 == 0 ? Value(std::int64_t{-1}) : Value(std::uint64_t{0});
    right += array[i + 1]["qzdata"] == Value(Array{element}) ? 1u : 0u;
  }
  EXPECT_EQ(right, kMany);
}

// -------------------------------------------------------------------------------------------------
// Payloads that are read again

constexpr std::size_t kManyTypes = 10000;

std::string manyIntegers() {
  std::string text = "[";
  for (std::size_t i = 0; i != kManyTypes; ++i) {
    text += (i == 0 ? "-" : ",-") + std::to_string(i);
  }
  return text + "]";
}

std::string manyTypes(const char* first, const char* second) {
  std::string text;
  for (std::size_t i = 0; i != kManyTypes; i += 2) {
    text += ",\"qztype\":\"" + std::string(first) + "\",\"qztype\":\"" + second + "\"";
  }
  return text;
}

TEST(ManyTypesAfterAPayload, LeaveItAsTheLastOneSays) {
  const std::string start = "{\"qzdata\":" + manyIntegers();
  std::vector<Value> signedElements;
  std::vector<Value> unsignedElements;
  for (std::size_t i = 0; i != kManyTypes; ++i) {
    signedElements.emplace_back(-static_cast<std::int64_t>(i));
    unsignedElements.emplace_back(std::uint64_t{0});
  }
  const Value asSigned(Object{{"qzdata", Array(signedElements)}, {"qztype", "uint8"}});
  const Value asUnsigned(Object{{"qzdata", Array(unsignedElements)}, {"qztype", "int8"}});
  EXPECT_TRUE(parseJsonText(start + manyTypes("uint8", "int8") + "}") == asSigned);
  EXPECT_TRUE(parseJsonText(start + manyTypes("int8", "uint8") + "}") == asUnsigned);
  EXPECT_TRUE(parseJsonText(start + manyTypes("int8", "uint8") + ",\"qztype\":\"none\"}") ==
              asUnsigned);
}

/// Counts the numbers and integers that a text is read as while building its tree.
class CountingBuilder : public TreeBuilder {
 public:
  using TreeBuilder::TreeBuilder;

  std::size_t numbers = 0;
  std::size_t signedIntegers = 0;
  std::size_t unsignedIntegers = 0;

  void addNumber(double number) {
    ++numbers;
    TreeBuilder::addNumber(number);
  }
  void addInteger(std::int64_t integer) {
    ++signedIntegers;
    TreeBuilder::addInteger(integer);
  }
  void addInteger(std::uint64_t integer) {
    ++unsignedIntegers;
    TreeBuilder::addInteger(integer);
  }
};

struct Counts {
  ParseResult code;
  std::size_t numbers;
  std::size_t signedIntegers;
  std::size_t unsignedIntegers;

  friend bool operator==(const Counts& left, const Counts& right) {
    return std::tie(left.code, left.numbers, left.signedIntegers, left.unsignedIntegers) ==
           std::tie(right.code, right.numbers, right.signedIntegers, right.unsignedIntegers);
  }
  friend void PrintTo(const Counts& counts, std::ostream* stream) {
    *stream << "code " << counts.code << ", " << counts.numbers << " numbers, "
            << counts.signedIntegers << " signed and " << counts.unsignedIntegers
            << " unsigned integers";
  }
};

Counts countsOf(const std::string& text) {
  CountingBuilder builder(text);
  const char* const begin = builder.text().data();
  const ReadOutcome outcome =
      TextReader<CountingBuilder>(begin, begin + text.size(), false, builder).read();
  return {outcome.code, builder.numbers, builder.signedIntegers, builder.unsignedIntegers};
}

TEST(ManyTypesAfterAPayload, HaveItReadOnceInEachWay) {
  const std::string types = manyTypes("int8", "uint8") + manyTypes("uint64", "other") + "}";
  const std::string payload = "{\"qzdata\":" + manyIntegers();
  EXPECT_EQ(countsOf(payload + types), (Counts{kSuccess, kManyTypes, kManyTypes, kManyTypes}));
  EXPECT_EQ(countsOf("{\"qztype\":\"int16\"," + payload.substr(1) + types),
            (Counts{kSuccess, 0, kManyTypes, kManyTypes}));
}

TEST(ManyPayloads, AreReadOnceInEachWay) {
  std::string text = "{\"a\":0";
  for (std::size_t i = 0; i != kManyTypes; ++i) {
    text += ",\"qzdata\":[1],\"qztype\":\"int8\",\"qztype\":\"uint8\",\"qztype\":\"int8\"";
  }
  EXPECT_EQ(countsOf(text + "}"), (Counts{kSuccess, 2, kManyTypes, kManyTypes}));
}

}  // namespace
}  // namespace foundation::json
