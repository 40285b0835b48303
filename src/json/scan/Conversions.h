#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace foundation::json::detail {

/// Copies the bytes from `begin` up to `end`, assumed to be UTF-8 and not checked.
std::string get_utf8_string(const char* begin, const char* end);

/// Converts a number in JSON's form to the nearest double, ties to even, whatever the locale.
///
/// Leading zeros are accepted. Too large a magnitude becomes infinity and too small a one zero,
/// both with the number's sign. Linear. May throw std::bad_alloc.
///
/// \pre `number` is an optional "-", digits, and optionally a fraction and an exponent
double string_to_double(std::string_view number);

/// The maximum number of UTF-8 bytes for one UTF-16 unit.
constexpr std::size_t kUtf8BytesOfUnit = 3;

/// Writes one code point as UTF-8, at most four bytes, and returns the end of the output.
inline char* writeUtf8(char32_t point, char* out) noexcept {
  const auto write = [&out](char32_t byte) { *out++ = static_cast<char>(byte); };
  if (point < 0x80) {
    write(point);
  } else if (point < 0x800) {
    write(0xC0 | (point >> 6));
    write(0x80 | (point & 0x3F));
  } else if (point < 0x10000) {
    write(0xE0 | (point >> 12));
    write(0x80 | ((point >> 6) & 0x3F));
    write(0x80 | (point & 0x3F));
  } else {
    write(0xF0 | (point >> 18));
    write(0x80 | ((point >> 12) & 0x3F));
    write(0x80 | ((point >> 6) & 0x3F));
    write(0x80 | (point & 0x3F));
  }
  return out;
}

/// Writes UTF-16 units as UTF-8, at most kUtf8BytesOfUnit bytes for each, and returns the end of
/// the output. An unpaired surrogate becomes U+FFFD.
inline char* writeUtf8(std::u16string_view units, char* out) noexcept {
  constexpr char32_t kReplacement = 0xFFFD;
  const auto isHighSurrogate = [](char16_t unit) { return (unit & 0xFC00) == 0xD800; };
  const auto isLowSurrogate = [](char16_t unit) { return (unit & 0xFC00) == 0xDC00; };
  for (std::size_t i = 0; i != units.size(); ++i) {
    const char16_t unit = units[i];
    if (isHighSurrogate(unit) && i + 1 != units.size() && isLowSurrogate(units[i + 1])) {
      ++i;
      out = writeUtf8(0x10000 + ((char32_t{unit} & 0x3FF) << 10) + (units[i] & 0x3FF), out);
    } else if (isHighSurrogate(unit) || isLowSurrogate(unit)) {
      out = writeUtf8(kReplacement, out);
    } else {
      out = writeUtf8(char32_t{unit}, out);
    }
  }
  return out;
}

/// Converts UTF-16 units to UTF-8. An unpaired surrogate becomes U+FFFD.
std::string u16_to_u8(std::u16string_view units);

}  // namespace foundation::json::detail
