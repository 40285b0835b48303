#pragma once

#include <iosfwd>

#include "query/Answers.h"

namespace update_metadata_tool::query {

/// Writes all answers as one line of JSON and a line feed, in UTF-8.
///
/// Members have a fixed order; names and keys are in the order of the answers. The two lists of
/// packages are objects with a member for each base code, or arrays if the question named one.
void writeJson(const Answers& answers, std::ostream& out);

}  // namespace update_metadata_tool::query
