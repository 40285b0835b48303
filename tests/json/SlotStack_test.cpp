#include "json/SlotStack.h"

#include <cstddef>
#include <cstdint>
#include <new>

#include <gtest/gtest.h>

#include "support/FailingAllocation.h"

// A separate program, because it replaces the allocation functions.

namespace foundation::json::detail {
namespace {

using test_support::FailingAllocation;

Rep slotOf(std::uint64_t number) {
  Rep::Content content{};
  content.unsignedInteger = number;
  return {content, Rep::tagOf(traits<std::uint64_t>::index, 0, false)};
}

void pushUpTo(SlotStack& stack, std::size_t size) {
  while (stack.size() != size) {
    stack.push(slotOf(stack.size()));
  }
}

// Asserts that each slot contains its own index.
void expectNumbered(const SlotStack& stack, std::size_t size) {
  ASSERT_EQ(stack.size(), size);
  for (std::size_t place = 0; place != size; ++place) {
    ASSERT_EQ(stack[place].content.unsignedInteger, place);
  }
}

TEST(SlotStack, BeginsEmpty) {
  const SlotStack stack;
  EXPECT_EQ(stack.size(), 0u);
  EXPECT_EQ(stack.begin(), stack.end());
}

TEST(SlotStack, KeepsItsSlotsWhileItGrows) {
  SlotStack stack;
  pushUpTo(stack, 1000000);
  expectNumbered(stack, 1000000);
  EXPECT_EQ(stack.back().content.unsignedInteger, 999999u);
}

TEST(SlotStack, KeepsTheFirstSlotsWhileItShrinksAndGrowsAgain) {
  SlotStack stack;
  pushUpTo(stack, 1000000);
  for (const std::size_t size : {999999u, 870000u, 500000u, 65536u, 65535u, 10u, 1u}) {
    stack.truncate(size);
    expectNumbered(stack, size);
  }
  pushUpTo(stack, 300000);
  expectNumbered(stack, 300000);
  stack.truncate(0);
  expectNumbered(stack, 0);
  pushUpTo(stack, 70000);
  expectNumbered(stack, 70000);
}

TEST(SlotStack, KeepsItsCapacityWhenNoneCanBeReleased) {
  SlotStack stack;
  pushUpTo(stack, 1000000);
  {
    const FailingAllocation failing(0);
    stack.truncate(500000);
    EXPECT_TRUE(failing.reached());
  }
  expectNumbered(stack, 500000);
  pushUpTo(stack, 2000000);
  expectNumbered(stack, 2000000);
}

TEST(SlotStack, LeavesItsSlotsAloneWhenItCannotGrow) {
  SlotStack stack;
  std::size_t failures = 0;
  for (std::size_t size = 0; size != 1000; ++size) {
    try {
      const FailingAllocation failing(0);
      stack.push(slotOf(size));
    } catch (const std::bad_alloc&) {
      ++failures;
      expectNumbered(stack, size);
      stack.push(slotOf(size));
    }
  }
  EXPECT_EQ(failures, 3u) << "to 256, to 512 and to 1,024 slots";
}

TEST(SlotStack, ReplacesASlotInPlace) {
  SlotStack stack;
  pushUpTo(stack, 3);
  stack[1] = slotOf(7);
  EXPECT_EQ(stack[0].content.unsignedInteger, 0u);
  EXPECT_EQ(stack[1].content.unsignedInteger, 7u);
  EXPECT_EQ(stack[2].content.unsignedInteger, 2u);
}

}  // namespace
}  // namespace foundation::json::detail
