// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <string>

#include "foundation/core/export.h"
#include "install/datamodels/common/Release.h"
#include "mf/zero/elements/ModelElement.h"
#include "mf/zero/fields/ContainedElement.h"

namespace install::datamodels::product_update {

/// The release that an update starts from, the release that it leads to, and the architecture.
class FOUNDATION_EXPORT ReleaseData : public mf::zero::ElementHandle<ReleaseData> {
 public:
  class Impl;
};

/// The fields of a ReleaseData. All are unset in a new element.
class FOUNDATION_EXPORT ReleaseData::Impl final : public mf::zero::ElementImpl {
 public:
  static const mf::zero::ElementClass kClass;  ///< describes the class to the framework

  Impl() noexcept;
  ~Impl();

  /// Attaches the release that the update starts from, replacing the field's former value; an empty
  /// handle clears the field.
  ///
  /// \throws foundation::core::except::Exception<mf::zero::IncompatibleModels>
  ///         an element of another model; nothing has changed then
  void setBaseRelease(const common::Release& release) { baseRelease_.set(release); }

  /// Returns a new reference to the release that the update starts from; an empty handle if there
  /// is none.
  common::Release getBaseRelease() const noexcept { return baseRelease_.get(); }

  /// Attaches the release that the update leads to, replacing the field's former value; an empty
  /// handle clears the field.
  ///
  /// \throws foundation::core::except::Exception<mf::zero::IncompatibleModels>
  ///         an element of another model; nothing has changed then
  void setTargetRelease(const common::Release& release) { targetRelease_.set(release); }

  /// Returns a new reference to the release that the update leads to; an empty handle if there is
  /// none.
  common::Release getTargetRelease() const noexcept { return targetRelease_.get(); }

  /// Sets the architecture that the document was made for; stored unchanged.
  void setMetaDataArch(const std::u16string& metaDataArch) { metaDataArch_ = metaDataArch; }

  /// Returns a copy of the architecture that the document was made for; empty while unset.
  std::u16string getMetaDataArch() const { return metaDataArch_; }

 private:
  enum Property : std::uint8_t { kBaseRelease, kTargetRelease };

  mf::zero::ContainedElement<common::Release> baseRelease_;
  mf::zero::ContainedElement<common::Release> targetRelease_;
  std::u16string metaDataArch_;
};

}  // namespace install::datamodels::product_update
