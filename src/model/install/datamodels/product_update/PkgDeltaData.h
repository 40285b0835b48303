// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "foundation/core/export.h"
#include "mf/zero/elements/ModelElement.h"

namespace install::datamodels::product_update {

/// One package to delete or to extract.
class FOUNDATION_EXPORT PkgDeltaData : public mf::zero::ElementHandle<PkgDeltaData> {
 public:
  class Impl;
};

/// The fields of a PkgDeltaData. All are unset in a new element.
class FOUNDATION_EXPORT PkgDeltaData::Impl final : public mf::zero::ElementImpl {
 public:
  static const mf::zero::ElementClass kClass;  ///< describes the class to the framework

  Impl() noexcept = default;

  /// Makes an element from the row of a package.
  FOUNDATION_HIDDEN Impl(const mf::zero::RowList& rows, std::size_t index) noexcept;
  ~Impl();

  /// Sets the package's name; stored unchanged, and only once in the model however many elements
  /// have it.
  void setName(const std::u16string& name) { name_ = makeName(name); }

  /// Returns a copy of the package's name; empty while unset.
  std::u16string getName() const { return std::u16string(name_.view()); }

  /// Reads the name in place; its units are valid as long as the model.
  mf::zero::Name name() const noexcept { return name_; }

  /// Sets the size in bytes; for a package to extract, the bytes to fetch.
  void setSize(std::int64_t size) noexcept { size_ = size; }

  /// Returns the size in bytes; 0 while unset.
  std::int64_t getSize() const noexcept { return size_; }

  /// Sets the bytes after unpacking; unset for a package to delete.
  void setUncompressedBytes(std::int64_t uncompressedBytes) noexcept {
    uncompressedBytes_ = uncompressedBytes;
  }

  /// Returns the bytes after unpacking; 0 while unset.
  std::int64_t getUncompressedBytes() const noexcept { return uncompressedBytes_; }

 private:
  mf::zero::Name name_;
  std::int64_t size_ = 0;
  std::int64_t uncompressedBytes_ = 0;
};

}  // namespace install::datamodels::product_update
