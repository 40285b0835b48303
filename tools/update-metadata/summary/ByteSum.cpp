#include "summary/ByteSum.h"

#include <limits>

namespace update_metadata_tool::summary {

ByteSum& ByteSum::operator+=(const ByteSum& other) {
  const std::uint64_t low = low_ + other.low_;
  high_ += other.high_ + (low < other.low_ ? 1 : 0);
  low_ = low;
  return *this;
}

ByteSum& ByteSum::operator-=(const ByteSum& other) {
  high_ -= other.high_ + (low_ < other.low_ ? 1 : 0);
  low_ -= other.low_;
  return *this;
}

std::optional<std::int64_t> ByteSum::value() const {
  constexpr std::uint64_t kLargest = std::numeric_limits<std::int64_t>::max();
  if (high_ == 0 && low_ <= kLargest) {
    return static_cast<std::int64_t>(low_);
  }
  if (high_ == -1 && low_ > kLargest) {
    // The complement, its distance from -1, fits.
    return -1 - static_cast<std::int64_t>(~low_);
  }
  return std::nullopt;
}

ByteSum takeMillionths(std::uint64_t millionths, const ByteSum& whole) {
  constexpr std::uint64_t kMillion = 1'000'000;
  constexpr unsigned kHalf = 32;
  constexpr std::uint64_t kLowerHalf = 0xFFFF'FFFF;
  // Multiplies the quotient and the remainder of a division by a million separately, so that no
  // product overflows.
  const auto high = static_cast<std::uint64_t>(whole.high_);
  const std::uint64_t upper = high % kMillion << kHalf | whole.low_ >> kHalf;
  const std::uint64_t lower = upper % kMillion << kHalf | (whole.low_ & kLowerHalf);
  ByteSum millions;
  millions.high_ = static_cast<std::int64_t>(high / kMillion);
  millions.low_ = (upper / kMillion << kHalf) + lower / kMillion;
  ByteSum share(static_cast<std::int64_t>(lower % kMillion * millionths / kMillion));
  for (std::uint64_t left = millionths; left != 0; left >>= 1U) {
    if ((left & 1U) != 0) {
      share += millions;
    }
    millions += millions;
  }
  return share;
}

}  // namespace update_metadata_tool::summary
