#pragma once

#include <cstddef>
#include <iosfwd>

#include "plan/Plan.h"
#include "summary/Contents.h"

namespace update_metadata_tool {

/// Writes a plan for people, in UTF-8: the releases, the products, what is deleted and extracted
/// with its sizes, and one sentence with the sums.
///
/// \param width  the columns that lines keep to, but for names and paths: a plan shortens none
///
/// Names are shown by toVisible(), so that no document can send anything but text to a terminal.
void writeText(const Contents& contents, const Plan& plan, std::size_t width, std::ostream& out);

}  // namespace update_metadata_tool
