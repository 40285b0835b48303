// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>

#include "install/product_data_provider/Export.h"

namespace install::product_data_provider {

/// A product that controls others.
struct PRODUCT_DATA_PROVIDER_EXPORT ControllingProduct {
  std::u16string name;  ///< as the table has it
};

/// One product, as one row of the table tells it.
struct PRODUCT_DATA_PROVIDER_EXPORT Product {
  std::u16string baseCode;                                       ///< as installers know it
  std::u16string name;                                           ///< as documents know it
  std::uint32_t number = 0;                                      ///< as the table has it
  std::shared_ptr<const ControllingProduct> controllingProduct;  ///< empty if there is none
};

/// The installer's product catalogue: which base code a product name has, and the other way round.
///
/// It is read once, when it is made, from a plain text table: UTF-8, a header line, then one line
/// for each product with its base code, name, number and controlling product, separated by tabs.
/// The header is skipped and may say anything. The number is written in decimal digits and has 32
/// bits; the controlling product may be empty. A line may end in CR LF as well as in LF, the last
/// one in neither, and the last line may be empty.
///
/// A base code, name or number may be repeated: the first row that has it answers the look-up by
/// it. Two names on one base code are therefore both known, and the base code gives the first.
///
/// The records are shared and never change. Const operations may be called from several threads
/// at once.
class PRODUCT_DATA_PROVIDER_EXPORT ProductDataProvider {
 public:
  /// Reads the catalogue from `productDataLocation`: a folder that holds products.tsv, or that file
  /// itself under any name. If the location, or the file in the folder, does not exist, the
  /// catalogue is empty; so it is if a folder above the location may not be searched.
  ///
  /// \throws std::runtime_error  (exactly) the file exists but cannot be opened or read, or the
  ///                             folder may not be searched: the text names the file or folder and
  ///                             the reason; or a line is empty, has another number of fields
  ///                             than four or has a bad number: the text names the file, the line
  ///                             (from 1) and the reason
  ///
  /// O(n log n) comparisons for n rows, whatever they hold.
  explicit ProductDataProvider(std::u16string productDataLocation);

  ProductDataProvider(const ProductDataProvider&) = delete;
  ProductDataProvider& operator=(const ProductDataProvider&) = delete;
  virtual ~ProductDataProvider();

  /// Gives the base code of the product with that name; empty if there is none.
  virtual std::u16string getProductBaseCode(const std::u16string& productName) const;

  /// Gives the name of the product with that base code; empty if there is none.
  virtual std::u16string getProductName(const std::u16string& productBaseCode) const;

  /// Gives the product with that number; an empty pointer if there is none.
  std::shared_ptr<const Product> findByNumber(std::uint32_t number) const;

  /// Gives the controlling product with that name; an empty pointer if no product has it.
  std::shared_ptr<const ControllingProduct> findControllingProduct(
      const std::u16string& name) const;

 private:
  // Ordered, because the table is not trusted: no choice of names or numbers makes a look-up slow.
  template <class Key, class Record>
  using Records = std::map<Key, std::shared_ptr<const Record>>;

  std::u16string location_;
  Records<std::u16string, Product> productsByBaseCode_;
  Records<std::u16string, Product> productsByName_;
  Records<std::uint32_t, Product> productsByNumber_;
  Records<std::u16string, ControllingProduct> controllingProductsByName_;
};

}  // namespace install::product_data_provider
