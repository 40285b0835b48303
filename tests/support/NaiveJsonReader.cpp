#include "support/NaiveJsonReader.h"

#include <map>
#include <stdexcept>
#include <utility>
#include <vector>

#include "json/ParseResult.h"
#include "json/ParserException.h"
#include "support/NaivePayloadReader.h"
#include "support/NaiveScalarReader.h"

namespace test_support {
namespace {

using namespace foundation::json;

class NaiveReader : public NaiveScalarReader {
 public:
  NaiveReader(const char* end, bool allowComments)
      : NaiveScalarReader(end), allowComments_(allowComments) {}

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
