#pragma once

#include <cstdint>
#include <optional>

namespace update_metadata_tool::summary {

/// An exact sum of byte counts.
///
/// Any 64-bit numbers can be added, negative ones as well, in any order: nothing wraps and nothing
/// is lost on the way. Only when the sum is told must it fit into 64 bits. Exact for up to 2^60
/// summands.
class ByteSum {
 public:
  constexpr ByteSum() = default;
  constexpr explicit ByteSum(std::int64_t bytes)
      : high_(bytes < 0 ? -1 : 0), low_(static_cast<std::uint64_t>(bytes)) {}

  ByteSum& operator+=(const ByteSum& other);
  ByteSum& operator-=(const ByteSum& other);

  /// The sum in bytes; nothing if it does not fit into 64 bits.
  std::optional<std::int64_t> value() const;

  /// Tells whether the sum is below zero, also when it does not fit.
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

  // The sum is 2^64 times the one plus the other.
  std::int64_t high_ = 0;
  std::uint64_t low_ = 0;
};

/// So many millionths of `whole`, rounded down.
///
/// \pre `whole` is not below zero, and `millionths` is 10^10, ten thousand times the whole, at
/// most.
///      Exact for the sum of up to 2^48 numbers.
ByteSum takeMillionths(std::uint64_t millionths, const ByteSum& whole);

inline ByteSum operator+(ByteSum left, const ByteSum& right) {
  return left += right;
}

inline ByteSum operator-(ByteSum left, const ByteSum& right) {
  return left -= right;
}

}  // namespace update_metadata_tool::summary
