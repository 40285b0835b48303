#pragma once

#include <string>

namespace install::product_data_provider {

/// A catalogue of one product, given by the location itself: its base code, an equals sign and its
/// name. Visible, so that users of the library can create their own.
class __attribute__((visibility("default"))) ProductDataProvider {
 public:
  explicit ProductDataProvider(std::u16string productDataLocation);
  ProductDataProvider(const ProductDataProvider&) = delete;
  ProductDataProvider& operator=(const ProductDataProvider&) = delete;
  virtual ~ProductDataProvider();

  /// Returns the base code of the product with that name; empty if there is none.
  virtual std::u16string getProductBaseCode(const std::u16string& productName) const;

  /// Returns the name of the product with that base code; empty if there is none.
  virtual std::u16string getProductName(const std::u16string& productBaseCode) const;

 private:
  std::u16string baseCode_;
  std::u16string name_;
};

}  // namespace install::product_data_provider
