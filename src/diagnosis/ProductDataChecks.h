#pragma once

#include <string>
#include <vector>

#include "diagnosis/FindingList.h"
#include "diagnosis/ReferenceChecks.h"
#include "diagnosis/SourceDocument.h"

namespace install::update_metadata_parser::diagnosis {

/// Finds products of a document that are not in the product data or have the same base code there.
/// The first error in the product data is one finding, with the catalogue's text.
///
/// \pre the products are in the order of the model
void checkProductData(SourceDocument& document, const std::vector<ProductWork>& products,
                      const std::u16string& productData, FindingList& findings);

}  // namespace install::update_metadata_parser::diagnosis
