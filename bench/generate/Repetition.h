#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

namespace bench::generate {

/// A number padded to nine digits, so that texts sort as the numbers do.
inline std::string nineDigits(std::size_t number) {
  std::string digits = std::to_string(number);
  digits.insert(0, 9 - std::min<std::size_t>(9, digits.size()), '0');
  return digits;
}

/// Maps each `index` below 999,999,937 to a different number, in scrambled order.
inline std::size_t shuffled(std::size_t index) {
  return index * 618'033'989 % 999'999'937;
}

/// Calls `part` with 0 to `count` - 1 and joins the results with commas.
template <class Part>
std::string joined(std::size_t count, const Part& part) {
  std::string text;
  for (std::size_t i = 0; i < count; ++i) {
    text.append(i == 0 ? "" : ",").append(part(i));
  }
  return text;
}

/// Returns `piece` repeated `count` times.
inline std::string repeated(std::string_view piece, std::size_t count) {
  std::string text;
  text.reserve(piece.size() * count);
  for (; count != 0; --count) {
    text += piece;
  }
  return text;
}

}  // namespace bench::generate
