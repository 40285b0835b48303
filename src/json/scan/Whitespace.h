#pragma once

#include "fl/i18n.h"
#include "foundation/core/compiler.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace foundation::json {

/// Returns the position of the first byte at or after `position` that is not white space, or `end`.
inline const char* skipSpacesPlain(const char* position, const char* end) noexcept {
  while (position != end && fl::i18n::lcctype::isspace_ascii(*position)) {
    ++position;
  }
  return position;
}

#if defined(__SSE2__)

/// Like skipSpacesPlain(), sixteen bytes per step, with instructions that every x86-64 processor
/// has: the indentation of most lines takes one step.
inline const char* skipSpacesSse2(const char* position, const char* end) noexcept {
  for (; end - position >= 16; position += 16) {
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(position));
    // Tab to carriage return are the bytes at most four above the tab.
    const __m128i aboveTab = _mm_sub_epi8(bytes, _mm_set1_epi8('\t'));
    const __m128i isControl =
        _mm_cmpeq_epi8(_mm_min_epu8(aboveTab, _mm_set1_epi8('\r' - '\t')), aboveTab);
    const __m128i isBlank = _mm_cmpeq_epi8(bytes, _mm_set1_epi8(' '));
    const auto spaces = static_cast<unsigned>(_mm_movemask_epi8(_mm_or_si128(isControl, isBlank)));
    if (spaces != 0xFFFF) {
      return position + core::countTrailingZeros(~spaces);
    }
  }
  return skipSpacesPlain(position, end);
}

#endif

/// The fastest of the above that the target always supports.
inline const char* skipSpaces(const char* position, const char* end) noexcept {
#if defined(__SSE2__)
  return skipSpacesSse2(position, end);
#else
  return skipSpacesPlain(position, end);
#endif
}

/// Like skipWhitespace(), for a position where there is something to skip.
const char* skipWhitespaceAndComments(const char* position, const char* end,
                                      bool allowComments) noexcept;

/// Returns the position of the first byte at or after `position` that is neither white space nor,
/// if comments are allowed, part of a comment, or `end`. An unclosed comment ends at `end`.
inline const char* skipWhitespace(const char* position, const char* end,
                                  bool allowComments) noexcept {
  // Usually there is nothing to skip, or a single blank.
  if (position != end && *position == ' ') {
    ++position;
  }
  if (position != end && static_cast<unsigned char>(*position) > ' ' && *position != '/') {
    return position;
  }
  return skipWhitespaceAndComments(position, end, allowComments);
}

}  // namespace foundation::json
