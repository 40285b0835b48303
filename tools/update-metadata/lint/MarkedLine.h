#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace update_metadata_tool::lint {

/// As wide as a marked line is made where nothing else limits it.
constexpr std::size_t kColumnsOfMarkedLine = 80;

/// The part of a line around a place, and what is written below it to mark that place.
struct MarkedLine {
  std::string line;
  std::string marks;  ///< blanks, then a caret, then as many tildes as there is more to mark
};

/// Shows `length` bytes, at least one, of `line` from `offset` on, so that the marks stand below
/// them on a terminal.
///
/// Characters are shown as toVisible() does, tabs as blanks. The blanks at the beginning are left
/// out, and of a long line what is far from the place, which "..." replaces. Neither text is wider
/// than `columns`, so that a terminal breaks neither. Takes no longer for a longer line.
///
/// \param line     without its line feed
/// \param offset   at most the size of the line, behind which there is a place, too
/// \param columns  from 16 on
MarkedLine markLine(std::string_view line, std::size_t offset, std::size_t length,
                    std::size_t columns = kColumnsOfMarkedLine);

}  // namespace update_metadata_tool::lint
