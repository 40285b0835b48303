#pragma once

#include <string>
#include <vector>

#include "lint/FindingList.h"
#include "lint/ReferenceChecks.h"
#include "lint/SourceDocument.h"

namespace update_metadata_tool::lint {

/// Finds products of a document that are not in the product data or have the same base code there.
/// The first error in the product data is one finding, with the catalogue's text.
///
/// \param products  in the order of the model
void checkProductData(SourceDocument& document, const std::vector<ProductWork>& products,
                      const std::u16string& productData, FindingList& findings);

}  // namespace update_metadata_tool::lint
