#include "output/Text.h"

#include <algorithm>
#include <cstddef>

namespace update_metadata_tool::output {
namespace {

constexpr const char* kEmptyText = "(empty)";

std::string visibleBlanks(std::size_t count) {
  std::string shown;
  while (count-- != 0) {
    shown += "<U+0020>";
  }
  return shown;
}

}  // namespace

bool isUtf16(std::u16string_view text) {
  for (std::size_t index = 0; index < text.size();) {
    const bool isSurrogate = text[index] >= 0xD800 && text[index] <= 0xDFFF;
    const char32_t character = takeCharacter(text, index);
    if (isSurrogate && character < 0x10000) {
      return false;
    }
  }
  return true;
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

}  // namespace update_metadata_tool::output
