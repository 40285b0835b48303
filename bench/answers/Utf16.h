#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include "fl/i18n.h"

namespace bench::answers {

/// Writes `text` as UTF-16 to `out`, where a unit for each of its bytes has room, and returns the
/// end. Gives what the library's conversion gives; nearly every text is ASCII.
inline char16_t* writeUtf16(std::string_view text, char16_t* out) {
  // Two loops without an exit, which the compiler turns into vector instructions.
  unsigned char allBits = 0;
  for (const char c : text) {
    allBits |= static_cast<unsigned char>(c);
  }
  if (allBits < 0x80) {
    for (std::size_t i = 0; i < text.size(); ++i) {
      out[i] = static_cast<unsigned char>(text[i]);
    }
    return out + text.size();
  }
  const std::u16string converted = fl::i18n::to_ustring(text);
  std::memcpy(out, converted.data(), converted.size() * sizeof(char16_t));
  return out + converted.size();
}

/// Replaces `result` by `text` as UTF-16, and keeps its memory.
inline void assignUtf16(std::u16string& result, std::string_view text) {
  result.resize(text.size());
  const char16_t* const end = writeUtf16(text, result.data());
  result.resize(static_cast<std::size_t>(end - result.data()));
}

}  // namespace bench::answers
