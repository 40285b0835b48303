#pragma once

#include <cstddef>
#include <vector>

#include "lint/FindingList.h"
#include "lint/SourceDocument.h"

namespace update_metadata_tool {

/// What a product has packages for.
struct ProductWork {
  std::size_t key;  ///< the product's
  bool hasPackagesToDelete;
  bool hasPackagesToExtract;
};

/// Finds what does not fit together between the sections of a whole document: components that no
/// product names or that are not described, repeats, packages with one key, products without work.
///
/// n log n in the names of the document; for keys that coincide, linear besides in the packages of
/// each component whose name continues another's behind an underscore.
///
/// Returns the products in the order in which the library takes them into the model; without those
/// whose members are not as they must be.
std::vector<ProductWork> checkReferences(SourceDocument& document, const Sections& sections,
                                         FindingList& findings);

}  // namespace update_metadata_tool
