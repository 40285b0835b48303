// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <utility>

#include "foundation/core/export.h"

namespace mf::zero {

/// How a model is to be made. All options stand at their defaults.
class ModelSpec {};

/// A handle to one model, in which the elements of a tree are created.
///
/// The model lives until its last handle and its last element are gone: an element that somebody
/// still holds stays usable without any handle to the model. It owns the memory of its elements,
/// and of their names, which it stores once however many elements share them; names once given are
/// kept until the model goes. Counts are plain: a model, its elements and their handles belong to
/// one thread at a time.
class FOUNDATION_EXPORT Model {
 public:
  class Impl;  ///< the model itself, private to the framework

  /// Makes a new, empty model.
  static Model create(const ModelSpec& spec);

  /// Makes an empty handle.
  Model() noexcept = default;

  /// Refers to the same model and takes a reference.
  Model(const Model& other) noexcept : impl_(other.impl_) { addRef(); }

  /// Takes the other handle's reference over and leaves it empty.
  Model(Model&& other) noexcept : impl_(std::exchange(other.impl_, nullptr)) {}

  /// Refers to the other's model, and drops its own reference.
  Model& operator=(Model other) noexcept {
    std::swap(impl_, other.impl_);
    return *this;
  }
  ~Model() { removeRef(); }

  /// Tells whether the handle refers to a model.
  explicit operator bool() const noexcept { return impl_ != nullptr; }

  /// Takes a reference beside the handle's own; nothing happens to an empty handle. Handles count
  /// by themselves: outside the framework there is no reason to call this.
  void addRef() const noexcept;

  /// Drops a reference; with the last one, and without elements, the model is freed.
  void removeRef() const noexcept;

  /// The model itself. \pre the handle is not empty.
  Impl& impl() const noexcept { return *impl_; }

  /// Tells whether two handles refer to the same model, or both to none.
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
