#pragma once

#include <cstddef>

// Clang tells of its sanitizers by a feature test, GCC by a macro.
#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define MF_ZERO_ADDRESS_SANITIZER
#endif
#elif defined(__SANITIZE_ADDRESS__)
#define MF_ZERO_ADDRESS_SANITIZER
#endif

#ifdef MF_ZERO_ADDRESS_SANITIZER
#include <sanitizer/asan_interface.h>
#endif

namespace mf::zero {

/// Lets the address sanitizer report whoever touches `memory`, which holds no element now: to the
/// sanitizer a slab is one block, in use as a whole. Nothing in a build without it.
inline void markFree([[maybe_unused]] const void* memory,
                     [[maybe_unused]] std::size_t bytes) noexcept {
#ifdef MF_ZERO_ADDRESS_SANITIZER
  __asan_poison_memory_region(memory, bytes);
#endif
}

/// Ends what markFree() began.
inline void markUsed([[maybe_unused]] const void* memory,
                     [[maybe_unused]] std::size_t bytes) noexcept {
#ifdef MF_ZERO_ADDRESS_SANITIZER
  __asan_unpoison_memory_region(memory, bytes);
#endif
}

}  // namespace mf::zero
