#pragma once

#include <cstdint>
#include <optional>

#include "diff/Difference.h"
#include "diff/GrowthLimit.h"

namespace update_metadata_tool {

/// By how much the bytes to fetch grow, beside what is allowed.
struct Growth {
  ByteSum bytes;             ///< below zero if there is less to fetch
  std::int64_t allowed = 0;  ///< bytes

  bool isTooLarge() const { return ByteSum(allowed) < bytes; }
};

/// Holds a limit against two documents. Nothing if it is a share of more bytes than 64 bits hold;
/// of a sum below zero, however far, a share is zero.
inline std::optional<Growth> measureGrowth(const Sides<Totals>& totals, const GrowthLimit& limit) {
  const std::optional<std::int64_t> before = totals.before.bytesToFetch.value();
  if (limit.isShare() && !before && !totals.before.bytesToFetch.isNegative()) {
    return std::nullopt;
  }
  return Growth{totals.after.bytesToFetch - totals.before.bytesToFetch,
                limit.allowedGrowth(before.value_or(0))};
}

}  // namespace update_metadata_tool
