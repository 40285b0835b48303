#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <string_view>

namespace test_support {

/// Whether `number` is the double nearest to a number in JSON's form, ties to even, by exact
/// integer arithmetic. That is infinity from half a step above the largest double, and a zero with
/// the number's sign up to half the smallest double.
///
/// \pre the exponent has at most four digits
bool isNearest(std::string_view text, double number);

/// Makes numbers in JSON's form; the same seed gives the same numbers.
class NumberTexts {
 public:
  explicit NumberTexts(std::uint64_t seed) : random_(seed) {}

  /// Returns a number of usually 1 to 25 digits, sometimes a few times more. It lies anywhere in
  /// the range of doubles or slightly outside, with or without sign, point and exponent.
  std::string random();

  /// Returns a number that is hard to round: halfway between two doubles or very close to that. It
  /// lies among the subnormal numbers, at either end of the range, near a power of two, or where
  /// integers cease to be exact. It has up to 1,200 digits, as a plain integer or with a point at
  /// any place and an exponent that compensates for it.
  std::string hard();

 private:
  std::uint64_t below(std::uint64_t limit) { return random_() % limit; }
  std::string digits(std::uint64_t count);
  std::uint64_t hardBits();
  std::string written(const std::string& digits, int exponent);

  std::mt19937_64 random_;
};

}  // namespace test_support
