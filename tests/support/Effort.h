#pragma once

namespace test_support {

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define UMP_TESTS_ARE_INSTRUMENTED
#endif
#endif

/// Tells whether exhaustive tests go all the way: in optimised programs without instruments.
/// Otherwise they stop earlier, as their time would be many times as long.
#if defined(__OPTIMIZE__) && !defined(__SANITIZE_ADDRESS__) && !defined(_GLIBCXX_DEBUG) && \
    !defined(UMP_TESTS_ARE_INSTRUMENTED)
constexpr bool kFullEffort = true;
#else
constexpr bool kFullEffort = false;
#endif

}  // namespace test_support
