#pragma once

#include <iosfwd>

#include "show/Overview.h"
#include "summary/Contents.h"

namespace update_metadata_tool::show {

/// Writes an overview as one line of JSON and a line feed, in UTF-8. docs/show-and-plan.md
/// documents the members. The numbers are those of the text; a sum that does not fit into 64 bits
/// is null.
void writeJson(const summary::Contents& contents, const Overview& overview, std::ostream& out);

}  // namespace update_metadata_tool::show
