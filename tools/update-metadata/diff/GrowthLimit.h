#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "summary/ByteSum.h"

namespace update_metadata_tool::diff {

/// How much an update may grow: by a number of bytes, or by a share of what it was.
class GrowthLimit {
 public:
  /// Reads a limit as users write it: "1048576" for bytes, "2.5%" for a share. Neither has a sign;
  /// bytes have to fit into 64 bits; a share has up to four digits behind the point and is at most
  /// a million percent. Anything else is none.
  static std::optional<GrowthLimit> parse(std::string_view text);

  /// How many bytes `before` bytes may grow by, rounded down. A share of what is below zero is
  /// zero.
  summary::ByteSum allowedGrowth(const summary::ByteSum& before) const;

 private:
  GrowthLimit(bool isShare, std::int64_t number) : isShare_(isShare), number_(number) {}

  bool isShare_;
  std::int64_t number_;  ///< bytes, or millionths
};

}  // namespace update_metadata_tool::diff
