// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <utility>

#include "foundation/core/export.h"

namespace mf::zero {

/// Options for making a model. All have their defaults.
class ModelSpec {};

/// A handle to one model, in which the elements of a tree are created.
///
/// The model lives until its last handle and its last element are gone: an element that is still
/// held stays usable without any handle to the model. The model owns the memory of its elements and
/// of their names. It stores each name once, however many elements share it, and keeps it until the
/// model is destroyed. Reference counts are not atomic: a model, its elements and their handles
/// belong to one thread at a time.
class FOUNDATION_EXPORT Model {
 public:
  class Impl;  ///< the model itself, private to the framework

  /// Makes a new, empty model.
  static Model create(const ModelSpec& spec);

  /// Makes an empty handle.
  Model() noexcept = default;

  /// Refers to the same model and adds a reference.
  Model(const Model& other) noexcept : impl_(other.impl_) { addRef(); }

  /// Takes over the other handle's reference and leaves it empty.
  Model(Model&& other) noexcept : impl_(std::exchange(other.impl_, nullptr)) {}

  /// Refers to the other's model, and drops its own reference.
  Model& operator=(Model other) noexcept {
    std::swap(impl_, other.impl_);
    return *this;
  }
  ~Model() { removeRef(); }

  /// Whether the handle refers to a model.
  explicit operator bool() const noexcept { return impl_ != nullptr; }

  /// Adds a reference beyond the handle's own; does nothing for an empty handle. Handles count by
  /// themselves, so code outside the framework has no reason to call this.
  void addRef() const noexcept;

  /// Drops a reference. Without references and elements, the model is freed.
  void removeRef() const noexcept;

  /// The model itself. \pre the handle is not empty
  Impl& impl() const noexcept { return *impl_; }

  /// Whether two handles refer to the same model, or both to none.
  friend bool operator==(const Model& left, const Model& right) noexcept {
    return left.impl_ == right.impl_;
  }

  /// The opposite of equality.
  friend bool operator!=(const Model& left, const Model& right) noexcept {
    return !(left == right);
  }

 private:
  Impl* impl_ = nullptr;
};

}  // namespace mf::zero
