#include "support/Skip.h"

#include <gtest/gtest.h>

namespace test_support {

void skip(const char* reason) {
  constexpr auto kSkip = ::testing::TestPartResult::kSkip;
  GTEST_MESSAGE_AT_(__FILE__, __LINE__, reason, kSkip);
  // Of GoogleTest's exceptions, the one that adds no failure.
  throw ::testing::AssertionException(::testing::TestPartResult(kSkip, __FILE__, __LINE__, reason));
}

}  // namespace test_support
