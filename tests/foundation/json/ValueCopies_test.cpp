// Copies, moves and swaps of values.

#include "foundation/json/Value.h"

#include <utility>

#include <gtest/gtest.h>

#include "foundation/json/ValueSamples.h"
#include "support/ValueText.h"

namespace foundation::json {
namespace {

using test_support::Sample;
using test_support::samples;
using test_support::valueText;

TEST(ValueCopy, IsEqualAndStaysSoWhenItsSourceChanges) {
  for (const Sample& sample : samples()) {
    Value source = sample.value;
    const Value copy = source;
    Value assigned("before");
    assigned = source;
    source = "something else";
    EXPECT_EQ(copy, sample.value) << sample.name;
    EXPECT_EQ(assigned, sample.value) << sample.name;
  }
}

TEST(ValueCopy, OutlivesItsSource) {
  for (const Sample& sample : samples()) {
    Value copy;
    {
      const Value source = sample.value;
      copy = source;
    }
    EXPECT_EQ(valueText(copy), valueText(sample.value));
  }
}

TEST(ValueCopy, SharesTheContentOfContainers) {
  const Value array(Array{1.0});
  const Value arrayCopy = array;
  EXPECT_EQ(array.as<Array>().begin(), arrayCopy.as<Array>().begin());
  const Value object(Object{{"a", 1.0}});
  const Value objectCopy = object;
  EXPECT_EQ(&object["a"], &objectCopy["a"]);
}

TEST(ValueMove, LeavesTheSourceUndefined) {
  for (const Sample& sample : samples()) {
    Value source = sample.value;
    const Value moved = std::move(source);
    EXPECT_EQ(moved, sample.value) << sample.name;
    EXPECT_TRUE(source.is<Undefined>());  // NOLINT(bugprone-use-after-move): that is the contract
    source = moved;
    Value assigned("before");
    assigned = std::move(source);
    EXPECT_EQ(assigned, sample.value) << sample.name;
    EXPECT_TRUE(source.is<Undefined>());  // NOLINT(bugprone-use-after-move): that is the contract
  }
}

TEST(ValueAssignment, ToItselfChangesNothing) {
  for (const Sample& sample : samples()) {
    Value value = sample.value;
    Value& same = value;
    value = same;
    EXPECT_EQ(value, sample.value) << sample.name;
    value = std::move(same);
    EXPECT_EQ(value, sample.value) << sample.name;
    value.swap(same);
    EXPECT_EQ(value, sample.value) << sample.name;
  }
}

TEST(ValueAssignment, OfAPartReplacesTheWhole) {
  Value value(Object{{"a", Array{"text", Array{1.0}}}});
  value = value["a"];
  EXPECT_EQ(valueText(value), R"(["text", [1]])");
  value = value.as<Array>()[1];
  EXPECT_EQ(valueText(value), "[1]");
  value = Value(value.as<Array>()[0]);
  EXPECT_EQ(valueText(value), "1");
}

TEST(ValueSwap, ExchangesTwoValues) {
  Value left("text");
  Value right(Array{1.0});
  left.swap(right);
  EXPECT_EQ(valueText(left) + valueText(right), "[1]\"text\"");
  swap(left, right);
  EXPECT_EQ(valueText(left) + valueText(right), "\"text\"[1]");
}

}  // namespace
}  // namespace foundation::json
