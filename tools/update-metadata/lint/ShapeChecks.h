#pragma once

#include "lint/FindingList.h"
#include "lint/SourceDocument.h"

namespace update_metadata_tool::lint {

/// Finds members that are missing, of the wrong kind or unlisted at the top of a document and in
/// "metadata", and returns the sections.
Sections checkTop(SourceDocument& document, FindingList& findings);

/// The same in the other sections, whose numbers, names and paths are also checked.
void checkComponents(SourceDocument& document, std::size_t components, FindingList& findings);
void checkProducts(SourceDocument& document, std::size_t products, FindingList& findings);
void checkFiles(SourceDocument& document, std::size_t components, FindingList& findings);

}  // namespace update_metadata_tool::lint
