#pragma once

#include <cstddef>
#include <iosfwd>

#include "show/Overview.h"
#include "summary/Contents.h"

namespace update_metadata_tool::show {

/// Writes an overview for people, in UTF-8: the releases, a table of the largest products with a
/// last row for all of them, the largest components and packages, and notes on what the numbers
/// leave open.
///
/// \param width  the columns that lines keep to; names that have no room in a table are cut
///
/// Names are shown by toVisible(), so that no document can send anything but text to a terminal.
void writeText(const summary::Contents& contents, const Overview& overview, std::size_t width,
               std::ostream& out);

}  // namespace update_metadata_tool::show
