#include "output/Text.h"

#include <algorithm>
#include <cstddef>

#include <utf8.h>
#include <utf8/unchecked.h>

#include "output/CharacterRange.h"
#include "output/UnseenCharacters.h"

namespace update_metadata_tool::output {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

constexpr const char* kEmptyText = "(empty)";

bool isHighSurrogate(char16_t unit) {
  return unit >= 0xD800 && unit <= 0xDBFF;
}

bool isLowSurrogate(char16_t unit) {
  return unit >= 0xDC00 && unit <= 0xDFFF;
}

// Reads the character at `index`, one unit or two, and advances past it.
char32_t takeCharacter(std::u16string_view text, std::size_t& index) {
  const char16_t unit = text[index++];
  if (isHighSurrogate(unit) && index < text.size() && isLowSurrogate(text[index])) {
    const char16_t low = text[index++];
    return 0x10000U + ((static_cast<char32_t>(unit) - 0xD800U) << 10U) + (low - 0xDC00U);
  }
  return isHighSurrogate(unit) || isLowSurrogate(unit) ? kReplacement : unit;
}

void append(char32_t character, std::string& text) {
  if (character < 0x80) {
    text += static_cast<char>(character);
  } else {
    utf8::append(character, text);
  }
}

std::string visibleBlanks(std::size_t count) {
  std::string shown;
  while (count-- != 0) {
    shown += "<U+0020>";
  }
  return shown;
}

}  // namespace

bool isUtf8(std::string_view text) {
  return utf8::is_valid(text.begin(), text.end());
}

std::size_t lengthOfUtf8(std::string_view text) {
  return static_cast<std::size_t>(utf8::find_invalid(text.begin(), text.end()) - text.begin());
}

bool isUtf16(std::u16string_view text) {
  for (std::size_t index = 0; index < text.size(); ++index) {
    if (isHighSurrogate(text[index])) {
      ++index;
      if (index == text.size() || !isLowSurrogate(text[index])) {
        return false;
      }
    } else if (isLowSurrogate(text[index])) {
      return false;
    }
  }
  return true;
}

std::u16string toUtf16(std::string_view text) {
  return utf8::utf8to16(text);
}

std::string toUtf8(std::u16string_view text) {
  std::string converted;
  converted.reserve(text.size());
  for (std::size_t index = 0; index < text.size();) {
    append(takeCharacter(text, index), converted);
  }
  return converted;
}

bool isUnseen(char32_t character) {
  if (character >= 0x20 && character < 0x7F) {
    return false;  // nearly every character of nearly every name
  }
  return isIn(kUnseenCharacters, character);
}

std::string toVisible(std::u16string_view text) {
  if (text.empty()) {
    return kEmptyText;
  }
  std::string shown;
  shown.reserve(text.size());
  for (std::size_t index = 0; index < text.size();) {
    appendVisible({takeCharacter(text, index), 0, true}, shown);
  }
  return shown;
}

std::string toVisibleName(std::u16string_view name) {
  std::string shown = toVisible(name);
  const std::size_t end = shown.find_last_not_of(' ') + 1;
  const std::size_t blanksAfter = shown.size() - end;
  shown.erase(end);
  const std::size_t blanksBefore = std::min(shown.find_first_not_of(' '), shown.size());
  return visibleBlanks(blanksBefore) + shown.substr(blanksBefore) + visibleBlanks(blanksAfter);
}

std::string toVisible(std::string_view text) {
  if (text.empty()) {
    return kEmptyText;
  }
  std::string shown;
  shown.reserve(text.size());
  while (!text.empty()) {
    const Character character = firstCharacter(text);
    appendVisible(character, shown);
    text.remove_prefix(character.bytes);
  }
  return shown;
}

void appendHexadecimal(char32_t number, unsigned digits, std::string& text, const char* alphabet) {
  while (digits-- != 0) {
    text += alphabet[(number >> (4 * digits)) & 0xFU];
  }
}

Character firstCharacter(std::string_view text) {
  constexpr std::size_t kMostBytes = 4;
  for (std::size_t bytes = 1; bytes <= std::min(kMostBytes, text.size()); ++bytes) {
    if (isUtf8(text.substr(0, bytes))) {
      return {utf8::unchecked::peek_next(text.begin()), bytes, true};
    }
  }
  return {static_cast<unsigned char>(text.front()), 1, false};
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

}  // namespace update_metadata_tool::output
