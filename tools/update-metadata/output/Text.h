#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace update_metadata_tool::output {

/// Tells whether `text` is well-formed UTF-8.
bool isUtf8(std::string_view text);

/// The number of bytes before the first that is not well-formed UTF-8; all if there is none.
std::size_t lengthOfUtf8(std::string_view text);

/// Tells whether `text` is well-formed UTF-16: without unpaired surrogates.
bool isUtf16(std::u16string_view text);

/// Converts UTF-8 to UTF-16.
///
/// \pre isUtf8(text); anything else is an exception of the conversion library
std::u16string toUtf16(std::string_view text);

/// Converts UTF-16 to UTF-8. An unpaired surrogate becomes U+FFFD.
std::string toUtf8(std::u16string_view text);

/// Tells whether a character controls a terminal, changes the direction or the lines of the text
/// around it, or cannot be seen: zero-width characters, fillers, tags, variation selectors.
bool isUnseen(char32_t character);

/// Converts UTF-16 to UTF-8 that is safe to show on a terminal.
///
/// Characters that are unseen are shown as their code, <U+001B>; an empty text is shown as (empty).
std::string toVisible(std::u16string_view text);

/// As above, for a name: blanks at its ends are shown by their code, too, <U+0020>, so that names
/// which differ in them look different.
std::string toVisibleName(std::u16string_view name);

/// As toVisible(), for bytes. Those that are not UTF-8 are shown as their value, <FF>.
std::string toVisible(std::string_view text);

/// Returns whether a byte of UTF-8 continues the character before it.
inline bool continuesCharacter(char byte) {
  return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

constexpr const char* kUpperCaseHexadecimal = "0123456789ABCDEF";
constexpr const char* kLowerCaseHexadecimal = "0123456789abcdef";

/// Appends the last digits of a number, as many as `digits` says, at most eight.
void appendHexadecimal(char32_t number, unsigned digits, std::string& text,
                       const char* alphabet = kUpperCaseHexadecimal);

/// One character of a text of bytes.
struct Character {
  char32_t code;      ///< or the value of the byte
  std::size_t bytes;  ///< 1 for a byte that is not UTF-8
  bool isUtf8;
};

/// The first character of `text`; a byte that begins none stands alone.
///
/// \pre `text` is not empty
Character firstCharacter(std::string_view text);

/// Appends one character as toVisible() shows it.
void appendVisible(const Character& character, std::string& shown);

}  // namespace update_metadata_tool::output
