#include "OrderedJson.h"

#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>

#include "Text.h"

namespace update_metadata_tool {
namespace {

constexpr char kDelete = 0x7F;

// JSON is ASCII outside of its strings, and has the controls below the blank escaped in them.
bool mayBeUnseen(char byte) {
  return byte == kDelete || static_cast<unsigned char>(byte) > 0x7F;
}

void writeEscape(char32_t character, std::ostream& out) {
  constexpr const char* kDigits = "0123456789abcdef";
  out << "\\u" << kDigits[(character >> 12U) & 0xFU] << kDigits[(character >> 8U) & 0xFU]
      << kDigits[(character >> 4U) & 0xFU] << kDigits[character & 0xFU];
}

}  // namespace

void writeJson(const OrderedJson& json, std::ostream& out) {
  constexpr int kOneLine = -1;
  const std::string line = json.dump(kOneLine, ' ', false, OrderedJson::error_handler_t::replace);
  std::string_view rest = line;
  std::size_t plain = 0;  // bytes at the beginning of the rest that are written as they stand
  while (plain != rest.size()) {
    if (!mayBeUnseen(rest[plain])) {
      ++plain;
      continue;
    }
    const Character character = firstCharacter(rest.substr(plain));
    if (!isUnseen(character.code)) {
      plain += character.bytes;
      continue;
    }
    out << rest.substr(0, plain);
    writeEscape(character.code, out);
    rest.remove_prefix(plain + character.bytes);
    plain = 0;
  }
  out << rest;
}

}  // namespace update_metadata_tool
