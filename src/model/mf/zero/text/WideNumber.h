#pragma once

#include <cstdint>

namespace mf::zero {

/// A number of 128 bits that products of 64-bit numbers are added to, for processors without such
/// numbers. It wraps around.
struct PlainWideNumber {
  std::uint64_t low = 0;   ///< the low half
  std::uint64_t high = 0;  ///< the high half

  /// Adds the product of two numbers.
  void addProduct(std::uint64_t left, std::uint64_t right) noexcept {
    constexpr std::uint64_t kLowHalf = 0xFFFFFFFFu;
    const std::uint64_t leftLow = left & kLowHalf;
    const std::uint64_t leftHigh = left >> 32;
    const std::uint64_t rightLow = right & kLowHalf;
    const std::uint64_t rightHigh = right >> 32;
    // The largest sum is that of two halves and a product of halves, which fits into 64 bits.
    const std::uint64_t first = leftLow * rightLow;
    const std::uint64_t second = leftHigh * rightLow + (first >> 32);
    const std::uint64_t third = leftLow * rightHigh + (second & kLowHalf);
    const std::uint64_t productLow = third << 32 | (first & kLowHalf);
    low += productLow;
    high += leftHigh * rightHigh + (second >> 32) + (third >> 32) + (low < productLow ? 1 : 0);
  }
};

#ifdef __SIZEOF_INT128__

/// The same for processors that have such numbers.
class WideNumber {
 public:
  /// Adds the product of two numbers.
  void addProduct(std::uint64_t left, std::uint64_t right) noexcept {
    number_ += Number{left} * right;
  }

  /// Both halves.
  PlainWideNumber halves() const noexcept {
    return {static_cast<std::uint64_t>(number_), static_cast<std::uint64_t>(number_ >> 64)};
  }

 private:
  __extension__ using Number = unsigned __int128;

  Number number_ = 0;
};

#else

/// The same where the plain form is the only one.
class WideNumber {
 public:
  /// Adds the product of two numbers.
  void addProduct(std::uint64_t left, std::uint64_t right) noexcept {
    number_.addProduct(left, right);
  }

  /// Both halves.
  PlainWideNumber halves() const noexcept { return number_; }

 private:
  PlainWideNumber number_;
};

#endif

}  // namespace mf::zero
