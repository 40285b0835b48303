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
  std::u16string name;  ///< as in the table
};

/// One product, as described by one row of the table.
struct PRODUCT_DATA_PROVIDER_EXPORT Product {
  std::u16string baseCode;                                       ///< as used by installers
  std::u16string name;                                           ///< as used by documents
  std::uint32_t number = 0;                                      ///< as in the table
  std::shared_ptr<const ControllingProduct> controllingProduct;  ///< empty if there is none
};

/// The installer's product catalogue: maps product names to base codes and base codes to names.
///
/// It is read once, at construction, from a plain text table in UTF-8: a header line, then one line
/// for each product with its base code, name, number and controlling product, separated by tabs.
/// The header is skipped and may contain anything. The number is written in decimal digits and has
/// 32 bits; the controlling product may be empty. A line ends in LF or CR LF; the last line may
/// lack a line ending and may be empty.
///
/// If a base code, name or number is repeated, look-ups by it return the first row that has it. Two
/// names with one base code are therefore both known, and the base code yields the first.
///
/// The records are shared and never change. Const operations may be called from several threads at
/// once.
class PRODUCT_DATA_PROVIDER_EXPORT ProductDataProvider {
 public:
  /// Reads the catalogue from `productDataLocation`: a folder that contains products.tsv, or that
  /// file itself under any name. The catalogue is empty if the location, or the file in the folder,
  /// does not exist, or if a folder above the location may not be searched.
  ///
  /// \throws std::runtime_error  (exactly) the file exists but cannot be opened or read, or the
  ///                             folder may not be searched: the text names the file or folder and
  ///                             the reason; or a line is empty, does not have exactly four fields
  ///                             or has a bad number: the text names the file, the line (from 1)
  ///                             and the reason
  ///
  /// O(n log n) comparisons for n rows, whatever they contain.
  explicit ProductDataProvider(std::u16string productDataLocation);

  ProductDataProvider(const ProductDataProvider&) = delete;
  ProductDataProvider& operator=(const ProductDataProvider&) = delete;
  virtual ~ProductDataProvider();

  /// Returns the base code of the product with that name; empty if there is none.
  virtual std::u16string getProductBaseCode(const std::u16string& productName) const;

  /// Returns the name of the product with that base code; empty if there is none.
  virtual std::u16string getProductName(const std::u16string& productBaseCode) const;

  /// Returns the product with that number; an empty pointer if there is none.
  std::shared_ptr<const Product> findByNumber(std::uint32_t number) const;

  /// Returns the controlling product with that name; an empty pointer if no product has it.
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
