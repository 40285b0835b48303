#pragma once

#include "diff/Difference.h"
#include "diff/GrowthLimit.h"

namespace update_metadata_tool {

/// By how much the bytes to fetch grow, beside what is allowed.
struct Growth {
  ByteSum bytes;  ///< below zero if there is less to fetch
  ByteSum allowed;

  bool isTooLarge() const { return allowed < bytes; }
};

/// Holds a limit against two documents, exactly, however much they have to fetch.
inline Growth measureGrowth(const Sides<Totals>& totals, const GrowthLimit& limit) {
  return {totals.after.bytesToFetch - totals.before.bytesToFetch,
          limit.allowedGrowth(totals.before.bytesToFetch)};
}

}  // namespace update_metadata_tool
