#pragma once

#include <cstddef>
#include <vector>

#include "lint/FindingList.h"
#include "lint/SourceDocument.h"

namespace update_metadata_tool::lint {

/// What a product has packages for.
struct ProductWork {
  std::size_t key;  ///< the product's
  bool hasPackagesToDelete;
  bool hasPackagesToExtract;
};

/// Finds what does not fit together between the sections of a whole document: components that no
/// product names or that are not described, repeats, packages with one key, products without work.
///
/// Memory is linear in the text; n log n comparisons for n names of the document and underscores in
/// them together.
///
/// Returns the products in the order in which the library takes them into the model; without those
/// whose members are not as they must be.
std::vector<ProductWork> checkReferences(SourceDocument& document, const Sections& sections,
                                         FindingList& findings);

}  // namespace update_metadata_tool::lint
