#include "support/NaiveText.h"

#include <algorithm>
#include <cstddef>

namespace test_support {
namespace {

char toByte(char32_t value) {
  return static_cast<char>(static_cast<unsigned char>(value));
}

struct ByteRange {
  unsigned low;
  unsigned high;
};

/// A well-formed sequence: which bytes are allowed at which place.
struct WellFormed {
  std::size_t length;
  ByteRange bytes[4];
};

constexpr WellFormed kWellFormed[] = {
    {1, {{0x00, 0x7F}}},
    {2, {{0xC2, 0xDF}, {0x80, 0xBF}}},
    {3, {{0xE0, 0xE0}, {0xA0, 0xBF}, {0x80, 0xBF}}},
    {3, {{0xE1, 0xEC}, {0x80, 0xBF}, {0x80, 0xBF}}},
    {3, {{0xED, 0xED}, {0x80, 0x9F}, {0x80, 0xBF}}},
    {3, {{0xEE, 0xEF}, {0x80, 0xBF}, {0x80, 0xBF}}},
    {4, {{0xF0, 0xF0}, {0x90, 0xBF}, {0x80, 0xBF}, {0x80, 0xBF}}},
    {4, {{0xF1, 0xF3}, {0x80, 0xBF}, {0x80, 0xBF}, {0x80, 0xBF}}},
    {4, {{0xF4, 0xF4}, {0x80, 0x8F}, {0x80, 0xBF}, {0x80, 0xBF}}},
};

/// How many bytes of `text`, starting at `begin`, match the sequence.
std::size_t matchingBytes(const WellFormed& sequence, std::string_view text, std::size_t begin) {
  std::size_t count = 0;
  while (count < sequence.length && begin + count < text.size()) {
    const unsigned byte = static_cast<unsigned char>(text[begin + count]);
    if (byte < sequence.bytes[count].low || byte > sequence.bytes[count].high) {
      break;
    }
    ++count;
  }
  return count;
}

}  // namespace

void appendUtf16(std::u16string& units, char32_t codePoint) {
  if (codePoint < 0x10000) {
    units += static_cast<char16_t>(codePoint);
  } else {
    units += static_cast<char16_t>(0xD800 + (codePoint - 0x10000) / 0x400);
    units += static_cast<char16_t>(0xDC00 + (codePoint - 0x10000) % 0x400);
  }
}

void appendUtf8(std::string& bytes, char32_t codePoint) {
  if (codePoint < 0x80) {
    bytes += toByte(codePoint);
  } else if (codePoint < 0x800) {
    bytes += toByte(0xC0 + codePoint / 0x40);
    bytes += toByte(0x80 + codePoint % 0x40);
  } else if (codePoint < 0x10000) {
    bytes += toByte(0xE0 + codePoint / 0x1000);
    bytes += toByte(0x80 + codePoint / 0x40 % 0x40);
    bytes += toByte(0x80 + codePoint % 0x40);
  } else {
    bytes += toByte(0xF0 + codePoint / 0x40000);
    bytes += toByte(0x80 + codePoint / 0x1000 % 0x40);
    bytes += toByte(0x80 + codePoint / 0x40 % 0x40);
    bytes += toByte(0x80 + codePoint % 0x40);
  }
}

std::u16string naiveToUtf16(std::string_view text) {
  std::u16string units;
  for (std::size_t i = 0; i < text.size();) {
    std::size_t longest = 0;
    bool whole = false;
    for (const WellFormed& sequence : kWellFormed) {
      const std::size_t count = matchingBytes(sequence, text, i);
      longest = std::max(longest, count);
      whole = whole || count == sequence.length;
    }
    if (whole) {
      constexpr unsigned kLeadBits[] = {0x7F, 0x1F, 0x0F, 0x07};
      char32_t codePoint = static_cast<unsigned char>(text[i]) & kLeadBits[longest - 1];
      for (std::size_t next = i + 1; next < i + longest; ++next) {
        codePoint = codePoint * 0x40 + static_cast<unsigned char>(text[next]) % 0x40;
      }
      appendUtf16(units, codePoint);
    } else {
      units += u'\uFFFD';
    }
    i += std::max<std::size_t>(longest, 1);
  }
  return units;
}

std::string naiveToUtf8(std::u16string_view text) {
  const auto isHigh = [](char16_t unit) { return unit >= 0xD800 && unit < 0xDC00; };
  const auto isLow = [](char16_t unit) { return unit >= 0xDC00 && unit < 0xE000; };
  std::string bytes;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (isHigh(text[i]) && i + 1 < text.size() && isLow(text[i + 1])) {
      appendUtf8(bytes, 0x10000 + 0x400 * (char32_t{text[i]} - 0xD800) + (text[i + 1] - 0xDC00U));
      ++i;
    } else {
      appendUtf8(bytes, isHigh(text[i]) || isLow(text[i]) ? 0xFFFD : text[i]);
    }
  }
  return bytes;
}

}  // namespace test_support
