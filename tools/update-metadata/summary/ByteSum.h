#pragma once

#include <cstdint>
#include <optional>

namespace update_metadata_tool::summary {

/// An exact sum of byte counts.
///
/// 64-bit numbers of either sign can be added in any order without overflow; only value() requires
/// the sum to fit into 64 bits. Exact for up to 2^60 summands.
class ByteSum {
 public:
  constexpr ByteSum() = default;
  constexpr explicit ByteSum(std::int64_t bytes)
      : high_(bytes < 0 ? -1 : 0), low_(static_cast<std::uint64_t>(bytes)) {}

  ByteSum& operator+=(const ByteSum& other);
  ByteSum& operator-=(const ByteSum& other);

  /// The sum in bytes; nothing if it does not fit into 64 bits.
  std::optional<std::int64_t> value() const;

  /// Returns whether the sum is below zero, even if it does not fit into 64 bits.
  bool isNegative() const { return high_ < 0; }

  friend bool operator==(const ByteSum& left, const ByteSum& right) {
    return left.high_ == right.high_ && left.low_ == right.low_;
  }
  friend bool operator!=(const ByteSum& left, const ByteSum& right) { return !(left == right); }
  friend bool operator<(const ByteSum& left, const ByteSum& right) {
    return left.high_ != right.high_ ? left.high_ < right.high_ : left.low_ < right.low_;
  }

 private:
  friend ByteSum takeMillionths(std::uint64_t millionths, const ByteSum& whole);

  // The sum is 2^64 * high_ + low_.
  std::int64_t high_ = 0;
  std::uint64_t low_ = 0;
};

/// `millionths` millionths of `whole`, rounded down. Exact for a sum of up to 2^48 numbers.
///
/// \pre `whole` is not below zero, and `millionths` is at most 10^10, ten thousand times the whole
ByteSum takeMillionths(std::uint64_t millionths, const ByteSum& whole);

inline ByteSum operator+(ByteSum left, const ByteSum& right) {
  return left += right;
}

inline ByteSum operator-(ByteSum left, const ByteSum& right) {
  return left -= right;
}

}  // namespace update_metadata_tool::summary
