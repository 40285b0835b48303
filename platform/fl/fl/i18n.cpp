#include "fl/i18n.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <new>

#include "fl/block.h"

namespace fl::i18n {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

/// Texts of at most this many units are converted on the stack and copied once into a string of
/// exactly their size. Nearly every name is shorter.
constexpr std::size_t kShortText = 256;

constexpr bool isHighSurrogate(char32_t unit) {
  return unit >= 0xD800 && unit <= 0xDBFF;
}
constexpr bool isLowSurrogate(char32_t unit) {
  return unit >= 0xDC00 && unit <= 0xDFFF;
}

std::uint64_t load64(const void* bytes) {
  std::uint64_t word;
  std::memcpy(&word, bytes, sizeof word);
  return word;
}

bool isAsciiBlock(const char* in) {
  return (load64(in) & 0x8080808080808080U) == 0;
}

bool isAsciiBlock(const char16_t* in) {
  return ((load64(in) | load64(in + kBlock / 2)) & 0xFF80FF80FF80FF80U) == 0;
}

bool isAscii(char c) {
  return static_cast<unsigned char>(c) < 0x80;
}
bool isAscii(char16_t unit) {
  return unit < 0x80;
}

/// Copies ASCII characters from `in` to `out` up to `end` or the first other character, and moves
/// both pointers past them.
template <typename From, typename To>
void copyAscii(const From*& in, const From* end, To*& out) {
  while (end - in >= kBlock && isAsciiBlock(in)) {
    convertBlock(in, out);
    in += kBlock;
    out += kBlock;
  }
  while (in != end && isAscii(*in)) {
    *out++ = static_cast<To>(*in++);
  }
}

/// Reads the code point that begins with the byte 80 or above at `in`, or U+FFFD for the maximal
/// ill-formed part there, and moves `in` past it.
char32_t readUtf8(const char*& in, const char* end) {
  const auto lead = static_cast<unsigned char>(*in++);
  if (lead < 0xC2 || lead > 0xF4) {
    return kReplacement;
  }
  int trailing = 1;
  char32_t codePoint = lead & 0x1FU;
  // The second byte excludes overlong forms, surrogates and code points above U+10FFFF.
  unsigned lowest = 0x80;
  unsigned highest = 0xBF;
  if (lead >= 0xF0) {
    trailing = 3;
    codePoint = lead & 0x07U;
    lowest = lead == 0xF0 ? 0x90 : lowest;
    highest = lead == 0xF4 ? 0x8F : highest;
  } else if (lead >= 0xE0) {
    trailing = 2;
    codePoint = lead & 0x0FU;
    lowest = lead == 0xE0 ? 0xA0 : lowest;
    highest = lead == 0xED ? 0x9F : highest;
  }
  for (; trailing > 0; --trailing) {
    const unsigned byte = in != end ? static_cast<unsigned char>(*in) : 0;
    if (byte < lowest || byte > highest) {
      return kReplacement;
    }
    codePoint = codePoint << 6 | (byte & 0x3FU);
    ++in;
    lowest = 0x80;
    highest = 0xBF;
  }
  return codePoint;
}

/// Reads the code point that begins at `in`, or U+FFFD for an unpaired surrogate, and moves `in`
/// past it.
char32_t readUtf16(const char16_t*& in, const char16_t* end) {
  const char32_t unit = *in++;
  if (isHighSurrogate(unit) && in != end && isLowSurrogate(*in)) {
    return 0x10000 + ((unit & 0x3FF) << 10) + (char32_t{*in++} & 0x3FF);
  }
  return isHighSurrogate(unit) || isLowSurrogate(unit) ? kReplacement : unit;
}

/// Writes `text` as UTF-16 to `out`, at most one unit for each byte, and returns the number of
/// units.
std::size_t writeUtf16(std::string_view text, char16_t* out) {
  const char16_t* const begin = out;
  const char* in = text.data();
  const char* const end = in + text.size();
  while (in != end) {
    copyAscii(in, end, out);
    while (in != end && !isAscii(*in)) {
      const char32_t codePoint = readUtf8(in, end);
      if (codePoint < 0x10000) {
        *out++ = static_cast<char16_t>(codePoint);
      } else {
        *out++ = static_cast<char16_t>(0xD800 + ((codePoint - 0x10000) >> 10));
        *out++ = static_cast<char16_t>(0xDC00 + (codePoint & 0x3FFU));
      }
    }
  }
  return static_cast<std::size_t>(out - begin);
}

char continuation(char32_t bits) {
  return static_cast<char>(0x80U | (bits & 0x3FU));
}

/// Writes `text` as UTF-8 to `out`, at most three bytes for each unit, and returns the number of
/// bytes.
std::size_t writeUtf8(std::u16string_view text, char* out) {
  const char* const begin = out;
  const char16_t* in = text.data();
  const char16_t* const end = in + text.size();
  while (in != end) {
    copyAscii(in, end, out);
    while (in != end && !isAscii(*in)) {
      const char32_t codePoint = readUtf16(in, end);
      if (codePoint < 0x800) {
        *out++ = static_cast<char>(0xC0U | codePoint >> 6);
      } else {
        if (codePoint < 0x10000) {
          *out++ = static_cast<char>(0xE0U | codePoint >> 12);
        } else {
          *out++ = static_cast<char>(0xF0U | codePoint >> 18);
          *out++ = continuation(codePoint >> 12);
        }
        *out++ = continuation(codePoint >> 6);
      }
      *out++ = continuation(codePoint);
    }
  }
  return static_cast<std::size_t>(out - begin);
}

/// Makes a string from what `write` writes to the address that it receives, at most `limit`
/// characters; `write` returns the number of characters.
template <typename Char, typename Write>
std::basic_string<Char> makeString(std::size_t limit, Write write) {
  if (limit <= kShortText) {
    Char buffer[kShortText];
    const std::size_t size = write(buffer);
    return std::basic_string<Char>(buffer, size);
  }
  if (limit > std::basic_string<Char>().max_size()) {  // possible where pointers have 32 bits
    throw std::bad_alloc();
  }
  std::basic_string<Char> result(limit, Char());
  result.resize(write(result.data()));
  return result;
}

std::u16string utf8ToUtf16(std::string_view text) {
  return makeString<char16_t>(text.size(), [text](char16_t* out) { return writeUtf16(text, out); });
}

}  // namespace

std::u16string to_ustring(std::string_view text) {
  return utf8ToUtf16(text);
}

std::u16string utf8_to_ustring(std::string_view text) {
  return utf8ToUtf16(text);
}

std::string to_string(std::u16string_view text) {
  return makeString<char>(3 * text.size(), [text](char* out) { return writeUtf8(text, out); });
}

}  // namespace fl::i18n
