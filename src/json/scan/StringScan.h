#pragma once

#if defined(__SSE2__)
#include <emmintrin.h>

#include "foundation/core/compiler.h"
#endif

namespace foundation::json {

/// Returns the position of the first quotation mark or backslash at or after `position`, or `end`.
/// Reads eight bytes per step, and no byte at or beyond `end`.
const char* findQuoteOrBackslashPlain(const char* position, const char* end) noexcept;

#if defined(__SSE2__)

/// A bit for each of sixteen bytes: set for a quotation mark or a backslash; the first byte is the
/// lowest.
inline unsigned quotesAndBackslashes(const char* bytes) noexcept {
  const __m128i loaded = _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes));
  return static_cast<unsigned>(_mm_movemask_epi8(_mm_or_si128(
      _mm_cmpeq_epi8(loaded, _mm_set1_epi8('"')), _mm_cmpeq_epi8(loaded, _mm_set1_epi8('\\')))));
}

/// Like findQuoteOrBackslashPlain(), with instructions that every x86-64 processor has. Reads
/// thirty-two bytes per step: most strings end in the first one, so no branch depends on their
/// lengths.
inline const char* findQuoteOrBackslashSse2(const char* position, const char* end) noexcept {
  for (; end - position >= 32; position += 32) {
    const unsigned found = quotesAndBackslashes(position) | quotesAndBackslashes(position + 16)
                                                                << 16;
    if (found != 0) {
      return position + core::countTrailingZeros(found);
    }
  }
  return findQuoteOrBackslashPlain(position, end);
}

#endif

/// The fastest of the above that the target always supports.
inline const char* findQuoteOrBackslash(const char* position, const char* end) noexcept {
#if defined(__SSE2__)
  return findQuoteOrBackslashSse2(position, end);
#else
  return findQuoteOrBackslashPlain(position, end);
#endif
}

}  // namespace foundation::json
