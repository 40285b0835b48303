#pragma once

#include <cmath>
#include <cstdint>
#include <limits>
#include <type_traits>

namespace install::update_metadata_parser {

static_assert(std::is_same_v<std::int64_t, long>, "byte counts are of type long on the target");

/// Cuts a number of a document toward zero. What the result cannot hold, infinities and NaN
/// included, becomes its minimum, whatever the sign.
template <class Integer>
Integer truncated(double number) noexcept {
  // The first number above the range is a power of two, which a double holds exactly.
  constexpr int kBits = std::numeric_limits<Integer>::digits;
  const double limit = std::ldexp(1.0, kBits);
  const double whole = std::trunc(number);
  // false for NaN, which therefore joins the numbers out of range
  if (whole >= -limit && whole < limit) {
    return static_cast<Integer>(whole);
  }
  return std::numeric_limits<Integer>::min();
}

/// A size in bytes, from a document's number.
inline std::int64_t toByteCount(double number) noexcept {
  return truncated<std::int64_t>(number);
}

/// An update level as the handler takes it, from a document's number.
inline int toUpdateLevel(double number) noexcept {
  return truncated<int>(number);
}

}  // namespace install::update_metadata_parser
