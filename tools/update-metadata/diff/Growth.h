#pragma once

#include "diff/Difference.h"
#include "diff/GrowthLimit.h"

namespace update_metadata_tool::diff {

/// The growth in bytes to fetch, and its limit.
struct Growth {
  summary::ByteSum bytes;  ///< negative if there is less to fetch
  summary::ByteSum allowed;

  bool isTooLarge() const { return allowed < bytes; }
};

/// Measures the growth between two documents, exactly even beyond 64 bits.
inline Growth measureGrowth(const Sides<summary::Totals>& totals, const GrowthLimit& limit) {
  return {totals.after.bytesToFetch - totals.before.bytesToFetch,
          limit.allowedGrowth(totals.before.bytesToFetch)};
}

}  // namespace update_metadata_tool::diff
