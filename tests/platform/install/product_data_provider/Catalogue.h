#pragma once

#include <cstddef>
#include <exception>
#include <memory>
#include <stdexcept>
#include <string>
#include <typeinfo>

#include "install/product_data_provider/ProductDataProvider.h"
#include "support/TemporaryFolder.h"

namespace test_support {

using install::product_data_provider::Product;
using install::product_data_provider::ProductDataProvider;

inline const std::string kHeader = "base code\tname\tnumber\tcontrolling product\n";

/// A catalogue made from the text of one table.
class Catalogue {
 public:
  explicit Catalogue(const std::string& table)
      : provider_(folder_.writeFile("products.tsv", table)) {}

  const ProductDataProvider* operator->() const { return &provider_; }

 private:
  TemporaryFolder folder_;
  ProductDataProvider provider_;
};

/// The text of the exception that the constructor throws, with "@" for the path of the folder. Says
/// so if nothing is thrown or if the type is not exactly std::runtime_error.
inline std::string failure(const TemporaryFolder& folder, const std::u16string& location) {
  try {
    ProductDataProvider provider(location);
    return "no exception";
  } catch (const std::exception& error) {
    std::string text = error.what();
    const std::size_t path = text.find(folder.nativePath());
    if (path != std::string::npos) {
      text.replace(path, folder.nativePath().size(), "@");
    }
    return (typeid(error) == typeid(std::runtime_error) ? "" : "wrong type: ") + text;
  }
}

/// A record as a row of the table.
inline std::u16string row(const std::shared_ptr<const Product>& product) {
  if (!product) {
    return u"none";
  }
  const std::string number = std::to_string(product->number);
  return product->baseCode + u"|" + product->name + u"|" +
         std::u16string(number.begin(), number.end()) + u"|" +
         (product->controllingProduct ? product->controllingProduct->name : u"none");
}

}  // namespace test_support
