#pragma once

#include <cstddef>

// Clang announces its sanitizers by a feature test, GCC by a macro.
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

/// Makes the address sanitizer report any access to `memory`, which contains no element now. To the
/// sanitizer, a slab is a single block that is in use as a whole. Does nothing in other builds.
inline void markFree([[maybe_unused]] const void* memory,
                     [[maybe_unused]] std::size_t bytes) noexcept {
#ifdef MF_ZERO_ADDRESS_SANITIZER
  __asan_poison_memory_region(memory, bytes);
#endif
}

/// Undoes markFree().
inline void markUsed([[maybe_unused]] const void* memory,
                     [[maybe_unused]] std::size_t bytes) noexcept {
#ifdef MF_ZERO_ADDRESS_SANITIZER
  __asan_unpoison_memory_region(memory, bytes);
#endif
}

}  // namespace mf::zero
