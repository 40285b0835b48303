#include "json/scan/Conversions.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <limits>
#include <system_error>

#include "json/scan/ClassicStrtod.h"

namespace foundation::json::detail {
namespace {

#ifdef __cpp_lib_to_chars

// For the magnitude of a number that no double can represent: whether it is too large rather than
// too small, by the power of ten of its first nonzero digit.
bool isTooLarge(std::string_view number) noexcept {
  // Far beyond the length of any text, and ten times as much still does not overflow.
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

#endif

}  // namespace

std::string get_utf8_string(const char* begin, const char* end) {
  return {begin, end};
}

#ifdef __cpp_lib_to_chars

double string_to_double(std::string_view number) {
  double result = 0;
  const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), result);
  if (error == std::errc::result_out_of_range) {
    // from_chars then leaves its output unchanged and does not report which end of the range was
    // exceeded.
    result = isTooLarge(number) ? std::numeric_limits<double>::infinity() : 0.0;
    return number.front() == '-' ? -result : result;
  }
  return result;
}

#else

double string_to_double(std::string_view number) {
  return classicStrtod(number);
}

#endif

std::string u16_to_u8(std::u16string_view units) {
  std::string text(kUtf8BytesOfUnit * units.size(), '\0');
  text.resize(static_cast<std::size_t>(writeUtf8(units, text.data()) - text.data()));
  return text;
}

}  // namespace foundation::json::detail
