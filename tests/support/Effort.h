#pragma once

#include "support/Sanitizers.h"

namespace test_support {

/// Whether exhaustive tests run in full: only in optimized programs without instrumentation, unless
/// UMP_SAMPLED_TESTS is defined, as for an emulated processor. Elsewhere they stop earlier or take
/// samples, because they would take many times as long.
#if defined(__OPTIMIZE__) && !defined(_GLIBCXX_DEBUG) && !defined(UMP_SAMPLED_TESTS)
constexpr bool kFullEffort = !kHasSanitizer;
#else
constexpr bool kFullEffort = false;
#endif

}  // namespace test_support
