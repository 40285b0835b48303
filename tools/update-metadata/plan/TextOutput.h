#pragma once

#include <iosfwd>
#include <optional>

#include "plan/Plan.h"
#include "summary/Contents.h"

namespace update_metadata_tool::plan {

/// Writes a plan for people, in UTF-8: the releases, the products, the packages and files to delete
/// and to extract with their sizes, and one sentence with the totals.
///
/// Lines fit into terminal::outputColumns(); names and paths wrap and are never cut. They are shown
/// by toVisible(), so that no document can control a terminal.
///
/// \param counts  the results if the files to delete were searched for
void writeText(const summary::Contents& contents, const Plan& plan,
               const std::optional<InstalledCounts>& counts, std::ostream& out);

}  // namespace update_metadata_tool::plan
