#include <cstddef>
#include <cstdint>
#include <new>
#include <optional>
#include <ostream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "foundation/json/Value.h"
#include "json/JsonText.h"
#include "json/ParserException.h"
#include "support/FailingAllocation.h"
#include "support/ValueText.h"

// A separate program, because it replaces the allocation operators.

namespace foundation::json {
namespace {

using test_support::allocations;
using test_support::liveBlocks;
using test_support::MemoryLimit;
using test_support::quoted;
using test_support::valueText;

// More than a few unordered members, strings with and without escapes, and payloads before and
// after their types.
const std::string kDocument =
    R"({"z":1,"y":[null,true,-2.5e3,"a string without escapes","one with \"escapes\" \u00e9"],)"
    R"("x":{"qztype":"int8","qzdata":[1,-2,3],"more\n":[[[[{}]]]]},"w":{"qzdata":[1,2],)"
    R"("qztype":"uint8","qztype":"int64","qztype":"uint64"},"v":1,"u":2,"t":3,"s":4,"r":5,"q":6,)"
    R"("p":7,"o":8,"n":9,"m":10,"l":11,"k":12,"j":13,"i":14,"h":15,"g":16,"z":"again"})";

Value arraysAround(Value value, std::size_t levels) {
  for (; levels != 0; --levels) {
    std::vector<Value> elements;
    elements.push_back(std::move(value));
    elements.emplace_back("beside");
    value = Array(std::move(elements));
  }
  return value;
}

Value objectsAround(Value value, std::size_t levels) {
  for (; levels != 0; --levels) {
    std::vector<std::pair<std::string, Value>> members;
    members.emplace_back("key", std::move(value));
    members.emplace_back("beside", "it");
    value = Object(std::move(members));
  }
  return value;
}

std::size_t allocationsOfDestruction(Value value) {
  std::optional<Value> last(std::move(value));
  const std::size_t before = allocations();
  last.reset();
  return allocations() - before;
}

TEST(Destruction, AllocatesNothing) {
  const std::string deep = std::string(100000, '[') + std::string(100000, ']');
  EXPECT_EQ(allocationsOfDestruction(parseJsonText(kDocument)), 0u);
  EXPECT_EQ(allocationsOfDestruction(parseJsonText(deep)), 0u);
  EXPECT_EQ(allocationsOfDestruction(arraysAround("text", 100000)), 0u);
  EXPECT_EQ(allocationsOfDestruction(objectsAround("text", 100000)), 0u);
  EXPECT_EQ(allocationsOfDestruction(objectsAround(arraysAround(parseJsonText(deep), 10), 10)), 0u);
}

TEST(Destruction, ReleasesAllMemory) {
  const std::size_t before = liveBlocks();
  {
    const Value document = parseJsonText(kDocument);
    const Value part = document["y"].as<Array>()[3];
    const Value byHand = arraysAround(objectsAround(document, 3), 3);
    const Array array = byHand.as<Array>();
    EXPECT_GT(liveBlocks(), before);
  }
  EXPECT_EQ(liveBlocks(), before);
}

TEST(MovingAndCopying, AllocateNothingForContainersAndScalars) {
  const Value document = parseJsonText(kDocument);
  Value byHand = arraysAround("text", 10);
  const std::size_t before = allocations();
  {
    const Value copy = document;
    const Value part = document["x"];
    const Value number = document["z"];
    const Array array = document["y"].as<Array>();
    const Object object = document.as<Object>();
    const Value copyByHand = byHand;
    const Value moved = std::move(byHand);
  }
  EXPECT_EQ(allocations() - before, 0u);
}

TEST(LookingUp, AllocatesNothing) {
  const Value document = parseJsonText(kDocument);
  const std::size_t before = allocations();
  const bool found = document["z"].is<double>() && document["absent"].is<Undefined>() &&
                     document.as<Object>().count("y") == 1;
  EXPECT_EQ(allocations() - before, 0u);
  EXPECT_TRUE(found);
}

