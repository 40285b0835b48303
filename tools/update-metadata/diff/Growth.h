#pragma once

#include "diff/Difference.h"
#include "diff/GrowthLimit.h"

namespace update_metadata_tool::diff {

/// By how much the bytes to fetch grow, beside what is allowed.
struct Growth {
  summary::ByteSum bytes;  ///< below zero if there is less to fetch
  summary::ByteSum allowed;

  bool isTooLarge() const { return allowed < bytes; }
};

/// Holds a limit against two documents, exactly, however much they have to fetch.
inline Growth measureGrowth(const Sides<summary::Totals>& totals, const GrowthLimit& limit) {
  return {totals.after.bytesToFetch - totals.before.bytesToFetch,
          limit.allowedGrowth(totals.before.bytesToFetch)};
}

}  // namespace update_metadata_tool::diff
