#pragma once

#include <cstddef>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "summary/Contents.h"
#include "summary/Document.h"

namespace update_metadata_tool::plan {

/// Which products of a document are planned for.
struct ProductChoice {
  std::vector<std::size_t> products;  ///< numbers of Contents::products, ascending, each once

  /// Numbers of products with the base code of a chosen one that are not chosen themselves: the
  /// product data give that code to another name, and the library's queries for the code leave
  /// them out.
  std::vector<std::size_t> leftOut;
};

/// Every product.
ProductChoice chooseAllProducts(const summary::Contents& contents);

/// The products with any of `baseCodes`, as the library chooses them: those whose name the product
/// data give for the code.
///
/// If the document has no product for some code, there is no choice; `err` is told which code that
/// is and which products of the document come close to it, or why no code chooses any.
///
/// \param contents  those of `document`, which has product data; their exceptions pass through
std::optional<ProductChoice> chooseProducts(const summary::Document& document,
                                            const summary::Contents& contents,
                                            const std::vector<std::u16string>& baseCodes,
                                            std::ostream& err);

}  // namespace update_metadata_tool::plan
