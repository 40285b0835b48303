#pragma once

#include "lint/FindingList.h"
#include "lint/SourceDocument.h"

namespace update_metadata_tool::lint {

/// Finds repeated keys in every object, and makes `document` ignore their later values. n log n in
/// the members of an object.
void checkRepeatedKeys(SourceDocument& document, FindingList& findings);

/// Finds strings and keys that are not text: ill-formed UTF-8 and unpaired surrogates.
void checkEncoding(const source::SourceTree& tree, FindingList& findings);

}  // namespace update_metadata_tool::lint
