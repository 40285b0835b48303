#include "mf/zero/elements/SaturatingCount.h"

#include <cstdint>

#include <gtest/gtest.h>

namespace mf::zero {
namespace {

// The smallest type, whose largest value is reached quickly.
using SmallCount = SaturatingCount<std::uint8_t>;
constexpr int kMost = 255;

SmallCount countOf(int references) {
  SmallCount count;
  for (int reference = 0; reference != references; ++reference) {
    count.add();
  }
  return count;
}

/// Returns how many references must be dropped until one is reported as the last; 0 if none is.
int dropsUntilTheLast(SmallCount count, int drops) {
  for (int drop = 1; drop <= drops; ++drop) {
    if (count.drop()) {
      return drop;
    }
  }
  return 0;
}

TEST(SaturatingCount, BeginsAtZero) {
  EXPECT_TRUE(SmallCount().isZero());
  EXPECT_FALSE(countOf(1).isZero());
}

TEST(SaturatingCount, FindsTheLastReferenceForEveryCountBelowItsMaximum) {
  for (int references = 1; references < kMost; ++references) {
    EXPECT_EQ(dropsUntilTheLast(countOf(references), references), references);
  }
}

TEST(SaturatingCount, IsZeroAgainOnceTheLastIsDropped) {
  SmallCount count = countOf(2);
  EXPECT_FALSE(count.drop());
  EXPECT_FALSE(count.isZero());
  EXPECT_TRUE(count.drop());
  EXPECT_TRUE(count.isZero());
}

TEST(SaturatingCount, NeverFindsALastReferenceOnceItHasReachedItsMaximum) {
  for (const int references : {kMost, kMost + 1, kMost + 2, 2 * kMost, 10 * kMost}) {
    EXPECT_EQ(dropsUntilTheLast(countOf(references), 20 * kMost), 0) << references;
    EXPECT_FALSE(countOf(references).isZero()) << references;
  }
}

}  // namespace
}  // namespace mf::zero
