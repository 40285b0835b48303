#pragma once

#include <cstddef>
#include <optional>

#include "source/SourceTree.h"

namespace update_metadata_tool::lint {

/// A bracket that seems not to be closed.
struct UnclosedBracket {
  std::size_t offset;  ///< of the bracket
  std::size_t before;  ///< what begins a line here should come after the bracket is closed
};

/// Finds the first bracket of a text with a fault whose content, as it is read, does not agree with
/// the indentation of the lines: something in it begins a line no deeper than the bracket's own
/// line, or its closing bracket begins a line that is less deep.
///
/// Nothing if there is none, or if the indentation up to there is not consistent: tabs and blanks,
/// members of one object at different depths, or too few lines to judge. Linear in the text.
std::optional<UnclosedBracket> findUnclosedByIndentation(const source::SourceTree& tree);

}  // namespace update_metadata_tool::lint
