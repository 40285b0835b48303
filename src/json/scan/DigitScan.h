#pragma once

#include <cstdint>
#include <cstring>

#include "fl/i18n.h"
#include "foundation/core/compiler.h"

namespace foundation::json {

/// Reads digits from `position` up to `end` and appends them to `integer` as decimal places; it
/// wraps around beyond 64 bits. Returns the position of the first byte that is not a digit.
inline const char* readDigitsPlain(const char* position, const char* end,
                                   std::uint64_t& integer) noexcept {
  while (position != end && fl::i18n::lcctype::isdigit_ascii(*position)) {
    integer = integer * 10 + static_cast<std::uint64_t>(*position - '0');
    ++position;
  }
  return position;
}

#if defined(__BYTE_ORDER__) && __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__

/// Like readDigitsPlain(), but reads eight bytes per step, without a branch for each digit. For
/// little-endian processors.
inline const char* readDigitsByEight(const char* position, const char* end,
                                     std::uint64_t& integer) noexcept {
  constexpr std::uint64_t kOnes = 0x0101010101010101u;
  constexpr std::uint64_t kPowersOfTen[] = {1,      10,      100,      1000,     10000,
                                            100000, 1000000, 10000000, 100000000};
  while (end - position >= 8) {
    std::uint64_t word;
    std::memcpy(&word, position, sizeof word);
    // The high bit of the first byte that is not a digit, and possibly of bytes after it.
    const std::uint64_t others =
        ((word + kOnes * (0x7F - '9')) | (word - kOnes * '0')) & (kOnes * 0x80);
    const int count = others == 0 ? 8 : core::countTrailingZeros(others) / 8;
    if (count == 0) {
      return position;
    }
    // The digits move to the high bytes, with zeros in front of them. Then neighbors are joined:
    // bytes to pairs, pairs to fours, fours to eight.
    std::uint64_t digits = (word ^ (kOnes * '0')) << (64 - 8 * count);
    digits = digits * 10 + (digits >> 8);
    digits = ((digits & 0x000000FF000000FFu) * ((std::uint64_t{1000000} << 32) + 100) +
              ((digits >> 16) & 0x000000FF000000FFu) * ((std::uint64_t{10000} << 32) + 1)) >>
             32;
    integer = integer * kPowersOfTen[count] + digits;
    position += count;
    if (count != 8) {
      return position;
    }
  }
  return readDigitsPlain(position, end, integer);
}

#endif

/// The fastest of the above that the target always supports.
inline const char* readDigits(const char* position, const char* end,
                              std::uint64_t& integer) noexcept {
#if defined(__BYTE_ORDER__) && __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__
  return readDigitsByEight(position, end, integer);
#else
  return readDigitsPlain(position, end, integer);
#endif
}

}  // namespace foundation::json
