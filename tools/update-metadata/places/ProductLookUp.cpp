#include "places/ProductLookUp.h"

#include <utility>

#include "output/Text.h"

namespace update_metadata_tool::places {

using install::update_metadata_parser::UpdateMetaDataHandler;

ProductLookUp::ProductLookUp(std::optional<std::u16string> location)
    : location_(std::move(location)), catalogue_(std::make_shared<UpdateMetaDataHandler>()) {}

void ProductLookUp::open() const {
  if (location_) {
    catalogue_->initializeProductDataProvider(*location_);
  }
}

std::u16string ProductLookUp::baseCodeOf(const std::u16string& name) const {
  return location_ ? catalogue_->getProductBaseCode(name, *location_) : name;
}

std::u16string ProductLookUp::nameOf(const std::u16string& baseCode) const {
  return location_ ? catalogue_->getProductName(baseCode, *location_) : baseCode;
}

ProductOfPlace ProductLookUp::show(std::string_view name, const std::u16string& baseCode) const {
  return {name,
          location_ && !baseCode.empty() ? std::optional(output::toUtf8(baseCode)) : std::nullopt};
}

}  // namespace update_metadata_tool::places
