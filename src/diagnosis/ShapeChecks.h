#pragma once

#include "diagnosis/FindingList.h"
#include "diagnosis/SourceDocument.h"

namespace install::update_metadata_parser::diagnosis {

/// Finds members that are missing, of the wrong kind or unlisted at the top of a document and in
/// "metadata", and returns the sections.
Sections checkTop(SourceDocument& document, FindingList& findings);

/// The same in the other sections, whose numbers, names and paths are also checked.
void checkComponents(SourceDocument& document, std::size_t components, FindingList& findings);
void checkProducts(SourceDocument& document, std::size_t products, FindingList& findings);
void checkFiles(SourceDocument& document, std::size_t components, FindingList& findings);

}  // namespace install::update_metadata_parser::diagnosis
