#pragma once

#include "answers/Answers.h"
#include "answers/FlatDocument.h"

namespace bench::answers {

/// Builds the answers in the obvious way, as a good engineer would in an hour: sorts the names
/// once, builds each key once and inserts it, and lets the container find its place.
Answers plainAnswers(FlatDocument document);

}  // namespace bench::answers
