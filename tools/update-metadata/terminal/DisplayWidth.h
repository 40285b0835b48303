#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace update_metadata_tool::terminal {

/// The number of columns that a terminal needs for a character that is no control character.
///
/// Combining marks, joiners and variation selectors take no column, what Unicode calls wide (East
/// Asian characters and most pictographs) takes two, all others one. This is what terminals mostly
/// do: the marks of rare scripts are taken for characters, and parts of a joined pictograph are
/// counted one by one.
std::size_t displayWidth(char32_t character);

/// The same for a whole text, UTF-8 without control characters.
std::size_t displayWidth(std::string_view text);

/// A character and the marks behind it, which are never parted.
struct Cluster {
  std::string_view text;
  std::size_t width;
};

/// All of `text`, in its order. It has to outlive them.
std::vector<Cluster> clustersOf(std::string_view text);

/// Cuts `text` to at most `width` columns by putting an ellipsis in place of its middle. A mark
/// stays with its character. A text that fits comes back as it is.
std::string cutInTheMiddle(std::string_view text, std::size_t width);

/// Adds blanks behind, or in front of, `text` up to `width` columns.
std::string padRight(std::string_view text, std::size_t width);
std::string padLeft(std::string_view text, std::size_t width);

}  // namespace update_metadata_tool::terminal
