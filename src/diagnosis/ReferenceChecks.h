#pragma once

#include <cstddef>
#include <vector>

#include "diagnosis/FindingList.h"
#include "diagnosis/SourceDocument.h"

namespace install::update_metadata_parser::diagnosis {

/// What a product has packages for.
struct ProductWork {
  std::size_t key;            ///< the product's
  bool hasPackagesToDelete;   ///< whether any component to delete has packages
  bool hasPackagesToExtract;  ///< whether any component to extract has packages
};

/// Checks the references between the sections of a complete document: components that no product
/// uses or that are not described, duplicates, packages with the same key, products without
/// components.
///
/// Memory is linear in the text; n log n comparisons, where n is the number of names in the
/// document and of underscores in them.
///
/// Returns the products in the order in which the library adds them to the model, without those
/// that lack a list of components.
std::vector<ProductWork> checkReferences(SourceDocument& document, const Sections& sections,
                                         FindingList& findings);

}  // namespace install::update_metadata_parser::diagnosis
