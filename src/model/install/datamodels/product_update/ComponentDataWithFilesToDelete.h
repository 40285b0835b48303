// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "foundation/core/export.h"
#include "install/datamodels/product_update/PkgDataWithFilesToDelete.h"
#include "mf/zero/elements/ModelElement.h"
#include "mf/zero/fields/OwnedCollection.h"

namespace install::datamodels::product_update {

/// A component with packages that stay but lose single files.
class FOUNDATION_EXPORT ComponentDataWithFilesToDelete
    : public mf::zero::ElementHandle<ComponentDataWithFilesToDelete> {
 public:
  class Impl;
};

/// The fields of a ComponentDataWithFilesToDelete. All are unset in a new element.
class FOUNDATION_EXPORT ComponentDataWithFilesToDelete::Impl final : public mf::zero::ElementImpl {
 public:
  static const mf::zero::ElementClass kClass;  ///< describes the class to the framework

  Impl() noexcept;
  ~Impl();

  /// Sets the component's name; stored unchanged, and only once in the model however many elements
  /// have it.
  void setName(const std::u16string& name) { name_ = makeName(name); }

  /// Returns a copy of the component's name; empty while unset.
  std::u16string getName() const { return std::u16string(name_.view()); }

  /// Reads the name in place; its units are valid as long as the model.
  mf::zero::Name name() const noexcept { return name_; }

  /// The list of the packages that lose files, for appending.
  mf::zero::OwnedCollection<PkgDataWithFilesToDelete>& getPkgsWithFilesToDeleteMutable() noexcept {
    return pkgsWithFilesToDelete_;
  }

  /// The same list, for reading.
  const mf::zero::OwnedCollection<PkgDataWithFilesToDelete>& getPkgsWithFilesToDelete()
      const noexcept {
    return pkgsWithFilesToDelete_;
  }

 private:
  enum Property : std::uint8_t { kPkgsWithFilesToDelete };

  mf::zero::Name name_;
  mf::zero::OwnedCollection<PkgDataWithFilesToDelete> pkgsWithFilesToDelete_;
};

}  // namespace install::datamodels::product_update
