#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <string_view>

namespace test_support {

/// Tells, by exact arithmetic on integers, whether `number` is the double nearest to a number in
/// JSON's form, ties to even: infinity from half a step above the largest double on, and a zero of
/// the number's sign up to half the smallest one.
///
/// \pre the exponent has at most four digits
bool isNearest(std::string_view text, double number);

/// Makes numbers in JSON's form; the same ones for the same seed.
class NumberTexts {
 public:
  explicit NumberTexts(std::uint64_t seed) : random_(seed) {}

  /// A number of 1 to 25 digits, or a few times more, anywhere in the range of doubles or a little
  /// outside, with or without sign, point and exponent.
  std::string random();

  /// A number that is hard to round: half-way between two doubles, or a hair beside that; among the
  /// subnormal ones, at both ends of the range, at powers of two and where integers stop to be
  /// exact; in up to 1,200 digits, as a plain integer, with a point at any place and an exponent
  /// that makes up for it.
  std::string hard();

 private:
  std::uint64_t below(std::uint64_t limit) { return random_() % limit; }
  std::string digits(std::uint64_t count);
  std::uint64_t hardBits();
  std::string written(const std::string& digits, int exponent);

  std::mt19937_64 random_;
};

}  // namespace test_support
