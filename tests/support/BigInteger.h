#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace test_support {

/// A natural number of any size, for exact arithmetic in tests. Plain and slow.
class BigInteger {
 public:
  BigInteger() = default;
  explicit BigInteger(std::uint64_t number);

  static BigInteger powerOfTen(unsigned exponent);

  bool isZero() const { return limbs_.empty(); }

  /// Multiplies by `factor` and adds `summand`.
  void multiplyAndAdd(std::uint32_t factor, std::uint32_t summand);
  void shiftLeft(unsigned bits);
  void add(const BigInteger& other);

  /// Divides by a single limb and returns the remainder.
  std::uint32_t divide(std::uint32_t divisor);

  BigInteger operator*(const BigInteger& other) const;

  /// Negative, zero or positive as this number is less than, equal to or greater than the other.
  int compare(const BigInteger& other) const;

  /// The decimal digits; "0" for zero.
  std::string digits() const;

 private:
  void trim();

  std::vector<std::uint32_t> limbs_;  // lowest first; the last one is not zero
};

}  // namespace test_support
