#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace update_metadata_tool::lint {

/// The width of a marked line where nothing else limits it.
constexpr std::size_t kColumnsOfMarkedLine = 80;

/// The part of a line around a place, and the marks to print below it.
struct MarkedLine {
  std::string line;
  std::string marks;  ///< blanks, a caret, and a tilde for each further marked column
};

/// Shows `length` bytes of `line` at `offset`, at least one, with marks below them.
///
/// Characters are shown as toVisible() does, tabs as blanks. Leading blanks are left out, and "..."
/// replaces what is far from the place in a long line. Neither text is wider than `columns`, so a
/// terminal does not wrap them. The time does not depend on the length of the line.
///
/// \param line     without its line feed
/// \param offset   at most the size of the line, where there is one more place
/// \param columns  at least 16
MarkedLine markLine(std::string_view line, std::size_t offset, std::size_t length,
                    std::size_t columns = kColumnsOfMarkedLine);

}  // namespace update_metadata_tool::lint
