#pragma once

#include <string>
#include <string_view>

namespace foundation::json::detail {

/// Copies the bytes from `begin` up to `end`, taken as UTF-8 unchecked.
std::string get_utf8_string(const char* begin, const char* end);

/// Converts a number in JSON's form to the nearest double, ties to even, whatever the locale.
///
/// Leading zeros are accepted. What is too large becomes infinity and what is too small zero, both
/// with the number's sign. Linear.
///
/// \pre `number` is an optional "-", digits, and optionally a fraction and an exponent
double string_to_double(std::string_view number) noexcept;

/// Converts UTF-16 units to UTF-8. An unpaired surrogate becomes U+FFFD.
std::string u16_to_u8(std::u16string_view units);

}  // namespace foundation::json::detail
