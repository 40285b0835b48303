#include "summary/ByteSum.h"

#include <limits>

namespace update_metadata_tool {

ByteSum& ByteSum::operator+=(const ByteSum& other) {
  low_ += other.low_;
  high_ += other.high_ + (low_ < other.low_ ? 1 : 0);
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
    // Its complement is what it lies below -1, and fits.
    return -1 - static_cast<std::int64_t>(~low_);
  }
  return std::nullopt;
}

}  // namespace update_metadata_tool
