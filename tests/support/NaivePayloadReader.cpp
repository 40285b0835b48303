#include "support/NaivePayloadReader.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>
#include <vector>

#include "fl/i18n.h"

namespace test_support {
namespace {

using namespace foundation::json;
using fl::i18n::lcctype::isdigit_ascii;
using fl::i18n::lcctype::isspace_ascii;

bool isSignedName(const std::string& name) {
  return name == "int64" || name == "int32" || name == "int16" || name == "int8";
}

bool isUnsignedName(const std::string& name) {
  return name == "uint64" || name == "uint32" || name == "uint16" || name == "uint8";
}

std::int64_t toSigned(const std::string& digits, bool negative) {
  constexpr std::int64_t kMax = std::numeric_limits<std::int64_t>::max();
  constexpr std::int64_t kMin = std::numeric_limits<std::int64_t>::min();
  std::int64_t value = 0;
  for (const char byte : digits) {
    const std::int64_t digit = byte - '0';
    if (negative) {
      if (value < kMin / 10 || (value == kMin / 10 && digit > -(kMin % 10))) {
        return kMin;
      }
      value = value * 10 - digit;
    } else {
      if (value > kMax / 10 || (value == kMax / 10 && digit > kMax % 10)) {
        return kMax;
      }
      value = value * 10 + digit;
    }
  }
  return value;
}

std::uint64_t toUnsigned(const std::string& digits, bool negative) {
  constexpr std::uint64_t kMax = std::numeric_limits<std::uint64_t>::max();
  if (negative) {
    return 0;
  }
  std::uint64_t value = 0;
  for (const char byte : digits) {
    const auto digit = static_cast<std::uint64_t>(byte - '0');
    if (value > kMax / 10 || (value == kMax / 10 && digit > kMax % 10)) {
      return kMax;
    }
    value = value * 10 + digit;
  }
  return value;
}

ParseResult readElements(bool isSigned, const char*& position, const char* end, bool allowComments,
                         std::vector<Value>& elements) {
  if (position == end) {
    return kEndOfText;
  }
  if (*position != '[') {
    return kNoOpeningBracket;
  }
  ++position;
  naiveSkipWhitespace(position, end, allowComments);
  if (position == end) {
    return kEndOfText;
  }
  if (*position == ']') {
    ++position;
    return kSuccess;
  }
  for (;;) {
    const bool negative = *position == '-';
    if (negative) {
      ++position;
      if (position == end) {
        return kEndOfText;
      }
    }
    std::string digits;
    if (*position == '0') {
      digits = *position++;
    } else {
      while (position != end && isdigit_ascii(*position)) {
        digits += *position++;
      }
      if (digits.empty()) {
        return kNoInteger;
      }
    }
    if (position != end && (*position == '.' || *position == 'e' || *position == 'E' ||
                            *position == '"' || *position == '{')) {
      return kNoInteger;
    }
    naiveSkipWhitespace(position, end, allowComments);
    if (position == end) {
      return kEndOfText;
    }
    elements.push_back(isSigned ? Value(toSigned(digits, negative))
                                : Value(toUnsigned(digits, negative)));
    if (*position == ']') {
      ++position;
      return kSuccess;
    }
    if (*position != ',') {
      return kNoArraySeparator;
    }
    ++position;
    naiveSkipWhitespace(position, end, allowComments);
    if (position == end) {
      return kEndOfText;
    }
  }
}

}  // namespace

void naiveSkipWhitespace(const char*& position, const char* end, bool allowComments) {
  for (;;) {
    const std::string_view rest(position, static_cast<std::size_t>(end - position));
    std::size_t skipped = 0;
    if (!rest.empty() && isspace_ascii(rest[0])) {
      skipped = 1;
    } else if (allowComments && rest.substr(0, 2) == "//") {
      const std::size_t lineFeed = rest.find('\n');
      skipped = lineFeed == std::string_view::npos ? rest.size() : lineFeed + 1;
    } else if (allowComments && rest.substr(0, 2) == "/*") {
      const std::size_t close = rest.find("*/", 2);
      skipped = close == std::string_view::npos ? rest.size() : close + 2;
    }
    if (skipped == 0) {
      return;
    }
    position += skipped;
  }
}

bool naiveIsIntegerType(const std::string& name) {
  return isSignedName(name) || isUnsignedName(name);
}

ParseResult naiveReadIntegers(const std::string& typeName, const char*& position, const char* end,
                              bool allowComments, Value& result) {
  if (!naiveIsIntegerType(typeName)) {
    return kEndOfText;
  }
  std::vector<Value> elements;
  const ParseResult code =
      readElements(isSignedName(typeName), position, end, allowComments, elements);
  if (code == kSuccess) {
    result = Value(Array(elements));
  }
  return code;
}

}  // namespace test_support
