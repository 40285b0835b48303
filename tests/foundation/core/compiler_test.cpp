#include "foundation/core/compiler.h"

#include <cstdint>

#include <gtest/gtest.h>

namespace {

using foundation::core::countTrailingZeros;
using foundation::core::countTrailingZerosPlain;

TEST(TrailingZeros, AreCountedUpToTheLowestBitThatIsSet) {
  for (int zeros = 0; zeros != 64; ++zeros) {
    for (const std::uint64_t above : {0u, 1u, 6u}) {
      const std::uint64_t bits = (above << 1 | 1) << zeros;
      EXPECT_EQ(countTrailingZeros(bits), zeros);
      EXPECT_EQ(countTrailingZerosPlain(bits), zeros);
      if (zeros < 32) {
        EXPECT_EQ(countTrailingZeros(static_cast<std::uint32_t>(bits)), zeros);
      }
    }
  }
}

}  // namespace
