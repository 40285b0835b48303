#pragma once

#include <iosfwd>

#include "show/Overview.h"
#include "summary/Contents.h"

namespace update_metadata_tool::show {

/// Writes an overview for people, in UTF-8: the releases, a table of the largest products with a
/// row for the total, the largest components and packages, and notes on the numbers.
///
/// Lines fit into terminal::outputColumns(); names that have no room in a table are cut. They are
/// shown by toVisible(), so that no document can control a terminal.
void writeText(const summary::Contents& contents, const Overview& overview, std::ostream& out);

}  // namespace update_metadata_tool::show
