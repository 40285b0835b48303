// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "foundation/core/export.h"
#include "install/datamodels/product_update/PkgDeltaData.h"
#include "mf/zero/elements/ModelElement.h"
#include "mf/zero/fields/OwnedCollection.h"

namespace install::datamodels::product_update {

/// What an update does to one component of a product.
class FOUNDATION_EXPORT ComponentDeltaData : public mf::zero::ElementHandle<ComponentDeltaData> {
 public:
  class Impl;
};

/// The fields of a ComponentDeltaData. All are unset in a new element.
class FOUNDATION_EXPORT ComponentDeltaData::Impl final : public mf::zero::ElementImpl {
 public:
  static const mf::zero::ElementClass kClass;  ///< describes the class to the framework

  /// The numbers of the lists.
  enum Property : std::uint8_t { kPkgsToDelete, kPkgsToExtract };

  Impl() noexcept;

  /// Makes an element from the row of a component.
  FOUNDATION_HIDDEN Impl(const mf::zero::RowList& rows, std::size_t index) noexcept;
  ~Impl();

  /// Sets the component's name; stored unchanged, and only once in the model however many elements
  /// have it.
  void setName(const std::u16string& name) { name_ = makeName(name); }

  /// Returns a copy of the component's name; empty while unset.
  std::u16string getName() const { return std::u16string(name_.view()); }

  /// Reads the name in place; its units are valid as long as the model.
  mf::zero::Name name() const noexcept { return name_; }

  /// The list of the packages to delete, for appending.
  mf::zero::OwnedCollection<PkgDeltaData>& getPkgsToDeleteMutable() noexcept {
    return pkgsToDelete_;
  }

  /// The same list, for reading.
  const mf::zero::OwnedCollection<PkgDeltaData>& getPkgsToDelete() const noexcept {
    return pkgsToDelete_;
  }

  /// The list of the packages to extract, for appending.
  mf::zero::OwnedCollection<PkgDeltaData>& getPkgsToExtractMutable() noexcept {
    return pkgsToExtract_;
  }

  /// The same list, for reading.
  const mf::zero::OwnedCollection<PkgDeltaData>& getPkgsToExtract() const noexcept {
    return pkgsToExtract_;
  }

 private:
  mf::zero::Name name_;
  mf::zero::OwnedCollection<PkgDeltaData> pkgsToDelete_;
  mf::zero::OwnedCollection<PkgDeltaData> pkgsToExtract_;
};

}  // namespace install::datamodels::product_update
