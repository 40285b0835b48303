#pragma once

#include <iosfwd>
#include <optional>

#include "diff/Difference.h"
#include "diff/GrowthLimit.h"

namespace update_metadata_tool::diff {

/// Writes the differences between two documents as one line of JSON and a line feed, in UTF-8.
/// docs/diff.md documents the members. The numbers are those of the text; one that does not fit
/// into 64 bits is null.
///
/// \param growth  the growth if the user gave a limit
void writeJson(const Difference& difference, const std::optional<Growth>& growth,
               std::ostream& out);

}  // namespace update_metadata_tool::diff
