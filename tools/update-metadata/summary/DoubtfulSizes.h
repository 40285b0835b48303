#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "summary/Contents.h"
#include "summary/Totals.h"

namespace update_metadata_tool::summary {

/// Returns whether a size is impossible: below zero, which includes the number that means a size
/// that does not fit into 64 bits.
bool isDoubtful(std::int64_t size);

/// Returns whether one of the two sizes of a package is doubtful.
bool isDoubtful(const Package& package);

/// Numbers of packages with doubtful sizes. Totals include these packages.
struct DoubtfulSizes {
  std::size_t negative = 0;   ///< packages with a negative size that fits
  std::size_t truncated = 0;  ///< packages with a size that did not fit into 64 bits

  bool any() const { return negative + truncated != 0; }

  /// Counts one package if one of its sizes is doubtful: as truncated if either size is.
  void count(std::int64_t size, std::int64_t uncompressedBytes = 0);
};

/// Counts the packages of a selection, which has no packages with files.
DoubtfulSizes countDoubtfulSizes(const Contents& contents, const Selection& selection);

/// Precedes a doubtful size.
constexpr const char* kDoubtMark = "! ";

/// Describes the numbers for people, in one line.
///
/// \param areMarked  whether any doubtful size is shown, so that the mark must be explained
/// \pre sizes.any()
std::string describe(const DoubtfulSizes& sizes, bool areMarked = true);

}  // namespace update_metadata_tool::summary
