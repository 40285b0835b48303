#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace install::update_metadata_parser::diagnosis::source {

/// A place in a text; only line feeds end a line.
struct Position {
  std::size_t line;    ///< from 1
  std::size_t column;  ///< in bytes, from 1
};

/// Finds the lines of a text, which must outlive the index.
class LineIndex {
 public:
  /// Linear in the size of the text.
  explicit LineIndex(std::string_view text);

  /// The place of the byte at `offset`. The end of the text is also a place; an offset beyond it
  /// counts as the end. Takes logarithmic time.
  Position positionOf(std::size_t offset) const;

  /// The text of a line without its line feed; `line` counts from 1.
  std::string_view lineText(std::size_t line) const;

 private:
  std::string_view text_;
  std::vector<std::size_t> lineBegins_;  ///< offset of the first byte of each line
};

}  // namespace install::update_metadata_parser::diagnosis::source
