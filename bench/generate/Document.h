#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "generate/JsonWriter.h"
#include "generate/Names.h"

namespace bench::generate {

/// The counts that describe an update metadata document. Equal shapes give equal bytes.
struct DocumentShape {
  std::size_t products = 0;
  std::size_t components = 0;            ///< components described in "components"
  std::size_t packages = 0;              ///< packages to delete of each, and as many to extract
  std::size_t componentsPerProduct = 0;  ///< components named by each product, on each side
  std::size_t fileComponents = 0;        ///< components with single files to delete
  std::size_t files = 0;                 ///< files to delete in each of their packages
  std::size_t repeats = 1;               ///< how often each product's lists are repeated
  std::size_t continued = 0;  ///< of so many names of components, the last form a chain; 0: none
  std::size_t chain = 2;      ///< names in a chain, each continuing the one before: a, a_docs
  std::size_t revised = 0;    ///< one package in so many has another size than without; 0: none
  std::uint64_t seed = 1;
  std::size_t indent = 0;      ///< blanks per level; 0 for the compact form
  std::size_t pathBytes = 62;  ///< approximate length of a file's path
  NameStyle names = NameStyle::words;
};

/// Writes one valid update metadata document.
///
/// The members of every object are in random order and have unique names. About nine in ten names
/// are the same on both sides, to delete and to extract, of a component and of a product. One in
/// 200 of the components that a product names is described nowhere.
void writeDocument(const DocumentShape& shape, const TextSink& sink);

/// Returns the same as one text.
std::string makeDocument(const DocumentShape& shape);

}  // namespace bench::generate
