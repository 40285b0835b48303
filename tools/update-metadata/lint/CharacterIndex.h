#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace update_metadata_tool::lint {

/// Counts the characters of a UTF-8 text, which must stay where it is.
///
/// Bytes that continue a character do not count. So every offset has a count even in a text that is
/// not UTF-8, and counts never decrease with the offset.
class CharacterIndex {
 public:
  /// Linear in the size of the text.
  explicit CharacterIndex(std::string_view text);

  /// How many characters begin before `offset`, which is at most the size of the text. Takes
  /// constant time.
  std::size_t countBefore(std::size_t offset) const;

 private:
  std::string_view text_;
  std::vector<std::size_t> countsBeforeBlocks_;
};

}  // namespace update_metadata_tool::lint
