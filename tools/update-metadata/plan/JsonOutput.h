#pragma once

#include <iosfwd>
#include <optional>

#include "plan/Plan.h"
#include "summary/Contents.h"

namespace update_metadata_tool::plan {

/// Writes a plan as one line of JSON and a line feed, in UTF-8. docs/show-and-plan.md documents the
/// members. The numbers are those of the text; a sum that does not fit into 64 bits is null.
///
/// \param counts  the results if the files to delete were searched for
void writeJson(const summary::Contents& contents, const Plan& plan,
               const std::optional<InstalledCounts>& counts, std::ostream& out);

}  // namespace update_metadata_tool::plan
