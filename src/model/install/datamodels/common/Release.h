// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <string>

#include "foundation/core/export.h"
#include "mf/zero/elements/ModelElement.h"

namespace install::datamodels::common {

/// One release of a product family.
class FOUNDATION_EXPORT Release : public mf::zero::ElementHandle<Release> {
 public:
  class Impl;
};

/// The fields of a Release. All are unset in a new element.
class FOUNDATION_EXPORT Release::Impl final : public mf::zero::ElementImpl {
 public:
  static const mf::zero::ElementClass kClass;  ///< describes the class to the framework

  Impl() noexcept = default;
  ~Impl();

  /// Sets the name of the family; stored unchanged.
  void setReleaseFamily(const std::u16string& releaseFamily) { releaseFamily_ = releaseFamily; }

  /// Returns a copy of the name of the family; empty while unset.
  std::u16string getReleaseFamily() const { return releaseFamily_; }

  /// Sets the version; stored unchanged.
  void setVersion(const std::u16string& version) { version_ = version; }

  /// Returns a copy of the version; empty while unset.
  std::u16string getVersion() const { return version_; }

  /// Sets the update level.
  void setUpdateLevel(std::int8_t updateLevel) noexcept { updateLevel_ = updateLevel; }

  /// Returns the update level; 0 while unset.
  std::int8_t getUpdateLevel() const noexcept { return updateLevel_; }

 private:
  std::u16string releaseFamily_;
  std::u16string version_;
  std::int8_t updateLevel_ = 0;
};

}  // namespace install::datamodels::common
