#pragma once

#include "diagnosis/FindingList.h"
#include "diagnosis/SourceDocument.h"

namespace install::update_metadata_parser::diagnosis {

/// Finds members that are missing, of the wrong kind or unlisted at the top of a document and in
/// "metadata", and returns the sections.
Sections checkTop(SourceDocument& document, FindingList& findings);

/// The same in "components", whose numbers and names are also checked.
void checkComponents(SourceDocument& document, std::size_t components, FindingList& findings);

/// The same in "products".
void checkProducts(SourceDocument& document, std::size_t products, FindingList& findings);

/// The same in "componentsWithFilesDeleted", whose paths are also checked.
void checkFiles(SourceDocument& document, std::size_t components, FindingList& findings);

}  // namespace install::update_metadata_parser::diagnosis
