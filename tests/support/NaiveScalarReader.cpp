#include "support/NaiveScalarReader.h"

#include <cstddef>
#include <string_view>

#include "fl/i18n.h"
#include "json/scan/Conversions.h"

namespace test_support {

using namespace foundation::json;
using fl::i18n::lcctype::isdigit_ascii;

ParseResult NaiveScalarReader::parseStringValue(const char*& position, Value& result) const {
  std::string text;
  const ParseResult code = parseString(position, text);
  if (code == kSuccess) {
    result = Value(text);
  }
  return code;
}

ParseResult NaiveScalarReader::parseString(const char*& position, std::string& text) const {
  if (position == end_) {
    return kEndOfText;
  }
  if (*position != '"') {
    return kNoOpeningQuote;
  }
  ++position;
  for (;;) {
    if (position == end_) {
      return kEndOfText;
    }
    const char byte = *position++;
    if (byte == '"') {
      return kSuccess;
    }
    if (byte != '\\') {
      text += byte;
      continue;
    }
    if (position == end_) {
      return kEndOfText;
    }
    const std::string_view selectors = "\"/\\bfnrt";
    const std::string_view meanings = "\"/\\\b\f\n\r\t";
    const std::size_t found = selectors.find(*position);
    if (found != std::string_view::npos) {
      text += meanings[found];
      ++position;
    } else if (*position == 'u') {
      ++position;
      const ParseResult code = parseUnicodeEscape(position, text);
      if (code != kSuccess) {
        return code;
      }
    } else {
      return kBadEscape;
    }
  }
}

ParseResult NaiveScalarReader::parseUnicodeEscape(const char*& position, std::string& text) const {
  if (end_ - position < 4) {
    return kEndOfText;
  }
  std::u16string units;
  if (!parseUnit(position, units)) {
    return kBadUnicodeEscape;
  }
  if (units[0] >= 0xD800 && units[0] <= 0xDBFF) {
    if (end_ - position < 6) {
      return kEndOfText;
    }
    if (*position != '\\') {
      return kBadUnicodeEscape;
    }
    ++position;
    if (*position != 'u') {
      return kBadUnicodeEscape;
    }
    ++position;
    if (!parseUnit(position, units)) {
      return kBadUnicodeEscape;
    }
  }
  text += detail::u16_to_u8(units);
  return kSuccess;
}

bool NaiveScalarReader::parseUnit(const char*& position, std::u16string& units) {
  const std::string_view hexadecimal = "0123456789abcdefABCDEF";
  std::size_t unit = 0;
  for (int i = 0; i < 4; ++i) {
    const std::size_t digit = hexadecimal.find(*position);
    if (digit == std::string_view::npos) {
      return false;
    }
    unit = unit * 16 + (digit < 16 ? digit : digit - 6);
    ++position;
  }
  units += static_cast<char16_t>(unit);
  return true;
}

ParseResult NaiveScalarReader::parseNumber(const char*& position, Value& result) const {
  const char* const begin = position;
  if (position == end_) {
    return kEndOfText;
  }
  if (*position == '-') {
    ++position;
  }
  ParseResult code = parseDigits(position, kNoDigit);
  if (code == kSuccess && position != end_ && *position == '.') {
    ++position;
    code = parseDigits(position, kNoFractionDigit);
  }
  if (code == kSuccess && position != end_ && (*position == 'e' || *position == 'E')) {
    ++position;
    if (position != end_ && (*position == '+' || *position == '-')) {
      ++position;
    }
    code = parseDigits(position, kNoExponentDigit);
  }
  if (code == kSuccess) {
    result = Value(detail::string_to_double(detail::get_utf8_string(begin, position)));
  }
  return code;
}

ParseResult NaiveScalarReader::parseDigits(const char*& position, ParseResult failCode) const {
  if (position == end_) {
    return kEndOfText;
  }
  if (!isdigit_ascii(*position)) {
    return failCode;
  }
  while (position != end_ && isdigit_ascii(*position)) {
    ++position;
  }
  return kSuccess;
}

ParseResult NaiveScalarReader::parseBoolean(const char*& position, Value& result) const {
  ParseResult code = matchLiteral(position, "true", kNoBoolean);
  if (code == kSuccess) {
    result = Value(true);
    return kSuccess;
  }
  if (code == kEndOfText) {
    return code;
  }
  code = matchLiteral(position, "false", kNoBoolean);
  if (code == kSuccess) {
    result = Value(false);
  }
  return code;
}

ParseResult NaiveScalarReader::parseNull(const char*& position, Value& result) const {
  const ParseResult code = matchLiteral(position, "null", kNoNull);
  if (code == kSuccess) {
    result = Value(nullptr);
  }
  return code;
}

ParseResult NaiveScalarReader::matchLiteral(const char*& position, std::string_view word,
                                            ParseResult failCode) const {
  const std::string_view rest(position, static_cast<std::size_t>(end_ - position));
  if (rest.size() >= word.size()) {
    if (rest.substr(0, word.size()) != word) {
      return failCode;
    }
    position += word.size();
    return kSuccess;
  }
  return rest == word.substr(0, rest.size()) ? kEndOfText : failCode;
}

}  // namespace test_support
