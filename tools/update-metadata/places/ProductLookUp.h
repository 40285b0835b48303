#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "install/update_metadata_parser/UpdateMetaDataHandler.h"
#include "places/Place.h"

namespace update_metadata_tool::places {

/// The product data, or, without them, names as base codes. Exceptions of the product data pass
/// through.
class ProductLookUp {
 public:
  /// \param location  of the product data, if there are any
  explicit ProductLookUp(std::optional<std::u16string> location);

  /// Opens the product data, if there are any, so that no look-up throws later.
  void open() const;

  /// The base code of a product; empty if the product data do not contain it.
  std::u16string baseCodeOf(const std::u16string& name) const;

  /// The name of the product with a base code; empty if the product data do not contain it.
  std::u16string nameOf(const std::u16string& baseCode) const;

  /// Whether the product data contain the product with this base code.
  bool isKnown(const std::u16string& baseCode) const { return !location_ || !baseCode.empty(); }

  /// A product as places show it.
  ProductOfPlace show(std::string_view name, const std::u16string& baseCode) const;

 private:
  std::optional<std::u16string> location_;
  std::shared_ptr<install::update_metadata_parser::UpdateMetaDataHandler> catalogue_;
};

}  // namespace update_metadata_tool::places
