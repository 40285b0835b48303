#include "foundation/json/detail.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <limits>
#include <system_error>

namespace foundation::json::detail {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

constexpr bool isHighSurrogate(char16_t unit) noexcept {
  return (unit & 0xFC00) == 0xD800;
}
constexpr bool isLowSurrogate(char16_t unit) noexcept {
  return (unit & 0xFC00) == 0xDC00;
}

void appendUtf8(std::string& text, char32_t point) {
  const auto append = [&](char32_t byte) { text.push_back(static_cast<char>(byte)); };
  if (point < 0x80) {
    append(point);
  } else if (point < 0x800) {
    append(0xC0 | (point >> 6));
    append(0x80 | (point & 0x3F));
  } else if (point < 0x10000) {
    append(0xE0 | (point >> 12));
    append(0x80 | ((point >> 6) & 0x3F));
    append(0x80 | (point & 0x3F));
  } else {
    append(0xF0 | (point >> 18));
    append(0x80 | ((point >> 12) & 0x3F));
    append(0x80 | ((point >> 6) & 0x3F));
    append(0x80 | (point & 0x3F));
  }
}

// Tells whether the magnitude of a number that no double can hold is too large, not too small: by
// the power of ten of its first digit that is not zero.
bool isTooLarge(std::string_view number) noexcept {
  // Far beyond every length of a text, and ten times as much is still a number.
  constexpr std::ptrdiff_t kSaturated = std::numeric_limits<std::ptrdiff_t>::max() / 16;
  const std::size_t marker = std::min(number.find_first_of("eE"), number.size());
  const std::string_view mantissa = number.substr(0, marker);
  const std::size_t point = std::min(mantissa.find('.'), mantissa.size());
  const std::size_t first = mantissa.find_first_of("123456789");
  std::ptrdiff_t power = static_cast<std::ptrdiff_t>(point) - static_cast<std::ptrdiff_t>(first);
  if (marker != number.size()) {
    std::string_view digits = number.substr(marker + 1);
    const bool negative = digits.front() == '-';
    if (negative || digits.front() == '+') {
      digits.remove_prefix(1);
    }
    std::ptrdiff_t exponent = 0;
    for (const char digit : digits) {
      exponent = std::min(kSaturated, exponent * 10 + (digit - '0'));
    }
    power += negative ? -exponent : exponent;
  }
  return power > 0;
}

}  // namespace

std::string get_utf8_string(const char* begin, const char* end) {
  return {begin, end};
}

double string_to_double(std::string_view number) noexcept {
  double result = 0;
  const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), result);
  if (error == std::errc::result_out_of_range) {
    // from_chars leaves its output alone then and does not tell which end of the range was left.
    result = isTooLarge(number) ? std::numeric_limits<double>::infinity() : 0.0;
    return number.front() == '-' ? -result : result;
  }
  return result;
}

std::string u16_to_u8(std::u16string_view units) {
  std::string text;
  for (std::size_t i = 0; i != units.size(); ++i) {
    const char16_t unit = units[i];
    if (isHighSurrogate(unit) && i + 1 != units.size() && isLowSurrogate(units[i + 1])) {
      ++i;
      appendUtf8(text, 0x10000 + ((char32_t{unit} & 0x3FF) << 10) + (units[i] & 0x3FF));
    } else if (isHighSurrogate(unit) || isLowSurrogate(unit)) {
      appendUtf8(text, kReplacement);
    } else {
      appendUtf8(text, unit);
    }
  }
  return text;
}

}  // namespace foundation::json::detail
