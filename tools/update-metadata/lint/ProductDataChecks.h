#pragma once

#include <string>

#include "lint/FindingList.h"
#include "lint/SourceDocument.h"

namespace update_metadata_tool {

/// Finds products of a document that the product data do not know, or know by one base code. The
/// first fault of the product data themselves is one finding, in the catalogue's own words.
void checkProductData(SourceDocument& document, std::size_t products,
                      const std::u16string& productData, FindingList& findings);

}  // namespace update_metadata_tool
