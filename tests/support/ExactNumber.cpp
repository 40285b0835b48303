#include "support/ExactNumber.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "support/BigInteger.h"

namespace test_support {
namespace {

constexpr int kMantissaBits = 52;
constexpr std::uint64_t kInfinityBits = std::uint64_t{0x7FF} << kMantissaBits;

// A magnitude: factor * 2^exponent.
struct Binary {
  std::uint64_t factor;
  int exponent;
};

// A magnitude: digits * 10^exponent.
struct Decimal {
  std::string digits;
  int exponent;
};

// The value that the bits of a nonnegative double represent. The bits of infinity represent the
// step above the largest double.
Binary binaryOf(std::uint64_t bits) {
  const std::uint64_t mantissa = bits & ((std::uint64_t{1} << kMantissaBits) - 1);
  const int exponent = static_cast<int>(bits >> kMantissaBits);
  return exponent == 0 ? Binary{mantissa, -1074}
                       : Binary{mantissa | std::uint64_t{1} << kMantissaBits, exponent - 1075};
}

// The number halfway between a double and the next larger one. Their exponents differ by at most
// one; the smaller exponent serves both.
Binary halfwayAbove(std::uint64_t bits) {
  const Binary lower = binaryOf(bits);
  return {2 * lower.factor + 1, lower.exponent - 1};
}

Decimal decimalOf(std::string_view text) {
  text.remove_prefix(text.front() == '-' ? 1 : 0);
  const std::size_t marker = std::min(text.find_first_of("eE"), text.size());
  Decimal decimal{std::string(text.substr(0, marker)), 0};
  if (marker != text.size()) {
    decimal.exponent = std::atoi(std::string(text.substr(marker + 1)).c_str());
  }
  const std::size_t point = decimal.digits.find('.');
  if (point != std::string::npos) {
    decimal.exponent -= static_cast<int>(decimal.digits.size() - point - 1);
    decimal.digits.erase(point, 1);
  }
  return decimal;
}

BigInteger integerOf(const std::string& digits) {
  BigInteger integer;
  for (const char digit : digits) {
    integer.multiplyAndAdd(10, static_cast<std::uint32_t>(digit - '0'));
  }
  return integer;
}

BigInteger timesPowerOfTwo(BigInteger integer, int exponent) {
  integer.shiftLeft(static_cast<unsigned>(std::max(exponent, 0)));
  return integer;
}

BigInteger timesPowerOfTen(const BigInteger& integer, int exponent) {
  return exponent > 0 ? integer * BigInteger::powerOfTen(static_cast<unsigned>(exponent)) : integer;
}

// Multiplies each side by the divisor of the other.
int compare(const BigInteger& digits, int powerOfTen, const Binary& binary) {
  const BigInteger left = timesPowerOfTwo(timesPowerOfTen(digits, powerOfTen), -binary.exponent);
  const BigInteger right =
      timesPowerOfTen(timesPowerOfTwo(BigInteger(binary.factor), binary.exponent), -powerOfTen);
  return left.compare(right);
}

// The exact decimal form of a binary magnitude.
Decimal exactly(const Binary& binary) {
  BigInteger integer = timesPowerOfTwo(BigInteger(binary.factor), binary.exponent);
  // Halving is multiplying by five tenths.
  for (int i = binary.exponent; i < 0; ++i) {
    integer.multiplyAndAdd(5, 0);
  }
  return {integer.digits(), std::min(binary.exponent, 0)};
}

// The bits of a double whose upper neighbor is unusual, for instance farther away.
std::uint64_t hardEdge(std::uint64_t choice) {
  constexpr std::uint64_t kEdges[] = {0,
                                      1,
                                      2,
                                      (std::uint64_t{1} << kMantissaBits) - 1,
                                      std::uint64_t{1} << kMantissaBits,
                                      kInfinityBits - 1,
                                      kInfinityBits - 2,
                                      std::uint64_t{0x3FF} << kMantissaBits};
  return kEdges[choice % (sizeof kEdges / sizeof *kEdges)];
}

}  // namespace

bool isNearest(std::string_view text, double number) {
  if (std::signbit(number) != (text.front() == '-') || std::isnan(number)) {
    return false;
  }
  std::uint64_t bits = 0;
  const double magnitude = std::fabs(number);
  std::memcpy(&bits, &magnitude, sizeof bits);
  const Decimal decimal = decimalOf(text);
  const BigInteger digits = integerOf(decimal.digits);
  const bool winsTies = bits % 2 == 0;
  if (bits != 0) {
    const int order = compare(digits, decimal.exponent, halfwayAbove(bits - 1));
    if (order < 0 || (order == 0 && !winsTies)) {
      return false;
    }
  }
  if (bits == kInfinityBits) {
    return true;
  }
  const int order = compare(digits, decimal.exponent, halfwayAbove(bits));
  return order < 0 || (order == 0 && winsTies);
}

std::string NumberTexts::digits(std::uint64_t count) {
  std::string text;
  for (; count != 0; --count) {
    text += static_cast<char>('0' + below(10));
  }
  return text;
}

std::string NumberTexts::random() {
  std::string text = below(2) == 0 ? "-" : "";
  text += digits(1 + below(below(16) == 0 ? 100 : 25));
  if (below(2) == 0) {
    text += "." + digits(1 + below(below(16) == 0 ? 100 : 25));
  }
  if (below(4) != 0) {
    text += below(2) == 0 ? "e" : "E";
    text += std::to_string(static_cast<int>(below(660)) - 345);
  }
  return text;
}

std::uint64_t NumberTexts::hardBits() {
  switch (below(6)) {
    case 0:  // subnormal
      return below(std::uint64_t{1} << kMantissaBits);
    case 1:  // around a power of two
      return (below(0x7FE) << kMantissaBits) + below(3);
    case 2:  // just below a power of two
      return ((1 + below(0x7FE)) << kMantissaBits) - 1 - below(3);
    case 3:  // integers that are no longer exact: 2^53 to 2^70
      return ((0x3FF + 53 + below(17)) << kMantissaBits) + below(std::uint64_t{1} << kMantissaBits);
    case 4:
      return hardEdge(below(64));
    default:
      return below(kInfinityBits);
  }
}

std::string NumberTexts::written(const std::string& digits, int exponent) {
  if (exponent == 0 && below(2) == 0) {
    return digits;
  }
  const std::size_t point = below(digits.size());
  if (point == 0) {
    return digits + "e" + std::to_string(exponent);
  }
  return digits.substr(0, point) + "." + digits.substr(point) + (below(2) == 0 ? "E" : "e") +
         std::to_string(exponent + static_cast<int>(digits.size() - point));
}

std::string NumberTexts::hard() {
  Decimal decimal = exactly(halfwayAbove(hardBits()));
  switch (below(5)) {
    case 0:  // slightly above
      for (std::uint64_t zeros = below(300); zeros != 0; --zeros) {
        decimal.digits += '0';
        --decimal.exponent;
      }
      decimal.digits += '1';
      --decimal.exponent;
      break;
    case 1:  // slightly below
      if (decimal.digits.back() == '0') {
        break;
      }
      decimal.digits.back() = static_cast<char>(decimal.digits.back() - 1);
      for (std::uint64_t nines = below(300); nines != 0; --nines) {
        decimal.digits += '9';
        --decimal.exponent;
      }
      break;
    case 2: {  // cut off
      const std::size_t kept = 1 + below(decimal.digits.size());
      decimal.exponent += static_cast<int>(decimal.digits.size() - kept);
      decimal.digits.resize(kept);
      break;
    }
    default:
      break;
  }
  return (below(2) == 0 ? "-" : "") + written(decimal.digits, decimal.exponent);
}

}  // namespace test_support
