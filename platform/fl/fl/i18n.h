#pragma once

#include <string>
#include <string_view>

/// Conversion between narrow UTF-8 text and UTF-16 text, and ASCII character classes.
///
/// Everything works by length, so a NUL is a character like any other, and nothing depends on a
/// locale. A byte-order mark is also a character like any other and is kept.
namespace fl::i18n {

/// Converts general 8-bit text to UTF-16. On this platform such text is UTF-8.
///
/// Ill-formed text is not an error: each maximal ill-formed part becomes one U+FFFD. C0, C1, F5 to
/// FF and a stray continuation byte are each such a part, so an encoded surrogate (ED A0 80) yields
/// three U+FFFD, and a truncated sequence yields one for the bytes that are present.
///
/// Throws nothing except on memory exhaustion. Linear time, one allocation.
std::u16string to_ustring(std::string_view text);

/// Converts UTF-8 text, such as the name of a file, to UTF-16.
///
/// Treats ill-formed text as to_ustring() does. A separate operation, because the encoding of
/// general 8-bit text is the platform's choice and this one is not.
///
/// Throws nothing except on memory exhaustion. Linear time, one allocation.
std::u16string utf8_to_ustring(std::string_view text);

/// Converts UTF-16 text to UTF-8.
///
/// Each unpaired surrogate becomes one U+FFFD.
///
/// Throws nothing except on memory exhaustion. Linear time, one allocation.
std::string to_string(std::u16string_view text);

/// Character classes for ASCII only: no byte from 80 to FF belongs to any of them, whether or not
/// `char` is signed.
namespace lcctype {

/// Returns whether `c` is one of the ten digits.
constexpr bool isdigit_ascii(char c) noexcept {
  return c >= '0' && c <= '9';
}

/// Returns whether `c` is white space: a blank or one of the bytes 09 to 0D.
constexpr bool isspace_ascii(char c) noexcept {
  return c == ' ' || (c >= '\t' && c <= '\r');
}

}  // namespace lcctype

}  // namespace fl::i18n
