#include "json/TreeBuilder.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include <gtest/gtest.h>

#include "foundation/json/Value.h"
#include "support/ValueText.h"

namespace foundation::json {
namespace {

using namespace std::string_view_literals;
using test_support::valueText;

// Too long for the inline buffer of a std::string.
constexpr std::string_view kText = "key|a string that lies in the text|empty:";

std::string_view keyOf(const TreeBuilder& builder) {
  return builder.text().substr(0, 3);
}

std::string_view stringOf(const TreeBuilder& builder) {
  return builder.text().substr(4, 30);
}

// An array with an object in it. The key and the strings are in the text; others are copied.
Value build() {
  TreeBuilder builder{std::string(kText)};
  builder.open();
  builder.open();
  builder.addStringOfText(keyOf(builder));
  builder.addStringOfText(stringOf(builder));
  builder.addString("copied key");
  builder.open();
  builder.addNumber(1.5);
  builder.addString("copied string");
  builder.closeArray();
  builder.closeObject();
  builder.addStringOfText(stringOf(builder));
  builder.closeArray();
  return builder.finish();
}

constexpr const char* kBuilt =
    R"([{"copied key": [1.5, "copied string"], "key": "a string that lies in the text"}, )"
    R"("a string that lies in the text"])";

TEST(TreeBuilder, TakesOwnershipOfTheText) {
  std::string text(kText);
  const char* const characters = text.data();
  const TreeBuilder builder(std::move(text));
  EXPECT_EQ(builder.text(), kText);
  EXPECT_EQ(static_cast<const void*>(builder.text().data()), characters);
}

TEST(TreeBuilder, MakesASingleValue) {
  const auto single = [](const auto& add) {
    TreeBuilder builder{std::string(kText)};
    add(builder);
    return valueText(builder.finish());
  };
  EXPECT_EQ(single([](TreeBuilder& builder) { builder.addNull(); }), "null");
  EXPECT_EQ(single([](TreeBuilder& builder) { builder.addBoolean(true); }), "true");
  EXPECT_EQ(single([](TreeBuilder& builder) { builder.addBoolean(false); }), "false");
  EXPECT_EQ(single([](TreeBuilder& builder) { builder.addNumber(-0.0); }), "-0");
  EXPECT_EQ(single([](TreeBuilder& builder) { builder.addInteger(std::int64_t{-1}); }),
            "int64(-1)");
  EXPECT_EQ(single([](TreeBuilder& builder) { builder.addInteger(UINT64_MAX); }),
            "uint64(18446744073709551615)");
  EXPECT_EQ(single([](TreeBuilder& builder) { builder.addString("copied"); }), "\"copied\"");
  EXPECT_EQ(single([](TreeBuilder& builder) { builder.addString(""); }), "\"\"");
  EXPECT_EQ(single([](TreeBuilder& builder) { builder.addStringOfText(stringOf(builder)); }),
            "\"a string that lies in the text\"");
  EXPECT_EQ(
      single([](TreeBuilder& builder) { builder.addStringOfText(builder.text().substr(4, 0)); }),
      "\"\"");
}

TEST(TreeBuilder, MakesEmptyContainers) {
  TreeBuilder builder("");
  builder.open();
  builder.open();
  builder.closeArray();
  builder.open();
  builder.closeObject();
  builder.closeArray();
  EXPECT_EQ(valueText(builder.finish()), "[[], {}]");
}

TEST(TreeBuilder, MakesContainersInContainers) {
  EXPECT_EQ(valueText(build()), kBuilt);
}

TEST(TreeBuilder, KeepsStringsOfEveryLength) {
  constexpr std::size_t kLengths[] = {0,     1,     15,    16,    1000,   16384,
                                      16385, 65519, 65520, 70000, 300000, 5000000};
  TreeBuilder builder("");
  builder.open();
  for (const std::size_t length : kLengths) {
    builder.addString(std::string(length, 'x'));
    std::string roomy(length, 'y');
    roomy.reserve(3 * length);
    builder.addString(std::move(roomy));
    // Nodes between strings, so that they alternate in memory.
    builder.open();
    builder.addNull();
    builder.closeArray();
  }
  builder.closeArray();
  const Array values = builder.finish().as<Array>();
  std::size_t i = 0;
  for (const std::size_t length : kLengths) {
    EXPECT_EQ(values[i++].as<std::string_view>(), std::string(length, 'x'));
    EXPECT_EQ(values[i++].as<std::string_view>(), std::string(length, 'y'));
    EXPECT_EQ(valueText(values[i++]), "[null]");
  }
}

TEST(TreeBuilder, OrdersMembersAndKeepsTheFirstOfEqualKeysHoweverManyThereAre) {
  for (std::size_t count = 1; count != 60; ++count) {
    TreeBuilder builder("");
    builder.open();
    std::string expected;
    for (std::size_t i = count; i != 0; --i) {
      const std::string key = std::to_string(100 + i);
      for (const double number : {1.0, 2.0}) {
        builder.addString(std::string(key));
        builder.addNumber(number);
      }
      expected.insert(0, (i == 1 ? "\"" : ", \"") + key + "\": 1");
    }
    builder.closeObject();
    EXPECT_EQ(valueText(builder.finish()), "{" + expected + "}");
  }
}

TEST(TreeBuilder, ReplacesAValueByAnother) {
  TreeBuilder builder("");
  builder.open();
  builder.addString("first");
  const std::size_t place = builder.lastPlace();
  builder.addString("second");
  builder.open();
  builder.addNumber(1.0);
  builder.closeArray();
  const TreeBuilder::Kept kept = builder.last();
  builder.addInteger(std::int64_t{7});
  const TreeBuilder::Kept taken = builder.takeLast();
  builder.replace(place, taken);
  builder.addNull();
  builder.replace(builder.lastPlace(), kept);
  builder.closeArray();
  EXPECT_EQ(valueText(builder.finish()), R"([int64(7), "second", [1], [1]])");
}

TEST(TreeBuilder, HasNoResultIfNothingIsFinished) {
  TreeBuilder builder{std::string(kText)};
  builder.open();
  builder.addString("copied");
  builder.open();
}

// -------------------------------------------------------------------------------------------------
// What is built, and parts of it

TEST(BuiltValue, IsCopiedMovedAndAssigned) {
  Value value = build();
  Value copy = value;
  const Value moved = std::move(value);
  value = copy;
  copy = Value();
  EXPECT_EQ(valueText(value), kBuilt);
  EXPECT_EQ(value, moved);
}

TEST(PartsOfABuiltValue, OutliveTheWhole) {
  Value string;
  Value stringInside;
  Value copiedString;
  Value array;
  Value object;
  Array arrayItself;
  Object objectItself;
  {
    const Value whole = build();
    arrayItself = whole.as<Array>();
    object = arrayItself[0];
    objectItself = object.as<Object>();
    string = arrayItself[1];
    stringInside = objectItself.at("key");
    array = objectItself.at("copied key");
    copiedString = array.as<Array>()[1];
    arrayItself = Array();
  }
  EXPECT_EQ(valueText(object),
            R"({"copied key": [1.5, "copied string"], "key": "a string that lies in the text"})");
  object = Value();
  EXPECT_EQ(valueText(objectItself),
            R"({"copied key": [1.5, "copied string"], "key": "a string that lies in the text"})");
  objectItself = Object();
  EXPECT_EQ(valueText(array), R"([1.5, "copied string"])");
  array = Value();
  EXPECT_EQ(valueText(string), R"("a string that lies in the text")");
  EXPECT_EQ(valueText(stringInside), R"("a string that lies in the text")");
  EXPECT_EQ(valueText(copiedString), R"("copied string")");
}

TEST(PartsOfABuiltValue, CanBePartsOfValuesBuiltByHand) {
  Value byHand;
  {
    const Value whole = build();
    byHand = Array{whole.as<Array>()[1], Object{{"part", whole.as<Array>()[0]}}, whole};
  }
  EXPECT_EQ(valueText(byHand),
            R"(["a string that lies in the text", {"part": {"copied key": [1.5, "copied string"], )"
            R"("key": "a string that lies in the text"}}, )" +
                std::string(kBuilt) + "]");
}

TEST(PartsOfABuiltValue, ReplaceTheWhole) {
  Value value = build();
  value = value.as<Array>()[0];
  value = value["copied key"];
  value = value.as<Array>()[1];
  EXPECT_EQ(valueText(value), R"("copied string")");
  value = build();
  value = value.as<Array>()[1];
  EXPECT_EQ(valueText(value), R"("a string that lies in the text")");
}

TEST(PartsOfABuiltValue, AreReadInPlace) {
  const Value whole = build();
  const Array array = whole.as<Array>();
  EXPECT_EQ(array[1].as<std::string_view>().data(), array[0]["key"].as<std::string_view>().data());
}

TEST(BuiltValue, IsEqualToOneBuiltByHand) {
  EXPECT_EQ(build(), Value(Array{Object{{"key", "a string that lies in the text"},
                                        {"copied key", Array{1.5, "copied string"}}},
                                 "a string that lies in the text"}));
}

}  // namespace
}  // namespace foundation::json
