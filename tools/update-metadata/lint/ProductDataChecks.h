#pragma once

#include <string>
#include <vector>

#include "lint/FindingList.h"
#include "lint/ReferenceChecks.h"
#include "lint/SourceDocument.h"

namespace update_metadata_tool::lint {

/// Finds products, in the order of the model, of a document that the product data do not know, or
/// know by one base code. The first fault of the product data themselves is one finding, in the
/// catalogue's own words.
void checkProductData(SourceDocument& document, const std::vector<ProductWork>& products,
                      const std::u16string& productData, FindingList& findings);

}  // namespace update_metadata_tool::lint
