#pragma once

#include <iosfwd>

#include "query/Answers.h"

namespace update_metadata_tool::query {

/// Writes all answers for people: the two releases, then answer by answer, in UTF-8.
///
/// `question` is the one that was answered. Names are shown by toVisible(), so that no document
/// can send anything but text to a terminal.
void writeText(const Question& question, const Answers& answers, std::ostream& out);

}  // namespace update_metadata_tool::query