TEST(ParserExceptionCopy, AllocatesNothing) {
  const std::string text = "[a text that is too long to be stored in place]";
  const ParserException error(text.data(), text.data() + 1, text.data() + text.size(), 8, "D");
  const std::size_t before = allocations();
  const ParserException copy = error;
  EXPECT_EQ(allocations() - before, 0u);
}

// -------------------------------------------------------------------------------------------------
// Running out of memory

// Runs `action` repeatedly with more and more memory until it reports success. Asserts that it
// never leaks.
template <class Action>
void withEverMoreMemory(const Action& action) {
  for (std::size_t limit = 0; limit != 10000; ++limit) {
    const std::size_t before = liveBlocks();
    const bool enough = action(limit);
    ASSERT_EQ(liveBlocks(), before) << "with a limit of " << limit;
    if (enough) {
      return;
    }
  }
  FAIL() << "needs more memory than expected";
}

// The stack of pending values grows and shrinks by a share of its size, not with every container.
TEST(ReadingManySmallContainers, SeldomAsksForMemory) {
  constexpr std::size_t kPairs = 400000;
  std::string text = "[";
  for (std::size_t left = kPairs; left != 0; --left) {
    text += "[],{},";
  }
  text += "0]";
  const std::size_t before = allocations();
  const Value value = parseJsonText(std::move(text));
  EXPECT_LT(allocations() - before, 100U);
  EXPECT_EQ(value.as<Array>().size(), 2 * kPairs + 1);
}

TEST(ReadingWithoutMemory, IsABadAlloc) {
  const std::string expected = valueText(parseJsonText(kDocument));
  withEverMoreMemory([&](std::size_t count) {
    std::string text = kDocument;
    Value value;
    try {
      const MemoryLimit limit(count);
      value = parseJsonText(std::move(text));
    } catch (const std::bad_alloc&) {
      return false;
    }
    EXPECT_EQ(valueText(value), expected);
    return true;
  });
}

TEST(ReadingAWrongTextWithoutMemory, IsABadAllocOrTheErrorItself) {
  for (const std::string& end : {std::string("tru"), std::string("{\"qztype\":5}"),
                                 std::string("{\"qztype\":\"int8\",\"qzdata\":[x]}")}) {
    const std::string wrong = "[" + kDocument + "," + end + "]";
    std::string expected;
    try {
      parseJsonText(wrong);
    } catch (const std::runtime_error& error) {
      expected = error.what();
    }
    withEverMoreMemory([&](std::size_t count) {
      std::string text = wrong;
      bool same = false;
      try {
        const MemoryLimit limit(count);
        parseJsonText(std::move(text));
      } catch (const std::bad_alloc&) {
        return false;
      } catch (const std::runtime_error& error) {
        same = expected == error.what();
      }
      EXPECT_TRUE(same) << quoted(expected);
      return true;
    });
  }
}

TEST(MakingValuesWithoutMemory, IsABadAlloc) {
  withEverMoreMemory([](std::size_t count) {
    try {
      const MemoryLimit limit(count);
      const Value value = arraysAround(objectsAround("a string", 3), 3);
      const Object object{{"b", "text"}, {"a", value}, {"b", Array{value, "text"}}};
      return object == object;
    } catch (const std::bad_alloc&) {
      return false;
    }
  });
}

TEST(CopyingAStringWithoutMemory, ChangesNothing) {
  const Value document = parseJsonText(kDocument);
  Value target("before");
  {
    const MemoryLimit limit(0);
    EXPECT_THROW(target = document["y"].as<Array>()[3], std::bad_alloc);
  }
  EXPECT_EQ(target, Value("before"));
}

TEST(ComparingWithoutMemory, IsABadAlloc) {
  const Value left = parseJsonText(kDocument);
  const Value right = parseJsonText(kDocument);
  withEverMoreMemory([&](std::size_t count) {
    try {
      const MemoryLimit limit(count);
      return left == right;
    } catch (const std::bad_alloc&) {
      return false;
    }
  });
}

}  // namespace
}  // namespace foundation::json
