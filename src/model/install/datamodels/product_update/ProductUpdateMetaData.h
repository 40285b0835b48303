// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <string>

#include "foundation/core/export.h"
#include "install/datamodels/product_update/ComponentDataWithFilesToDelete.h"
#include "install/datamodels/product_update/ProductDeltaData.h"
#include "install/datamodels/product_update/ReleaseData.h"
#include "mf/zero/elements/ModelElement.h"
#include "mf/zero/fields/ContainedElement.h"
#include "mf/zero/fields/OwnedCollection.h"

namespace install::datamodels::product_update {

/// The root of a tree: the whole content of one update metadata document.
class FOUNDATION_EXPORT ProductUpdateMetaData
    : public mf::zero::ElementHandle<ProductUpdateMetaData> {
 public:
  class Impl;
};

/// The fields of a ProductUpdateMetaData. All are unset in a new element.
class FOUNDATION_EXPORT ProductUpdateMetaData::Impl final : public mf::zero::ElementImpl {
 public:
  static const mf::zero::ElementClass kClass;  ///< describes the class to the framework

  Impl() noexcept;
  ~Impl();

  /// Attaches the releases and the architecture, replacing the field's former value; an empty
  /// handle clears the field.
  ///
  /// \throws foundation::core::except::Exception<mf::zero::IncompatibleModels>
  ///         an element of another model; nothing has changed then
  void setReleaseData(const ReleaseData& releaseData) { releaseData_.set(releaseData); }

  /// Returns a new reference to the releases and the architecture; an empty handle if there is
  /// none.
  ReleaseData getReleaseData() const noexcept { return releaseData_.get(); }

  /// The products of the update, in the order in which they were added, for appending.
  mf::zero::OwnedCollection<ProductDeltaData>& getProductsDeltaDataMutable() noexcept {
    return productsDeltaData_;
  }

  /// The same list, for reading.
  const mf::zero::OwnedCollection<ProductDeltaData>& getProductsDeltaData() const noexcept {
    return productsDeltaData_;
  }

  /// The components that lose single files, in the order in which they were added, for appending.
  mf::zero::OwnedCollection<ComponentDataWithFilesToDelete>&
  getCompsWithFilesToDeleteMutable() noexcept {
    return compsWithFilesToDelete_;
  }

  /// The same list, for reading.
  const mf::zero::OwnedCollection<ComponentDataWithFilesToDelete>& getCompsWithFilesToDelete()
      const noexcept {
    return compsWithFilesToDelete_;
  }

 private:
  enum Property : std::uint8_t { kReleaseData, kProductsDeltaData, kCompsWithFilesToDelete };

  mf::zero::ContainedElement<ReleaseData> releaseData_;
  mf::zero::OwnedCollection<ProductDeltaData> productsDeltaData_;
  mf::zero::OwnedCollection<ComponentDataWithFilesToDelete> compsWithFilesToDelete_;
};

}  // namespace install::datamodels::product_update
