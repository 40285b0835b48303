#pragma once

#include <cstddef>
#include <string>

#include "diagnosis/source/SourceTree.h"

namespace update_metadata_tool::fmt {

namespace source = install::update_metadata_parser::diagnosis::source;

/// How the values of a document are arranged in lines.
struct Layout {
  bool isCompact = false;  ///< no white space, everything on one line
  std::size_t indent = 2;  ///< number of blanks for each level; ignored if compact
};

/// Containers down to this level have a line for each element; deeper content is on one line, so a
/// text grows by a bounded factor at any depth. A document has five levels.
constexpr std::size_t kDeepestSpreadLevel = 16;

/// Writes a text with different white space between its keys, values and punctuation.
///
/// Keys and values are copied byte by byte, in their order, including repeated keys. There is no
/// line feed at the end, which the library would reject. The result depends only on keys, values
/// and layout, so reformatting it changes nothing.
///
/// \pre `tree` is whole; text around its value is left out
///
/// Linear in the size of the text; the depth of nesting costs no stack.
std::string layOut(const source::SourceTree& tree, const Layout& layout);

}  // namespace update_metadata_tool::fmt
