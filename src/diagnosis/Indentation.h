#pragma once

#include <cstddef>
#include <optional>

#include "diagnosis/source/SourceTree.h"

namespace install::update_metadata_parser::diagnosis {

/// A bracket that seems to be unclosed.
struct UnclosedBracket {
  std::size_t offset;  ///< of the bracket
  std::size_t before;  ///< the start of a line that should come after the closing bracket
};

/// Finds the first bracket of a malformed text whose content, as it is read, contradicts the
/// indentation: a line of the content is not indented more than the line of the bracket, or the
/// line of its closing bracket is indented less.
///
/// Nothing if there is no such bracket, or if the indentation before it is not consistent: mixed
/// tabs and blanks, members of one object at different depths, or too few lines. Linear in the
/// text.
std::optional<UnclosedBracket> findUnclosedByIndentation(const source::SourceTree& tree);

}  // namespace install::update_metadata_parser::diagnosis
