#include "install/product_data_provider/ProductDataProvider.h"

#include <cstddef>
#include <stdexcept>

namespace install::product_data_provider {

ProductDataProvider::ProductDataProvider(std::u16string productDataLocation) {
  const std::size_t sign = productDataLocation.find(u'=');
  if (sign == std::u16string::npos) {
    throw std::runtime_error("a product without a name");
  }
  baseCode_ = productDataLocation.substr(0, sign);
  name_ = productDataLocation.substr(sign + 1);
}

ProductDataProvider::~ProductDataProvider() = default;

std::u16string ProductDataProvider::getProductBaseCode(const std::u16string& productName) const {
  return productName == name_ ? baseCode_ : std::u16string();
}

std::u16string ProductDataProvider::getProductName(const std::u16string& productBaseCode) const {
  return productBaseCode == baseCode_ ? name_ : std::u16string();
}

}  // namespace install::product_data_provider
