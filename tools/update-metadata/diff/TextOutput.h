#pragma once

#include <cstddef>
#include <iosfwd>
#include <optional>

#include "diff/Difference.h"
#include "diff/Growth.h"

namespace update_metadata_tool::diff {

/// Writes for people in what two documents differ, in UTF-8; one line if they say the same.
///
/// A plus sign marks what was added, a minus sign what was removed, a star what changed. Doubtful
/// sizes of packages are marked, and notes count those of both documents. Names are shown by
/// toVisible(), so that no document can send anything but text to a terminal.
///
/// \param growth  what became of the limit, if the user gave one; told in the last line
/// \param width   the columns that lines keep to: names go on in further lines, none is shortened
void writeText(const Difference& difference, const std::optional<Growth>& growth, std::size_t width,
               std::ostream& out);

}  // namespace update_metadata_tool::diff
