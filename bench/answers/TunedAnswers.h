#pragma once

#include "answers/Answers.h"
#include "answers/FlatDocument.h"

namespace bench::answers {

/// Builds the answers as fast as possible with the same containers: sorts the names once, builds
/// the key of each package once in one piece of memory, sorts what each product names, and builds
/// each container by appending at its end.
///
/// A key that does not belong at the end, because the name of its component continues another, is
/// inserted where it belongs.
///
/// \pre no two packages have one key
Answers tunedAnswers(FlatDocument document);

}  // namespace bench::answers
