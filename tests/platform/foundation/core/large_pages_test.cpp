#include "foundation/core/large_pages.h"

#include <cstddef>
#include <vector>

#include <gtest/gtest.h>

namespace {

using foundation::core::adviseLargePages;

constexpr std::size_t kLargePage = std::size_t{2} << 20;

TEST(LargePages, LeaveWhatStandsInTheMemoryAndBesideIt) {
  std::vector<char> memory(4 * kLargePage, 'x');

  adviseLargePages(memory.data() + 1, memory.size() - 2);

  EXPECT_EQ(memory, std::vector<char>(4 * kLargePage, 'x'));
}

TEST(LargePages, AreNotAskedForWhereNoneFits) {
  std::vector<char> memory(100, 'x');

  adviseLargePages(memory.data(), memory.size());
  adviseLargePages(memory.data(), 0);
  adviseLargePages(nullptr, 0);

  EXPECT_EQ(memory, std::vector<char>(100, 'x'));
}

}  // namespace
