#pragma once

#include "lint/FindingList.h"
#include "lint/SourceDocument.h"

namespace update_metadata_tool::lint {

/// Finds members that are missing, of the wrong kind or unlisted in the top of a document and in
/// "metadata", and tells which sections there are.
Sections checkTop(SourceDocument& document, FindingList& findings);

/// Does the same in the sections that say which packages there are, and looks at their numbers,
/// names and paths.
void checkComponents(SourceDocument& document, std::size_t components, FindingList& findings);
void checkProducts(SourceDocument& document, std::size_t products, FindingList& findings);
void checkFiles(SourceDocument& document, std::size_t components, FindingList& findings);

}  // namespace update_metadata_tool::lint
