#include "foundation/core/random_bytes.h"

#include <array>
#include <cstddef>
#include <set>

#include <gtest/gtest.h>

namespace {

using foundation::core::fillWithRandomBytes;

TEST(RandomBytes, DifferFromCallToCall) {
  std::set<std::array<unsigned char, 88>> drawn;
  for (int count = 0; count != 10; ++count) {
    std::array<unsigned char, 88> bytes{};
    ASSERT_TRUE(fillWithRandomBytes(bytes.data(), bytes.size()));
    drawn.insert(bytes);
  }
  EXPECT_EQ(drawn.size(), 10u);
}

TEST(RandomBytes, AreWrittenOnlyWhereTheyAreWanted) {
  for (std::size_t size = 0; size != 20; ++size) {
    std::array<unsigned char, 20> bytes{};
    ASSERT_TRUE(fillWithRandomBytes(bytes.data(), size));
    for (std::size_t place = size; place != bytes.size(); ++place) {
      EXPECT_EQ(bytes[place], 0);
    }
  }
}

}  // namespace
