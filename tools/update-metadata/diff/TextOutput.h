#pragma once

#include <iosfwd>

#include "diff/Difference.h"

namespace update_metadata_tool {

/// Writes for people in what two documents differ, in UTF-8; one line if they say the same.
///
/// A plus sign marks what was added, a minus sign what was removed, a star what changed. Names are
/// shown by toVisible(), so that no document can send anything but text to a terminal.
void writeText(const Difference& difference, std::ostream& out);

}  // namespace update_metadata_tool
