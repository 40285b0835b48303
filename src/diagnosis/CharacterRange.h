#pragma once

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace install::update_metadata_parser::diagnosis {

/// Characters from the first to the last.
struct CharacterRange {
  char32_t first;  ///< the first of them
  char32_t last;   ///< the last of them
};

/// Returns whether a character is in one of the ranges. Logarithmic time.
///
/// \pre the ranges are in ascending order
template <std::size_t size>
bool isIn(const CharacterRange (&ranges)[size], char32_t character) {
  const CharacterRange* const range =
      std::partition_point(std::begin(ranges), std::end(ranges),
                           [&](const CharacterRange& before) { return before.last < character; });
  return range != std::end(ranges) && character >= range->first;
}

}  // namespace install::update_metadata_parser::diagnosis
