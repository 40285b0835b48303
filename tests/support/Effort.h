#pragma once

#include "support/Sanitizers.h"

namespace test_support {

/// Tells whether exhaustive tests go all the way: in optimised programs without instruments.
/// Otherwise they stop earlier, as their time would be many times as long.
#if defined(__OPTIMIZE__) && !defined(_GLIBCXX_DEBUG)
constexpr bool kFullEffort = !kHasSanitizer;
#else
constexpr bool kFullEffort = false;
#endif

}  // namespace test_support
