#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "summary/Contents.h"
#include "summary/Totals.h"

namespace update_metadata_tool::summary {

/// Tells whether a size is none that a package can have: below zero, or the number that stands for
/// one that does not fit into 64 bits.
bool isDoubtful(std::int64_t size);

/// Tells whether one of the two sizes of a package is doubtful.
bool isDoubtful(const Package& package);

/// How many packages have such sizes. Nothing is left out of any sum for it.
struct DoubtfulSizes {
  std::size_t negative = 0;   ///< packages with a negative size that fits
  std::size_t truncated = 0;  ///< packages with a size that did not fit into 64 bits

  bool any() const { return negative + truncated != 0; }

  /// Counts one package, if a size of it is doubtful: as truncated if that holds for one of them.
  void count(std::int64_t size, std::int64_t uncompressedBytes = 0);
};

/// Counts them among the packages of a selection, to which packages with files do not belong.
DoubtfulSizes countDoubtfulSizes(const Contents& contents, const Selection& selection);

/// The mark in front of a doubtful size.
constexpr const char* kDoubtMark = "! ";

/// Says how many packages have such sizes, for people, in one line.
///
/// \param areMarked  whether one of them is shown, so that the mark has to be explained
/// \pre sizes.any()
std::string describe(const DoubtfulSizes& sizes, bool areMarked = true);

}  // namespace update_metadata_tool::summary
