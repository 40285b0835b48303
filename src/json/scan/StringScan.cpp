#include "json/scan/StringScan.h"

#include <cstdint>
#include <cstring>

namespace foundation::json {

const char* findQuoteOrBackslashPlain(const char* position, const char* end) noexcept {
  constexpr std::uint64_t kOnes = 0x0101010101010101u;
  constexpr std::uint64_t kHighBits = kOnes * 0x80;
  // Sets the high bit of every zero byte, and possibly of bytes after one.
  const auto zeroBytes = [](std::uint64_t word) { return (word - kOnes) & ~word & kHighBits; };
  for (; end - position >= 8; position += 8) {
    std::uint64_t word;
    std::memcpy(&word, position, sizeof word);
    if ((zeroBytes(word ^ (kOnes * '"')) | zeroBytes(word ^ (kOnes * '\\'))) != 0) {
      break;
    }
  }
  while (position != end && *position != '"' && *position != '\\') {
    ++position;
  }
  return position;
}

}  // namespace foundation::json
