// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "foundation/core/export.h"
#include "install/datamodels/product_update/ComponentDeltaData.h"
#include "mf/zero/elements/ModelElement.h"
#include "mf/zero/fields/OwnedCollection.h"

namespace install::datamodels::product_update {

/// What an update does to one product.
class FOUNDATION_EXPORT ProductDeltaData : public mf::zero::ElementHandle<ProductDeltaData> {
 public:
  class Impl;
};

/// The fields of a ProductDeltaData. All are unset in a new element.
class FOUNDATION_EXPORT ProductDeltaData::Impl final : public mf::zero::ElementImpl {
 public:
  static const mf::zero::ElementClass kClass;  ///< describes the class to the framework

  Impl() noexcept;
  ~Impl();

  /// Sets the product's name; stored unchanged, and only once in the model however many elements
  /// have it.
  void setName(const std::u16string& name) { name_ = makeName(name); }

  /// Returns a copy of the product's name; empty while unset.
  std::u16string getName() const { return std::u16string(name_.view()); }

  /// Reads the name in place; its units are valid as long as the model.
  mf::zero::Name name() const noexcept { return name_; }

  /// The list of the components whose packages to delete belong to the product, for appending.
  mf::zero::OwnedCollection<ComponentDeltaData>& getCompsToDeleteMutable() noexcept {
    return compsToDelete_;
  }

  /// The same list, for reading.
  const mf::zero::OwnedCollection<ComponentDeltaData>& getCompsToDelete() const noexcept {
    return compsToDelete_;
  }

  /// The list of the components whose packages to extract belong to the product, for appending.
  mf::zero::OwnedCollection<ComponentDeltaData>& getCompsToExtractMutable() noexcept {
    return compsToExtract_;
  }

  /// The same list, for reading.
  const mf::zero::OwnedCollection<ComponentDeltaData>& getCompsToExtract() const noexcept {
    return compsToExtract_;
  }

 private:
  enum Property : std::uint8_t { kCompsToDelete, kCompsToExtract };

  mf::zero::Name name_;
  mf::zero::OwnedCollection<ComponentDeltaData> compsToDelete_;
  mf::zero::OwnedCollection<ComponentDeltaData> compsToExtract_;
};

}  // namespace install::datamodels::product_update
