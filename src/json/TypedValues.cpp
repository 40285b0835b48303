#include "json/TypedValues.h"

#include <algorithm>
#include <array>
#include <limits>

namespace foundation::json {
namespace {

constexpr std::array<std::string_view, 8> kTypeNames = {"int64",  "int32",  "int16",  "int8",
                                                        "uint64", "uint32", "uint16", "uint8"};

// The value of some digits, at most `limit`.
std::uint64_t saturated(std::string_view digits, std::uint64_t limit) noexcept {
  std::uint64_t value = 0;
  for (const char byte : digits) {
    const auto digit = static_cast<std::uint64_t>(byte - '0');
    if (value > (limit - digit) / 10) {
      return limit;
    }
    value = value * 10 + digit;
  }
  return value;
}

}  // namespace

std::string_view knownTypeName(std::string_view name) noexcept {
  const auto known = std::find(kTypeNames.begin(), kTypeNames.end(), name);
  return known == kTypeNames.end() ? std::string_view() : *known;
}

bool isSignedType(std::string_view name) noexcept {
  return name.substr(0, 1) == "i";
}

std::int64_t toSaturatedInt64(std::string_view digits, bool negative) noexcept {
  constexpr std::int64_t kMin = std::numeric_limits<std::int64_t>::min();
  constexpr auto kMax = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
  if (!negative) {
    return static_cast<std::int64_t>(saturated(digits, kMax));
  }
  const std::uint64_t magnitude = saturated(digits, kMax + 1);
  return magnitude > kMax ? kMin : -static_cast<std::int64_t>(magnitude);
}

std::uint64_t toSaturatedUint64(std::string_view digits, bool negative) noexcept {
  return negative ? 0 : saturated(digits, std::numeric_limits<std::uint64_t>::max());
}

ParseResult readInteger(const char*& position, const char* end, std::string_view& digits,
                        bool& negative) noexcept {
  using fl::i18n::lcctype::isdigit_ascii;
  negative = *position == '-';
  if (negative && ++position == end) {
    return kEndOfText;
  }
  const char* const begin = position;
  if (*position == '0') {
    ++position;
  } else {
    while (position != end && isdigit_ascii(*position)) {
      ++position;
    }
    if (position == begin) {
      return kNoInteger;
    }
  }
  digits = {begin, static_cast<std::size_t>(position - begin)};
  // Characters that may not directly follow the digits. After white space they are only wrong
  // separators.
  constexpr std::string_view kForbidden = ".eE\"{";
  if (position != end && kForbidden.find(*position) != std::string_view::npos) {
    return kNoInteger;
  }
  return kSuccess;
}

}  // namespace foundation::json
