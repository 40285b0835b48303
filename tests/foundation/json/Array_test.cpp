#include <cstddef>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "foundation/json/Value.h"
#include "support/ValueText.h"

namespace foundation::json {
namespace {

using test_support::valueText;

static_assert(std::is_nothrow_default_constructible_v<Array>);
static_assert(std::is_nothrow_copy_constructible_v<Array>);
static_assert(std::is_nothrow_move_constructible_v<Array>);
static_assert(std::is_nothrow_move_assignable_v<Array>);

TEST(Array, IsEmptyUnlessItIsMadeFromElements) {
  for (const Array& array : {Array(), Array(std::vector<Value>())}) {
    EXPECT_TRUE(array.empty());
    EXPECT_EQ(array.size(), 0u);
    EXPECT_EQ(array.begin(), array.end());
  }
}

TEST(Array, KeepsItsElementsInOrder) {
  const Array array{3.0, "text", nullptr, 1.0, Array{2.0}};
  EXPECT_FALSE(array.empty());
  EXPECT_EQ(array.size(), 5u);
  EXPECT_EQ(array[0], Value(3.0));
  EXPECT_EQ(array[4], Value(Array{2.0}));
  EXPECT_EQ(valueText(array), R"([3, "text", null, 1, [2]])");
}

TEST(Array, IsWalkedFromItsFirstElementToItsLast) {
  const Array array{1.0, 2.0, 3.0};
  std::vector<Value> walked;
  for (const Value& element : array) {
    walked.push_back(element);
  }
  EXPECT_EQ(walked, (std::vector<Value>{1.0, 2.0, 3.0}));
  EXPECT_EQ(&array[2], array.end() - 1);
}

TEST(Array, TakesTheElementsOfAVector) {
  std::vector<Value> elements = {"a string that is too long to be stored in place", 1.0};
  const char* const characters = elements[0].as<std::string_view>().data();
  const Array array(std::move(elements));
  EXPECT_EQ(array[0].as<std::string_view>().data(), characters);
}

TEST(Array, IsReturnedByItsValue) {
  const Array array{1.0, "text"};
  const Value value(array);
  EXPECT_EQ(value.as<Array>(), array);
  EXPECT_EQ(value.as<Array>().begin(), array.begin());
}

TEST(Array, OutlivesItsValueAndItsCopies) {
  Array array;
  {
    const Value value(Array{"a string that is too long to be stored in place"});
    array = value.as<Array>();
    const Array copy = array;
  }
  EXPECT_EQ(valueText(array), R"(["a string that is too long to be stored in place"])");
}

TEST(Array, IsComparedElementByElement) {
  EXPECT_EQ(Array(), Array());
  EXPECT_EQ((Array{1.0, "a"}), (Array{1.0, "a"}));
  EXPECT_NE((Array{1.0, "a"}), (Array{1.0, "b"}));
  EXPECT_NE((Array{1.0, "a"}), (Array{"a", 1.0}));
  EXPECT_NE((Array{1.0}), (Array{1.0, 1.0}));
  EXPECT_NE(Array(), Array{Value(Array())});
}

TEST(ArrayMove, LeavesTheSourceEmpty) {
  Array source{1.0};
  Array moved = std::move(source);
  EXPECT_EQ(moved, Array{1.0});
  EXPECT_TRUE(source.empty());  // NOLINT(bugprone-use-after-move): that is the contract
  Array assigned{2.0, 3.0};
  assigned = std::move(moved);
  EXPECT_EQ(assigned, Array{1.0});
}

TEST(ArrayAssignment, ToItselfChangesNothing) {
  Array array{1.0, "text"};
  Array& same = array;
  array = same;
  EXPECT_EQ(array, (Array{1.0, "text"}));
}

TEST(ArrayAssignment, OfAPartReplacesTheWhole) {
  Array array{Value(Array{Value(Array{1.0})})};
  array = array[0].as<Array>();
  array = array[0].as<Array>();
  EXPECT_EQ(array, Array{1.0});
}

}  // namespace
}  // namespace foundation::json
