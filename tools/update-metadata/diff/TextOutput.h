#pragma once

#include <iosfwd>
#include <optional>

#include "diff/Difference.h"
#include "diff/GrowthLimit.h"

namespace update_metadata_tool::diff {

/// Writes the differences between two documents for people, in UTF-8; one line if there are none.
///
/// A plus sign marks additions, a minus sign removals, a star changes. Doubtful sizes of packages
/// are marked, and notes count those of both documents. Lines fit into terminal::outputColumns();
/// names wrap and are never cut. They are shown by toVisible(), so that no document can control a
/// terminal.
///
/// \param growth  the growth if the user gave a limit; written in the last line
void writeText(const Difference& difference, const std::optional<Growth>& growth,
               std::ostream& out);

}  // namespace update_metadata_tool::diff
