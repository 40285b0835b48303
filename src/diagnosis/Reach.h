#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "diagnosis/FindingList.h"
#include "diagnosis/SourceDocument.h"

namespace install::update_metadata_parser::diagnosis {

/// Reports a component, by its key, that no product uses.
void reportUnused(const SourceDocument& document, std::size_t component, FindingList& findings);

/// Reports packages that are ignored because products list their component, which is given by its
/// key, only on the other side. `packages` is the object with the packages, `side` "delete" or
/// "extract".
void reportUnreachable(const SourceDocument& document, std::size_t component, std::size_t packages,
                       const std::string& side, FindingList& findings);

/// Reports a product that deletes a component that only has packages to extract. `element` is the
/// component's name in the product's list.
void reportNothingToDelete(const SourceDocument& document, std::size_t element,
                           std::string_view product, FindingList& findings);

/// Reports a component with files to delete that is not described while a similar one is, by its
/// key in the section of files.
void reportSimilar(const SourceDocument& document, std::size_t component, std::string_view similar,
                   FindingList& findings);

}  // namespace install::update_metadata_parser::diagnosis
