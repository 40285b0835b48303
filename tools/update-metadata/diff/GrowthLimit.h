#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "summary/ByteSum.h"

namespace update_metadata_tool::diff {

/// The growth in bytes to fetch, and its limit.
struct Growth {
  summary::ByteSum bytes;  ///< negative if there is less to fetch
  summary::ByteSum allowed;

  bool isTooLarge() const { return allowed < bytes; }
};

/// A limit of growth: a number of bytes, or a percentage of the old size.
class GrowthLimit {
 public:
  /// Parses a limit: "1048576" for bytes, "2.5%" for a percentage. Neither has a sign. Bytes must
  /// fit into 64 bits; a percentage has up to four decimals and is at most a million percent.
  /// Returns nothing for any other text.
  static std::optional<GrowthLimit> parse(std::string_view text);

  /// Measures the growth from `before` to `after` bytes, exactly even beyond 64 bits. A percentage
  /// is rounded down to a byte; that of a negative number is zero.
  Growth measure(const summary::ByteSum& before, const summary::ByteSum& after) const;

 private:
  GrowthLimit(bool isShare, std::int64_t number) : isShare_(isShare), number_(number) {}

  bool isShare_;
  std::int64_t number_;  ///< bytes, or millionths
};

}  // namespace update_metadata_tool::diff
