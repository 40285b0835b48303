#pragma once

#include <string>
#include <string_view>

/// Text conversion of a platform whose general 8-bit text is Latin-1.
namespace fl::i18n {

/// Converts Latin-1 to UTF-16. Every byte is a character.
std::u16string to_ustring(std::string_view text);

/// Converts UTF-8 to UTF-16. Throws an exception of std::filesystem for ill-formed text.
std::u16string utf8_to_ustring(std::string_view text);

/// Converts UTF-16 to UTF-8. Throws an exception of std::filesystem for ill-formed text.
std::string to_string(std::u16string_view text);

namespace lcctype {

/// Returns whether `c` is one of the ten digits.
constexpr bool isdigit_ascii(char c) noexcept {
  return c >= '0' && c <= '9';
}

/// Returns whether `c` is a blank or one of the bytes 09 to 0D.
constexpr bool isspace_ascii(char c) noexcept {
  return c == ' ' || (c >= '\t' && c <= '\r');
}

}  // namespace lcctype

}  // namespace fl::i18n
