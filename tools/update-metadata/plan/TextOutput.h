#pragma once

#include <cstddef>
#include <iosfwd>
#include <optional>

#include "plan/Plan.h"
#include "summary/Contents.h"

namespace update_metadata_tool::plan {

/// Writes a plan for people, in UTF-8: the releases, the products, what is deleted and extracted
/// with its sizes, and one sentence with the sums.
///
/// \param counts  what was found if the files to delete were looked for
/// \param width   the columns that lines keep to: names and paths go on in further lines, a plan
///                shortens none
///
/// Names are shown by toVisible(), so that no document can send anything but text to a terminal.
void writeText(const summary::Contents& contents, const Plan& plan,
               const std::optional<InstalledCounts>& counts, std::size_t width, std::ostream& out);

}  // namespace update_metadata_tool::plan
