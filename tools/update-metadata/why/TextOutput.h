#pragma once

#include <cstddef>
#include <iosfwd>

#include "why/Search.h"

namespace update_metadata_tool::why {

/// Writes what one document says for people, in lines of at most `width` columns: one line that
/// answers the question, the releases, and for each place which answers contain it and why the
/// others do not.
void writeText(const Question& question, const FoundDocument& found, std::size_t width,
               std::ostream& out);

}  // namespace update_metadata_tool::why
