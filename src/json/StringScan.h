#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace foundation::json {

/// Returns the first quotation mark or backslash from `position` on, `end` if there is none. Eight
/// bytes a step; reads no byte at or beyond `end`.
inline const char* findQuoteOrBackslashPlain(const char* position, const char* end) noexcept {
  constexpr std::uint64_t kOnes = 0x0101010101010101u;
  constexpr std::uint64_t kHighBits = kOnes * 0x80;
  // Sets the high bit of every byte that is zero, and perhaps of others behind one that is.
  const auto zeroBytes = [](std::uint64_t word) { return (word - kOnes) & ~word & kHighBits; };
  for (; end - position >= 8; position += 8) {
    std::uint64_t word;
    std::memcpy(&word, position, sizeof word);
    if ((zeroBytes(word ^ (kOnes * '"')) | zeroBytes(word ^ (kOnes * '\\'))) != 0) {
      break;
    }
  }
  while (position != end && *position != '"' && *position != '\\') {
    ++position;
  }
  return position;
}

#if defined(__SSE2__)

/// As findQuoteOrBackslashPlain(), sixteen bytes a step, with what every x86-64 processor has.
inline const char* findQuoteOrBackslashSse2(const char* position, const char* end) noexcept {
  const __m128i quotes = _mm_set1_epi8('"');
  const __m128i backslashes = _mm_set1_epi8('\\');
  for (; end - position >= 16; position += 16) {
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(position));
    const auto mask = static_cast<unsigned>(_mm_movemask_epi8(
        _mm_or_si128(_mm_cmpeq_epi8(bytes, quotes), _mm_cmpeq_epi8(bytes, backslashes))));
    if (mask != 0) {
      return position + __builtin_ctz(mask);
    }
  }
  return findQuoteOrBackslashPlain(position, end);
}

#endif

/// The quickest of the above that the target always has.
inline const char* findQuoteOrBackslash(const char* position, const char* end) noexcept {
#if defined(__SSE2__)
  return findQuoteOrBackslashSse2(position, end);
#else
  return findQuoteOrBackslashPlain(position, end);
#endif
}

}  // namespace foundation::json
