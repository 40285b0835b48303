#pragma once

#include <cstdint>

/// What compilers offer beyond the language, each with a plain form for the others.

#if defined(__GNUC__)
/// Keeps rare code out of the functions that call it.
#define FOUNDATION_NOINLINE [[gnu::noinline]]
/// Makes a function part of the functions that call it, whatever its size.
#define FOUNDATION_ALWAYS_INLINE [[gnu::always_inline]]
#else
#define FOUNDATION_NOINLINE
#define FOUNDATION_ALWAYS_INLINE
#endif

namespace foundation::core {

/// Returns the number of zero bits below the lowest bit of `bits` that is set. One step per bit.
///
/// \pre `bits` is not 0
constexpr int countTrailingZerosPlain(std::uint64_t bits) noexcept {
  int count = 0;
  for (; (bits & 1) == 0; bits >>= 1) {
    ++count;
  }
  return count;
}

/// The same in one instruction where the compiler knows one.
///
/// \pre `bits` is not 0
inline int countTrailingZeros(std::uint32_t bits) noexcept {
#if defined(__GNUC__)
  return __builtin_ctz(bits);
#else
  return countTrailingZerosPlain(bits);
#endif
}

/// The same for 64 bits.
///
/// \pre `bits` is not 0
inline int countTrailingZeros(std::uint64_t bits) noexcept {
#if defined(__GNUC__)
  return __builtin_ctzll(bits);
#else
  return countTrailingZerosPlain(bits);
#endif
}

}  // namespace foundation::core
