#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace install::update_metadata_parser::diagnosis {

/// Returns whether `text` is well-formed UTF-8.
bool isUtf8(std::string_view text);

/// The number of bytes at the beginning of `text` that are well-formed UTF-8.
std::size_t lengthOfUtf8(std::string_view text);

/// Converts UTF-8 to UTF-16. A byte that is not part of a character becomes U+FFFD.
std::u16string toUtf16(std::string_view text);

/// Converts UTF-16 to UTF-8. An unpaired surrogate becomes U+FFFD.
std::string toUtf8(std::u16string_view text);

/// Reads the character of UTF-16 at `index`, one unit or two, and advances past it. An unpaired
/// surrogate is read as U+FFFD.
char32_t takeCharacter(std::u16string_view text, std::size_t& index);

/// Returns whether a character controls a terminal, breaks lines, changes the direction of the text
/// around it, or is invisible: zero-width characters, fillers, tags, variation selectors.
bool isUnseen(char32_t character);

/// Returns whether a text begins with another one.
inline bool startsWith(std::string_view text, std::string_view beginning) {
  return text.substr(0, beginning.size()) == beginning;
}

/// The small letter of a capital letter of ASCII; any other byte as it is, whatever the locale.
inline char toLowerCase(char byte) {
  return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte - 'A' + 'a') : byte;
}

/// Returns whether a byte of UTF-8 continues the character before it.
inline bool continuesCharacter(char byte) {
  return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

/// Returns whether a byte is a letter of ASCII, whatever the locale.
inline bool isLetter(char byte) {
  const char small = toLowerCase(byte);
  return small >= 'a' && small <= 'z';
}

/// Returns whether a byte is a digit of ASCII.
inline bool isDigit(char byte) {
  return byte >= '0' && byte <= '9';
}

/// Returns whether a byte is a letter or digit of ASCII, whatever the locale.
inline bool isLetterOrDigit(char byte) {
  return isLetter(byte) || isDigit(byte);
}

/// Returns whether a byte can be part of a name without quotation marks, or of a keyword.
inline bool isOfWord(char byte) {
  return isLetterOrDigit(byte) || byte == '_';
}

/// The digits for appendHexadecimal().
constexpr const char* kUpperCaseHexadecimal = "0123456789ABCDEF";

/// The same in lower case.
constexpr const char* kLowerCaseHexadecimal = "0123456789abcdef";

/// Appends the last `digits` hexadecimal digits of a number, at most eight.
void appendHexadecimal(char32_t number, unsigned digits, std::string& text,
                       const char* alphabet = kUpperCaseHexadecimal);

/// One character of UTF-8, or one byte that is not part of one.
struct Character {
  char32_t code;      ///< or the byte's value
  std::size_t bytes;  ///< 1 for such a byte
  bool isUtf8;        ///< whether it is a character
};

/// The first character of `text`, or its first byte if that does not begin a character.
///
/// \pre `text` is not empty
Character firstCharacter(std::string_view text);

/// Appends one character so that it is safe to show on a terminal: an unseen one as its code,
/// `<U+001B>`, a byte that is not UTF-8 as its value, `<FF>`.
void appendVisible(const Character& character, std::string& shown);

}  // namespace install::update_metadata_parser::diagnosis
