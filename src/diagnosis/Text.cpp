#include "diagnosis/Text.h"

#include "diagnosis/CharacterRange.h"
#include "diagnosis/UnseenCharacters.h"

namespace install::update_metadata_parser::diagnosis {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

bool isHighSurrogate(char32_t unit) {
  return unit >= 0xD800 && unit <= 0xDBFF;
}

bool isLowSurrogate(char32_t unit) {
  return unit >= 0xDC00 && unit <= 0xDFFF;
}

void append(char32_t character, std::string& text) {
  if (character < 0x80) {
    text += static_cast<char>(character);
    return;
  }
  // The first byte has a bit for each byte, the others have six bits of the character.
  const unsigned others = character < 0x800 ? 1 : character < 0x10000 ? 2 : 3;
  const unsigned marks = (0xF00U >> (others + 1)) & 0xF0U;
  text += static_cast<char>(marks | (character >> (6 * others)));
  for (unsigned left = others; left-- != 0;) {
    text += static_cast<char>(0x80U | ((character >> (6 * left)) & 0x3FU));
  }
}

}  // namespace

bool isUtf8(std::string_view text) {
  return lengthOfUtf8(text) == text.size();
}

std::size_t lengthOfUtf8(std::string_view text) {
  std::size_t length = 0;
  while (length != text.size()) {
    if (static_cast<unsigned char>(text[length]) < 0x80) {
      ++length;  // nearly every byte of nearly every text
      continue;
    }
    const Character character = firstCharacter(text.substr(length));
    if (!character.isUtf8) {
      break;
    }
    length += character.bytes;
  }
  return length;
}

std::u16string toUtf16(std::string_view text) {
  std::u16string converted;
  converted.reserve(text.size());
  while (!text.empty()) {
    const Character character = firstCharacter(text);
    text.remove_prefix(character.bytes);
    if (!character.isUtf8) {
      converted += static_cast<char16_t>(kReplacement);
    } else if (character.code < 0x10000) {
      converted += static_cast<char16_t>(character.code);
    } else {
      converted += static_cast<char16_t>(0xD800 + ((character.code - 0x10000) >> 10U));
      converted += static_cast<char16_t>(0xDC00 + (character.code & 0x3FFU));
    }
  }
  return converted;
}

std::string toUtf8(std::u16string_view text) {
  std::string converted;
  converted.reserve(text.size());
  for (std::size_t index = 0; index < text.size();) {
    append(takeCharacter(text, index), converted);
  }
  return converted;
}

char32_t takeCharacter(std::u16string_view text, std::size_t& index) {
  const char16_t unit = text[index++];
  if (isHighSurrogate(unit) && index < text.size() && isLowSurrogate(text[index])) {
    const char16_t low = text[index++];
    return 0x10000U + ((static_cast<char32_t>(unit) - 0xD800U) << 10U) + (low - 0xDC00U);
  }
  return isHighSurrogate(unit) || isLowSurrogate(unit) ? kReplacement : unit;
}

bool isUnseen(char32_t character) {
  if (character >= 0x20 && character < 0x7F) {
    return false;  // nearly every character of nearly every name
  }
  return isIn(kUnseenCharacters, character);
}

void appendHexadecimal(char32_t number, unsigned digits, std::string& text, const char* alphabet) {
  while (digits-- != 0) {
    text += alphabet[(number >> (4 * digits)) & 0xFU];
  }
}

Character firstCharacter(std::string_view text) {
  const auto first = static_cast<unsigned char>(text.front());
  if (first < 0x80) {
    return {first, 1, true};
  }
  const Character alone{first, 1, false};
  const std::size_t bytes = first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
  if (first < 0xC0 || first > 0xF4 || bytes > text.size()) {
    return alone;
  }
  char32_t code = first & (0x7FU >> bytes);
  for (std::size_t place = 1; place != bytes; ++place) {
    if (!continuesCharacter(text[place])) {
      return alone;
    }
    code = (code << 6U) | (static_cast<unsigned char>(text[place]) & 0x3FU);
  }
  // Fewer bytes would do for a smaller one.
  constexpr char32_t kSmallest[] = {0x80, 0x800, 0x10000};
  const bool isCharacter = code >= kSmallest[bytes - 2] && code <= 0x10FFFF &&
                           !isHighSurrogate(code) && !isLowSurrogate(code);
  return isCharacter ? Character{code, bytes, true} : alone;
}

void appendVisible(const Character& character, std::string& shown) {
  if (!character.isUtf8) {
    shown += '<';
    appendHexadecimal(character.code, 2, shown);
    shown += '>';
  } else if (isUnseen(character.code)) {
    const unsigned digits = character.code > 0xFFFFF ? 6 : character.code > 0xFFFF ? 5 : 4;
    shown += "<U+";
    appendHexadecimal(character.code, digits, shown);
    shown += '>';
  } else {
    append(character.code, shown);
  }
}

}  // namespace install::update_metadata_parser::diagnosis
