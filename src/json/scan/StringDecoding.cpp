#include "json/scan/StringDecoding.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>

#include "foundation/core/compiler.h"
#include "json/scan/Conversions.h"
#include "json/scan/StringScan.h"

namespace foundation::json {
namespace {

constexpr std::ptrdiff_t kUnitDigits = 4;

bool isSurrogate(char16_t unit) noexcept {
  return (unit & 0xF800) == 0xD800;
}

bool isHighSurrogate(char16_t unit) noexcept {
  return (unit & 0xFC00) == 0xD800;
}

constexpr std::uint8_t kNoDigit = 0xFF;

// The value of each byte as a hexadecimal digit.
constexpr std::array<std::uint8_t, 256> kDigitValues = [] {
  std::array<std::uint8_t, 256> values{};
  for (std::uint8_t& value : values) {
    value = kNoDigit;
  }
  for (std::uint8_t digit = 0; digit != 10; ++digit) {
    values['0' + digit] = digit;
  }
  for (std::uint8_t digit = 10; digit != 16; ++digit) {
    values['a' + digit - 10] = digit;
    values['A' + digit - 10] = digit;
  }
  return values;
}();

unsigned digitValue(char byte) noexcept {
  return kDigitValues[static_cast<unsigned char>(byte)];
}

// Reads four hexadecimal digits. \pre the text has four more bytes
FOUNDATION_ALWAYS_INLINE inline ParseResult readUnit(const char*& position,
                                                     char16_t& unit) noexcept {
  const unsigned first = digitValue(position[0]);
  const unsigned second = digitValue(position[1]);
  const unsigned third = digitValue(position[2]);
  const unsigned fourth = digitValue(position[3]);
  if ((first | second | third | fourth) >= 16) {
    while (digitValue(*position) != kNoDigit) {
      ++position;
    }
    return kBadUnicodeEscape;
  }
  unit = static_cast<char16_t>(first << 12 | second << 8 | third << 4 | fourth);
  position += kUnitDigits;
  return kSuccess;
}

// Reads the rest of an escape after "\u": one unit, or two if the first is a high surrogate.
// Whether the second is a low one does not matter here: the conversion replaces unpaired
// surrogates.
ParseResult decodeUnicodeEscape(const char*& position, const char* end, char*& out) noexcept {
  if (end - position < kUnitDigits) {
    return kEndOfText;
  }
  char16_t units[2];
  std::size_t count = 1;
  if (const ParseResult result = readUnit(position, units[0]); result != kSuccess) {
    return result;
  }
  if (!isSurrogate(units[0])) {
    out = detail::writeUtf8(char32_t{units[0]}, out);
    return kSuccess;
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
  out = detail::writeUtf8({units, count}, out);
  return kSuccess;
}

// Reads the rest of an escape after the backslash.
ParseResult decodeEscape(const char*& position, const char* end, char*& out) noexcept {
  if (position == end) {
    return kEndOfText;
  }
  if (*position == 'u') {
    ++position;
    return decodeUnicodeEscape(position, end, out);
  }
  switch (*position) {
    case '"':
    case '/':
    case '\\':
      *out++ = *position;
      break;
    case 'b':
      *out++ = '\b';
      break;
    case 'f':
      *out++ = '\f';
      break;
    case 'n':
      *out++ = '\n';
      break;
    case 'r':
      *out++ = '\r';
      break;
    case 't':
      *out++ = '\t';
      break;
    default:
      return kBadEscape;
  }
  ++position;
  return kSuccess;
}

}  // namespace

ParseResult decodeString(const char*& position, const char* end, std::string& text) {
  // Collects consecutive escapes, which are then copied in one piece.
  char decoded[512];
  constexpr std::size_t kLongText = std::size_t{1} << 20;
  constexpr std::size_t kMostOfEscape = 2 * detail::kUtf8BytesOfUnit;
  for (;;) {
    char* out = decoded;
    while (position != end && *position == '\\' && out <= std::end(decoded) - kMostOfEscape) {
      ++position;
      if (const ParseResult result = decodeEscape(position, end, out); result != kSuccess) {
        return result;
      }
    }
    const char* const special = findQuoteOrBackslash(position, end);
    if (text.size() > kLongText && text.capacity() - text.size() < sizeof decoded) {
      // Once, instead of growing step by step: no string is longer than its source.
      text.reserve(text.size() + sizeof decoded + static_cast<std::size_t>(end - position));
    }
    text.append(decoded, out);
    text.append(position, special);
    position = special;
    if (position == end) {
      return kEndOfText;
    }
    if (*position == '"') {
      ++position;
      return kSuccess;
    }
  }
}

}  // namespace foundation::json
