#pragma once

#include <cstddef>
#include <string>

#include "source/SourceTree.h"

namespace update_metadata_tool::fmt {

/// How the values of a document are spread over lines.
struct Layout {
  bool isCompact = false;  ///< no white space at all, everything on one line
  std::size_t indent = 2;  ///< blanks that each level is indented by; of no use if compact
};

/// Containers down to this level have a line for each element; what lies deeper stands on one line,
/// so that a text grows by a bounded factor however deep it is. A document has five levels.
constexpr std::size_t kDeepestSpreadLevel = 16;

/// Writes a text again with other white space between its keys, values and punctuation.
///
/// Keys and values are copied as they are written, in their order, with their repeats. Without line
/// feed at the end, which the library would refuse. The result depends on keys, values and layout
/// alone, so writing it again changes nothing.
///
/// \pre `tree` is whole; what stands around its value is left out
///
/// Linear in the size of the text; the depth of nesting costs no stack.
std::string layOut(const source::SourceTree& tree, const Layout& layout);

}  // namespace update_metadata_tool::fmt
