#include "support/BigInteger.h"

#include <algorithm>
#include <cstddef>

namespace test_support {
namespace {

constexpr unsigned kBits = 32;

std::uint32_t low(std::uint64_t number) {
  return static_cast<std::uint32_t>(number);
}

}  // namespace

BigInteger::BigInteger(std::uint64_t number) : limbs_{low(number), low(number >> kBits)} {
  trim();
}

BigInteger BigInteger::powerOfTen(unsigned exponent) {
  // Needed again and again; each power is computed from the previous one.
  thread_local std::vector<BigInteger> powers = {BigInteger(1)};
  while (powers.size() <= exponent) {
    powers.push_back(powers.back());
    powers.back().multiplyAndAdd(10, 0);
  }
  return powers[exponent];
}

void BigInteger::multiplyAndAdd(std::uint32_t factor, std::uint32_t summand) {
  std::uint64_t carry = summand;
  for (std::uint32_t& limb : limbs_) {
    carry += std::uint64_t{limb} * factor;
    limb = low(carry);
    carry >>= kBits;
  }
  limbs_.push_back(low(carry));
  trim();
}

void BigInteger::shiftLeft(unsigned bits) {
  multiplyAndAdd(std::uint32_t{1} << bits % kBits, 0);
  if (!isZero()) {
    limbs_.insert(limbs_.begin(), bits / kBits, 0);
  }
}

void BigInteger::add(const BigInteger& other) {
  limbs_.resize(std::max(limbs_.size(), other.limbs_.size()) + 1);
  std::uint64_t carry = 0;
  for (std::size_t i = 0; i < limbs_.size(); ++i) {
    carry += std::uint64_t{limbs_[i]} + (i < other.limbs_.size() ? other.limbs_[i] : 0);
    limbs_[i] = low(carry);
    carry >>= kBits;
  }
  trim();
}

std::uint32_t BigInteger::divide(std::uint32_t divisor) {
  std::uint64_t rest = 0;
  for (std::size_t i = limbs_.size(); i-- != 0;) {
    rest = rest << kBits | limbs_[i];
    limbs_[i] = low(rest / divisor);
    rest %= divisor;
  }
  trim();
  return low(rest);
}

BigInteger BigInteger::operator*(const BigInteger& other) const {
  BigInteger product;
  product.limbs_.resize(limbs_.size() + other.limbs_.size());
  for (std::size_t i = 0; i < limbs_.size(); ++i) {
    std::uint64_t carry = 0;
    for (std::size_t k = 0; k < other.limbs_.size(); ++k) {
      carry += product.limbs_[i + k] + std::uint64_t{limbs_[i]} * other.limbs_[k];
      product.limbs_[i + k] = low(carry);
      carry >>= kBits;
    }
    product.limbs_[i + other.limbs_.size()] = low(carry);
  }
  product.trim();
  return product;
}

int BigInteger::compare(const BigInteger& other) const {
  if (limbs_.size() != other.limbs_.size()) {
    return limbs_.size() < other.limbs_.size() ? -1 : 1;
  }
  for (std::size_t i = limbs_.size(); i-- != 0;) {
    if (limbs_[i] != other.limbs_[i]) {
      return limbs_[i] < other.limbs_[i] ? -1 : 1;
    }
  }
  return 0;
}

std::string BigInteger::digits() const {
  BigInteger rest = *this;
  std::string text;
  do {
    text += static_cast<char>('0' + rest.divide(10));
  } while (!rest.isZero());
  std::reverse(text.begin(), text.end());
  return text;
}

void BigInteger::trim() {
  while (!limbs_.empty() && limbs_.back() == 0) {
    limbs_.pop_back();
  }
}

}  // namespace test_support
