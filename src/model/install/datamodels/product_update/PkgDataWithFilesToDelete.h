// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "foundation/core/export.h"
#include "mf/zero/elements/ModelElement.h"
#include "mf/zero/fields/PrimitiveSequence.h"

namespace install::datamodels::product_update {

/// A package that stays but loses single files.
class FOUNDATION_EXPORT PkgDataWithFilesToDelete
    : public mf::zero::ElementHandle<PkgDataWithFilesToDelete> {
 public:
  class Impl;
};

/// The fields of a PkgDataWithFilesToDelete. All are unset in a new element.
class FOUNDATION_EXPORT PkgDataWithFilesToDelete::Impl final : public mf::zero::ElementImpl {
 public:
  static const mf::zero::ElementClass kClass;  ///< describes the class to the framework

  Impl() noexcept = default;
  ~Impl();

  /// Sets the package's name; stored unchanged, and only once in the model however many elements
  /// have it.
  void setName(const std::u16string& name) { name_ = makeName(name); }

  /// Returns a copy of the package's name; empty while unset.
  std::u16string getName() const { return std::u16string(name_.view()); }

  /// Reads the name in place; its units are valid as long as the model.
  mf::zero::Name name() const noexcept { return name_; }

  /// Sets the size of the package in bytes.
  void setSize(std::int64_t size) noexcept { size_ = size; }

  /// Returns the size of the package in bytes; 0 while unset.
  std::int64_t getSize() const noexcept { return size_; }

  /// The paths of the files to delete, in the order of the document, for appending; equal paths are
  /// all kept.
  mf::zero::PrimitiveSequence<std::u16string>& getFilesToDeleteMutable() noexcept {
    return filesToDelete_;
  }

  /// The same sequence, for reading; empty while unset.
  const mf::zero::PrimitiveSequence<std::u16string>& getFilesToDelete() const noexcept {
    return filesToDelete_;
  }

 private:
  mf::zero::Name name_;
  std::int64_t size_ = 0;
  mf::zero::PrimitiveSequence<std::u16string> filesToDelete_{*this,
                                                             mf::zero::Duplicates::kAdmitted};
};

}  // namespace install::datamodels::product_update
