#pragma once

#if defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define UMP_HAS_SANITIZER
#endif
#elif defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define UMP_HAS_SANITIZER
#endif

namespace test_support {

/// Whether the program is instrumented by a sanitizer, which needs many times the time and memory.
#ifdef UMP_HAS_SANITIZER
constexpr bool kHasSanitizer = true;
#else
constexpr bool kHasSanitizer = false;
#endif

}  // namespace test_support
