#pragma once

#include <cstddef>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "summary/Contents.h"
#include "summary/Document.h"

namespace update_metadata_tool::plan {

/// The products of a document to plan for.
struct ProductChoice {
  std::vector<std::size_t> products;  ///< indices into Contents::products, ascending, each once

  /// Indices of products that have the base code of a chosen one but are not chosen: the product
  /// data assign that code to another name, and the library's queries for the code omit them.
  std::vector<std::size_t> leftOut;
};

/// Every product.
ProductChoice chooseAllProducts(const summary::Contents& contents);

/// The products with any of `baseCodes`, selected as by the library: those whose name the product
/// data contain for the code.
///
/// Nothing if a code selects no product. Then reports on `err` which code it is and which products
/// of the document are near, or why no code selects any.
///
/// \param contents  those of `document`, which has product data, whose exceptions pass through
std::optional<ProductChoice> chooseProducts(const summary::Document& document,
                                            const summary::Contents& contents,
                                            const std::vector<std::u16string>& baseCodes,
                                            std::ostream& err);

}  // namespace update_metadata_tool::plan
