#pragma once

#include "lint/Document.h"
#include "lint/FindingList.h"

namespace update_metadata_tool {

/// Finds keys that are repeated in one object, wherever it stands, and has `document` lose their
/// later values. n log n in the members of an object.
void checkRepeatedKeys(Document& document, FindingList& findings);

/// Finds strings and keys that are not text: ill-formed UTF-8 and surrogates without a partner.
void checkEncoding(const SourceTree& tree, FindingList& findings);

}  // namespace update_metadata_tool
