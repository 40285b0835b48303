#include "fl/i18n.h"

#include <algorithm>
#include <filesystem>

namespace fl::i18n {

std::u16string to_ustring(std::string_view text) {
  std::u16string converted(text.size(), u'\0');
  std::transform(text.begin(), text.end(), converted.begin(),
                 [](char byte) { return static_cast<char16_t>(static_cast<unsigned char>(byte)); });
  return converted;
}

std::u16string utf8_to_ustring(std::string_view text) {
  return std::filesystem::path(text).u16string();
}

std::string to_string(std::u16string_view text) {
  return std::filesystem::path(text).string();
}

}  // namespace fl::i18n
