#include "foundation/core/large_pages.h"

#include <cstddef>
#include <vector>

#include <gtest/gtest.h>

namespace {

using foundation::core::adviseLargePages;
using foundation::core::discardPages;
using foundation::core::kLargePage;

TEST(LargePages, LeaveTheMemoryAndItsSurroundingsUnchanged) {
  std::vector<char> memory(4 * kLargePage, 'x');

  adviseLargePages(memory.data() + 1, memory.size() - 2);

  EXPECT_EQ(memory, std::vector<char>(4 * kLargePage, 'x'));
}

TEST(LargePages, AreNotRequestedWhereNoneFits) {
  std::vector<char> memory(100, 'x');

  adviseLargePages(memory.data(), memory.size());
  adviseLargePages(memory.data(), 0);
  adviseLargePages(nullptr, 0);

  EXPECT_EQ(memory, std::vector<char>(100, 'x'));
}

TEST(DiscardedPages, LeaveSurroundingMemoryUnchanged) {
  constexpr std::size_t kBeside = 5000;
  for (const std::size_t size : {std::size_t{0}, std::size_t{1}, std::size_t{4096},
                                 std::size_t{8191}, std::size_t{8192}, std::size_t{100001}}) {
    std::vector<char> memory(size + 2 * kBeside, 'x');

    discardPages(memory.data() + kBeside, size);

    EXPECT_EQ(std::vector<char>(memory.begin(), memory.begin() + kBeside),
              std::vector<char>(kBeside, 'x'));
    EXPECT_EQ(std::vector<char>(memory.end() - kBeside, memory.end()),
              std::vector<char>(kBeside, 'x'));
  }
}

TEST(DiscardedPages, CanBeUsedAgain) {
  std::vector<char> memory(100000, 'x');

  discardPages(memory.data(), memory.size());
  memory.assign(memory.size(), 'y');

  EXPECT_EQ(memory, std::vector<char>(100000, 'y'));
}

}  // namespace
