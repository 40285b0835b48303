#pragma once

#include "diagnosis/FindingList.h"
#include "diagnosis/SourceDocument.h"

namespace install::update_metadata_parser::diagnosis {

/// Finds repeated keys in every object, and makes `document` ignore their later values. n log n in
/// the members of an object.
void checkRepeatedKeys(SourceDocument& document, FindingList& findings);

/// The same without findings.
void ignoreRepeatedKeys(SourceDocument& document);

/// Finds strings and keys that are not text: ill-formed UTF-8 and unpaired surrogates.
void checkEncoding(const source::SourceTree& tree, FindingList& findings);

}  // namespace install::update_metadata_parser::diagnosis
