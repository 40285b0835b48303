#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace update_metadata_tool::terminal {

/// The number of columns that a terminal needs for a character other than a control character.
///
/// Combining marks, joiners and variation selectors take no column, characters that Unicode calls
/// wide (East Asian ones and most pictographs) take two, all others one. As in most terminals,
/// marks of rare scripts count as characters, and the parts of a joined pictograph count one by
/// one.
std::size_t displayWidth(char32_t character);

/// The same for a text in UTF-8 without control characters.
std::size_t displayWidth(std::string_view text);

/// A character and the marks that follow it, which are never separated.
struct Cluster {
  std::string_view text;
  std::size_t width;
};

/// Splits `text` into clusters, which refer to it.
std::vector<Cluster> clustersOf(std::string_view text);

/// Shortens `text` to at most `width` columns by replacing its middle with an ellipsis. Marks stay
/// with their characters. A text that fits is returned unchanged.
std::string cutInTheMiddle(std::string_view text, std::size_t width);

/// Adds blanks after, or before, `text` up to `width` columns.
std::string padRight(std::string_view text, std::size_t width);
std::string padLeft(std::string_view text, std::size_t width);

}  // namespace update_metadata_tool::terminal
