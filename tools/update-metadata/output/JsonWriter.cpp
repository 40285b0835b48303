#include "output/JsonWriter.h"

#include <algorithm>
#include <ostream>

#include <nlohmann/json.hpp>

#include "output/Text.h"

namespace update_metadata_tool::output {
namespace {

// Whether a byte of JSON may belong to an unseen character. JSON escapes the controls below U+0020.
bool mayBeUnseen(char byte) {
  constexpr char kDelete = 0x7F;
  return byte == kDelete || static_cast<unsigned char>(byte) > 0x7F;
}

// Whether a byte of a string needs no escape, whatever its neighbors are.
bool isPlain(char byte) {
  return byte >= ' ' && !mayBeUnseen(byte) && byte != '"' && byte != '\\';
}

void writeEscape(char32_t unit, std::ostream& out) {
  std::string escape = "\\u";
  appendHexadecimal(unit, 4, escape, kLowerCaseHexadecimal);
  out << escape;
}

// A character beyond U+FFFF takes two escapes.
void writeEscapes(char32_t character, std::ostream& out) {
  if (character < 0x10000) {
    writeEscape(character, out);
  } else {
    writeEscape(0xD800 + ((character - 0x10000) >> 10U), out);
    writeEscape(0xDC00 + (character & 0x3FFU), out);
  }
}

// Writes JSON with escapes for unseen characters.
void writeVisible(std::string_view json, std::ostream& out) {
  std::size_t plain = 0;  // bytes at the beginning that need no escape
  while (plain != json.size()) {
    if (!mayBeUnseen(json[plain])) {
      ++plain;
      continue;
    }
    const Character character = firstCharacter(json.substr(plain));
    if (!isUnseen(character.code)) {
      plain += character.bytes;
      continue;
    }
    out << json.substr(0, plain);
    writeEscapes(character.code, out);
    json.remove_prefix(plain + character.bytes);
    plain = 0;
  }
  out << json;
}

bool isPlain(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char byte) { return isPlain(byte); });
}

// Used for strings only: destroying this library's arrays and objects allocates memory, and ends
// the program if there is none.
std::string toJson(std::string_view text) {
  using Json = nlohmann::json;
  constexpr int kOneLine = -1;
  return Json(text).dump(kOneLine, ' ', false, Json::error_handler_t::replace);
}

}  // namespace

JsonWriter& JsonWriter::begin(char bracket) {
  separate();
  out_ << bracket;
  isFirst_ = true;
  return *this;
}

JsonWriter& JsonWriter::end(char bracket) {
  out_ << bracket;
  isFirst_ = false;
  return *this;
}

JsonWriter& JsonWriter::name(std::string_view name) {
  value(name);
  out_ << ':';
  isFirst_ = true;
  return *this;
}

JsonWriter& JsonWriter::name(std::u16string_view name) {
  return this->name(toUtf8(name));
}

JsonWriter& JsonWriter::value(std::string_view text) {
  separate();
  writeString(text);
  return *this;
}

JsonWriter& JsonWriter::value(std::u16string_view text) {
  return value(toUtf8(text));
}

JsonWriter& JsonWriter::plain(std::string_view json) {
  separate();
  out_ << json;
  return *this;
}

void JsonWriter::separate() {
  if (!isFirst_) {
    out_ << ',';
  }
  isFirst_ = false;
}

void JsonWriter::writeString(std::string_view text) {
  if (isPlain(text)) {
    out_ << '"' << text << '"';
  } else {
    writeVisible(toJson(text), out_);
  }
}

void writeUnquoted(std::string_view text, std::ostream& out) {
  if (isPlain(text)) {
    out << text;
    return;
  }
  const std::string json = toJson(text);
  std::string unquoted;
  unquoted.reserve(json.size());
  for (std::size_t index = 1; index + 1 < json.size(); ++index) {
    const bool isEscape = json[index] == '\\';
    if (!isEscape || json[index + 1] != '"') {
      unquoted += json[index];
    }
    if (isEscape) {
      unquoted += json[++index];
    }
  }
  writeVisible(unquoted, out);
}

void writeUnquoted(std::u16string_view text, std::ostream& out) {
  writeUnquoted(toUtf8(text), out);
}

}  // namespace update_metadata_tool::output
