#pragma once

#include <iosfwd>

#include "query/Answers.h"

namespace update_metadata_tool::query {

/// Writes all answers for people, in UTF-8: the two releases, then answer by answer.
///
/// Names are shown by toVisible(), so that no document can control a terminal.
void writeText(const Answers& answers, std::ostream& out);

}  // namespace update_metadata_tool::query
