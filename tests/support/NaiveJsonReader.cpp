#include "support/NaiveJsonReader.h"

#include <cstddef>
#include <map>
#include <stdexcept>
#include <string_view>
#include <utility>
#include <vector>

#include "fl/i18n.h"
#include "json/ParseResult.h"
#include "json/ParserException.h"
#include "json/scan/Conversions.h"
#include "support/NaivePayloadReader.h"

namespace test_support {
namespace {

using namespace foundation::json;
using fl::i18n::lcctype::isdigit_ascii;

// Every operation leaves `position` after what it read or, on failure, at the byte that it did not
// accept. Only matchLiteral() does not move it on failure.
class NaiveReader {
 public:
  NaiveReader(const char* end, bool allowComments) : end_(end), allowComments_(allowComments) {}

  ParseResult parseValue(const char*& position, Value& result) const {
    using Alternative = ParseResult (NaiveReader::*)(const char*&, Value&) const;
    constexpr Alternative kAlternatives[] = {
        &NaiveReader::parseStringValue, &NaiveReader::parseNumber,  &NaiveReader::parseObject,
        &NaiveReader::parseArray,       &NaiveReader::parseBoolean, &NaiveReader::parseNull};
    const char* furthest = nullptr;
    ParseResult furthestCode = kSuccess;
    for (const Alternative alternative : kAlternatives) {
      const char* own = position;
      const ParseResult code = (this->*alternative)(own, result);
      if (code == kSuccess) {
        position = own;
        return kSuccess;
      }
      if (furthest == nullptr || own > furthest) {
        furthest = own;
        furthestCode = code;
      }
    }
    position = furthest;
    return furthestCode;
  }

 private:
  ParseResult parseStringValue(const char*& position, Value& result) const {
    std::string text;
    const ParseResult code = parseString(position, text);
    if (code == kSuccess) {
      result = Value(text);
    }
    return code;
  }

  ParseResult parseString(const char*& position, std::string& text) const {
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

  ParseResult parseUnicodeEscape(const char*& position, std::string& text) const {
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

  static bool parseUnit(const char*& position, std::u16string& units) {
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

  ParseResult parseNumber(const char*& position, Value& result) const {
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

  ParseResult parseDigits(const char*& position, ParseResult failCode) const {
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

  ParseResult parseBoolean(const char*& position, Value& result) const {
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

  ParseResult parseNull(const char*& position, Value& result) const {
    const ParseResult code = matchLiteral(position, "null", kNoNull);
    if (code == kSuccess) {
      result = Value(nullptr);
    }
    return code;
  }

  ParseResult matchLiteral(const char*& position, std::string_view word,
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

  ParseResult parseArray(const char*& position, Value& result) const {
    if (position == end_) {
      return kEndOfText;
    }
    if (*position != '[') {
      return kNoOpeningBracket;
    }
    ++position;
    skipWhitespace(position);
    if (position == end_) {
      return kEndOfText;
    }
    if (*position == ']') {
      ++position;
      result = Value(Array());
      return kSuccess;
    }
    std::vector<Value> elements;
    for (;;) {
      Value element;
      const ParseResult code = parseValue(position, element);
      if (code != kSuccess) {
        return code;
      }
      skipWhitespace(position);
      if (position == end_) {
        return kEndOfText;
      }
      elements.push_back(element);
      if (*position == ']') {
        ++position;
        result = Value(Array(elements));
        return kSuccess;
      }
      if (*position != ',') {
        return kNoArraySeparator;
      }
      ++position;
      skipWhitespace(position);
    }
  }

  // The state of reading one object.
  struct ObjectState {
    std::map<std::string, Value> members;
    std::string typeName;
    const char* payload = nullptr;
  };

  ParseResult parseObject(const char*& position, Value& result) const {
    if (position == end_) {
      return kEndOfText;
    }
    if (*position != '{') {
      return kNoOpeningBrace;
    }
    ++position;
    skipWhitespace(position);
    if (position == end_) {
      return kEndOfText;
    }
    ObjectState object;
    bool closed = *position == '}';
    if (closed) {
      ++position;
    }
    while (!closed) {
      const ParseResult code = parseMember(position, object);
      if (code != kSuccess) {
        return code;
      }
      closed = *position == '}';
      if (!closed && *position != ',') {
        return kNoObjectSeparator;
      }
      ++position;
      if (!closed) {
        skipWhitespace(position);
      }
    }
    result = Value(Object(
        std::vector<std::pair<std::string, Value>>(object.members.begin(), object.members.end())));
    return kSuccess;
  }

  // Stops before the byte that separates the member from what follows.
  ParseResult parseMember(const char*& position, ObjectState& object) const {
    std::string key;
    ParseResult code = parseString(position, key);
    if (code != kSuccess) {
      return code;
    }
    skipWhitespace(position);
    if (position == end_) {
      return kEndOfText;
    }
    if (*position != ':') {
      return kNoColon;
    }
    ++position;
    skipWhitespace(position);
    Value value;
    if (key == "qzdata") {
      object.payload = position;
      code = parsePayload(object.typeName, position, value);
    } else {
      code = parseValue(position, value);
      if (key == "qztype") {
        const ParseResult readingCode = readType(position, value, object);
        code = code == kSuccess ? readingCode : code;
      }
    }
    if (code != kSuccess) {
      return code;
    }
    skipWhitespace(position);
    if (position == end_) {
      return kEndOfText;
    }
    object.members.emplace(key, value);
    return kSuccess;
  }

  ParseResult readType(const char*& position, const Value& type, ObjectState& object) const {
    if (!type.is<std::string>()) {
      throw std::runtime_error(std::string("invalid conversion: ") + type.typeName() + " to " +
                               traits<std::string>::name);
    }
    const std::string name = type.as<std::string>();
    if (naiveIsIntegerType(name)) {
      object.typeName = name;
    }
    if (object.payload == nullptr || object.typeName.empty()) {
      return kSuccess;
    }
    const char* again = object.payload;
    Value reading;
    const ParseResult code = parsePayload(object.typeName, again, reading);
    if (code != kSuccess) {
      position = again;
      return code;
    }
    object.members["qzdata"] = reading;
    return kSuccess;
  }

  ParseResult parsePayload(const std::string& typeName, const char*& position,
                           Value& result) const {
    return typeName.empty() ? parseValue(position, result)
                            : naiveReadIntegers(typeName, position, end_, allowComments_, result);
  }

  void skipWhitespace(const char*& position) const {
    naiveSkipWhitespace(position, end_, allowComments_);
  }

  const char* end_;
  bool allowComments_;
};

}  // namespace

Value naiveParseJsonText(const std::string& text, bool allowComments) {
  const char* const begin = text.data();
  const char* const end = begin + text.size();
  const char* position = begin;
  Value result;
  const ParseResult code = NaiveReader(end, allowComments).parseValue(position, result);
  if (code != kSuccess) {
    throw ParserException(begin, position, end, code, get_parse_result_description(code));
  }
  if (position != end) {
    throw ParserException(begin, position, end, kSuccess, "Parse incomplete");
  }
  return result;
}

}  // namespace test_support
