#include "summary/UnknownProducts.h"

#include <algorithm>
#include <cstddef>
#include <ostream>

#include "output/Text.h"

namespace update_metadata_tool::summary {

void noteUnknownProducts(const std::optional<std::string>& location, const std::string& file,
                         const Contents& contents, std::ostream& err) {
  const bool isAnyKnown =
      std::any_of(contents.products.begin(), contents.products.end(),
                  [](const Product& product) { return product.baseCode.has_value(); });
  const std::size_t products = contents.products.size();
  if (!location || products == 0 || isAnyKnown) {
    return;
  }
  err << "update-metadata: note: the product data '" << output::toVisible(*location) << "' ";
  if (products == 1) {
    err << "do not know the only product";
  } else {
    err << "know none of the " << products << " products";
  }
  err << " of '" << output::toVisible(file) << "'; check --product-data\n";
}

}  // namespace update_metadata_tool::summary
