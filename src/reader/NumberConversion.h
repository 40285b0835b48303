#pragma once

#include <cstdint>
#include <limits>
#include <type_traits>

namespace install::update_metadata_parser {

static_assert(sizeof(long) < sizeof(std::int64_t) || std::is_same_v<std::int64_t, long>,
              "byte counts are of type long where it has 64 bits");

/// Truncates a number of a document toward zero. A number that the result cannot represent, such as
/// an infinity or NaN, becomes the minimum, whatever its sign.
template <class Integer>
Integer truncated(double number) noexcept {
  // The first number above the range is a power of two, which a double holds exactly.
  constexpr double kLimit = -static_cast<double>(std::numeric_limits<Integer>::min());
  // Numbers between the minimum and the integer below it are truncated to the minimum, and so are
  // smaller ones, so it does not matter whether a double distinguishes the two bounds. Comparisons
  // with NaN are false.
  if (number > -kLimit - 1 && number < kLimit) {
    return static_cast<Integer>(number);
  }
  return std::numeric_limits<Integer>::min();
}

/// A size in bytes, from a document's number.
inline std::int64_t toByteCount(double number) noexcept {
  return truncated<std::int64_t>(number);
}

/// An update level in the form that the handler accepts, from a document's number. The handler
/// narrows it further, to eight bits: toStoredUpdateLevel() in handler/ReleaseFields.cpp.
inline int toIntUpdateLevel(double number) noexcept {
  return truncated<int>(number);
}

}  // namespace install::update_metadata_parser
