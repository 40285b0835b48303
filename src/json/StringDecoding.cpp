#include "json/StringDecoding.h"

#include <cstddef>

#include "foundation/json/detail.h"
#include "json/StringScan.h"

namespace foundation::json {
namespace {

constexpr std::ptrdiff_t kUnitDigits = 4;

bool isHighSurrogate(char16_t unit) noexcept {
  return unit >= 0xD800 && unit <= 0xDBFF;
}

// The value of a hexadecimal digit, or -1.
int hexadecimalDigit(char byte) noexcept {
  if (byte >= '0' && byte <= '9') {
    return byte - '0';
  }
  if (byte >= 'a' && byte <= 'f') {
    return byte - 'a' + 10;
  }
  if (byte >= 'A' && byte <= 'F') {
    return byte - 'A' + 10;
  }
  return -1;
}

// Reads four hexadecimal digits, which the text has bytes for.
ParseResult readUnit(const char*& position, char16_t& unit) noexcept {
  unsigned value = 0;
  for (std::ptrdiff_t i = 0; i != kUnitDigits; ++i, ++position) {
    const int digit = hexadecimalDigit(*position);
    if (digit < 0) {
      return kBadUnicodeEscape;
    }
    value = value * 16 + static_cast<unsigned>(digit);
  }
  unit = static_cast<char16_t>(value);
  return kSuccess;
}

// Reads what follows "\u": one unit, or two if the first is a high surrogate. Whether the second is
// a low one makes no difference here: the conversion replaces what does not pair.
ParseResult decodeUnicodeEscape(const char*& position, const char* end, std::string& text) {
  if (end - position < kUnitDigits) {
    return kEndOfText;
  }
  char16_t units[2];
  std::size_t count = 1;
  if (const ParseResult result = readUnit(position, units[0]); result != kSuccess) {
    return result;
  }
  if (isHighSurrogate(units[0])) {
    if (end - position < 2 + kUnitDigits) {
      return kEndOfText;
    }
    for (const char expected : {'\\', 'u'}) {
      if (*position != expected) {
        return kBadUnicodeEscape;
      }
      ++position;
    }
    if (const ParseResult result = readUnit(position, units[1]); result != kSuccess) {
      return result;
    }
    count = 2;
  }
  text += detail::u16_to_u8({units, count});
  return kSuccess;
}

// Reads what follows a backslash.
ParseResult decodeEscape(const char*& position, const char* end, std::string& text) {
  if (position == end) {
    return kEndOfText;
  }
  switch (*position) {
    case '"':
    case '/':
    case '\\':
      text.push_back(*position);
      break;
    case 'b':
      text.push_back('\b');
      break;
    case 'f':
      text.push_back('\f');
      break;
    case 'n':
      text.push_back('\n');
      break;
    case 'r':
      text.push_back('\r');
      break;
    case 't':
      text.push_back('\t');
      break;
    case 'u':
      ++position;
      return decodeUnicodeEscape(position, end, text);
    default:
      return kBadEscape;
  }
  ++position;
  return kSuccess;
}

}  // namespace

ParseResult decodeString(const char*& position, const char* end, std::string& text) {
  for (;;) {
    const char* const special = findQuoteOrBackslash(position, end);
    text.append(position, special);
    position = special;
    if (position == end) {
      return kEndOfText;
    }
    const bool closing = *position == '"';
    ++position;
    if (closing) {
      return kSuccess;
    }
    if (const ParseResult result = decodeEscape(position, end, text); result != kSuccess) {
      return result;
    }
  }
}

}  // namespace foundation::json
