// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>
#include <new>
#include <string_view>
#include <type_traits>
#include <utility>

#include "foundation/core/export.h"
#include "mf/zero/elements/ElementClass.h"
#include "mf/zero/elements/Model.h"
#include "mf/zero/elements/SaturatingCount.h"
#include "mf/zero/elements/Uuid.h"
#include "mf/zero/text/Name.h"

namespace mf::zero {

class ModelElement;

/// The common part of all implementation objects of elements: the reference count and the place in
/// the tree.
///
/// Each element lies in a slab of its model. The slab's head refers to the model and the class, so
/// an element needs no memory for either. There are no virtual operations, because they would add a
/// pointer to each element.
class FOUNDATION_EXPORT ElementImpl {
 public:
  ElementImpl(const ElementImpl&) = delete;
  ElementImpl& operator=(const ElementImpl&) = delete;

  /// Whether this is a placeholder that its list still has to resolve. create() never makes one.
  bool isProxy() const noexcept { return proxy_; }

  /// The model in which the element was created.
  Model::Impl& model() const noexcept;

  /// The element's class.
  const ElementClass& elementClass() const noexcept;

  /// The element that contains this one. An empty handle before the element is attached, and once
  /// its container has lost its last reference.
  ModelElement getContainer() const noexcept;

  /// The field of the container that contains this element; null exactly if there is no container.
  const ContainedProperty* getContainerProperty() const noexcept;

 protected:
  ElementImpl() noexcept = default;
  ~ElementImpl() = default;

  /// Stores `text` as a name in the element's model; the empty string is an unset name.
  /// \throws std::bad_alloc
  Name makeName(std::u16string_view text) const;

 private:
  friend class ModelElement;
  friend class ReferenceCollection;
  friend class AbstractOwnedCollection;
  friend class AbstractContainedElement;
  friend class Placeholders;
  friend class RowStore;

  // Records a field of `container` as the element's place in the tree.
  void attachTo(ElementImpl& container, std::uint8_t propertyNumber) noexcept {
    container_ = &container;
    propertyNumber_ = propertyNumber;
    everAttached_ = true;
  }

  // A container without references is being destroyed: a handle to it would destroy it again. While
  // its first list is destroyed, foreign code may run, and children in its other lists still refer
  // to it.
  bool hasLivingContainer() const noexcept {
    return container_ != nullptr && !container_->references_.isZero();
  }

  SaturatingCount<std::uint32_t> references_;
  std::uint8_t propertyNumber_ = 0;  // in the container's class; meaningless without a container
  bool proxy_ = false;
  bool everAttached_ = false;         // an element that never was is not in any list
  ElementImpl* container_ = nullptr;  // not counted; the container clears it when it is destroyed
};

/// A handle to one model element of any class.
///
/// A handle is one pointer. Copying adds a reference, destroying drops it, and the element is freed
/// with its last reference. Handles compare by the identity of the element, never by its content.
class FOUNDATION_EXPORT ModelElement {
 public:
  /// Makes an empty handle.
  ModelElement() noexcept = default;

  /// Refers to the same element and adds a reference.
  ModelElement(const ModelElement& other) noexcept : impl_(other.impl_) { addRef(); }

  /// Takes over the other handle's reference and leaves it empty.
  ModelElement(ModelElement&& other) noexcept : impl_(std::exchange(other.impl_, nullptr)) {}

  /// Adds the new reference before dropping the old one, so that it is safe to assign a part of the
  /// element that is destroyed by the assignment.
  ModelElement& operator=(const ModelElement& other) noexcept {
    ModelElement(other).swap(*this);
    return *this;
  }

  /// Takes over the other handle's reference, leaves it empty and drops its own.
  ModelElement& operator=(ModelElement&& other) noexcept {
    ModelElement(std::move(other)).swap(*this);  // cppcheck-suppress accessMoved ; it is moved once
    return *this;
  }
  ~ModelElement() { removeRef(); }

  /// Whether the handle refers to an element.
  explicit operator bool() const noexcept { return impl_ != nullptr; }

  /// Adds a reference beyond the handle's own; does nothing for an empty handle. Handles count by
  /// themselves, so code outside the framework has no reason to call this.
  void addRef() const noexcept {
    if (impl_ != nullptr) {
      impl_->references_.add();
    }
  }

  /// Drops a reference; with the last one the element is freed. Does nothing for an empty handle.
  void removeRef() const noexcept {
    if (impl_ != nullptr && impl_->references_.drop()) {
      destroy(*impl_);
    }
  }

  /// The operations of all elements. \pre the handle is not empty
  ElementImpl* operator->() const noexcept { return impl_; }

  /// Whether two handles refer to the same element, or both to none.
  friend bool operator==(const ModelElement& left, const ModelElement& right) noexcept {
    return left.impl_ == right.impl_;
  }

  /// The opposite of equality.
  friend bool operator!=(const ModelElement& left, const ModelElement& right) noexcept {
    return !(left == right);
  }

 protected:
  /// Refers to an element and adds a reference.
  explicit ModelElement(ElementImpl& impl) noexcept : impl_(&impl) { addRef(); }

  ElementImpl* impl_ = nullptr;  ///< counted; null for an empty handle

 private:
  friend class ReferenceCollection;
  friend class AbstractOwnedCollection;
  friend class ElementImpl;
  friend class Placeholders;
  friend class AbstractContainedElement;
  friend class RowStore;

  void swap(ModelElement& other) noexcept { std::swap(impl_, other.impl_); }

  static void destroy(ElementImpl& impl) noexcept;
};

/// The maximum size of an implementation object in bytes.
inline constexpr std::size_t kMostElementBytes = 256;

/// The strictest alignment that an implementation object may need.
inline constexpr std::size_t kElementAlignment =
    alignof(void*) < alignof(std::int64_t) ? alignof(std::int64_t) : alignof(void*);

/// Allocates memory for one element of `elementClass` from its model, and adds a reference to the
/// model. Ends the program if the model has elements of another class with the same number.
/// \throws std::bad_alloc
FOUNDATION_EXPORT void* allocateElement(Model::Impl& model, const ElementClass& elementClass);

/// A handle to an element of one class.
///
/// `Derived` is the class of handles, with its nested class `Impl`, which derives from ElementImpl
/// and has a static member `kClass` and a default constructor that throws nothing.
template <class Derived>
class ElementHandle : public ModelElement {
 public:
  /// Makes an empty handle.
  ElementHandle() noexcept = default;

  /// Makes a new element in `model`. It is attached to nothing, and all of its fields are unset.
  ///
  /// Elements are distinguished by identity. The UUID names an element to services outside this
  /// process; the library never reads it, so it is not stored.
  ///
  /// \pre the handle to the model is not empty. Constant time. Throws only std::bad_alloc.
  static Derived create(const Model& model, const Uuid& uuid) {
    static_cast<void>(uuid);
    using Impl = typename Derived::Impl;
    static_assert(std::is_nothrow_default_constructible_v<Impl>);
    static_assert(!std::is_polymorphic_v<Impl>, "an element begins with its ElementImpl");
    static_assert(sizeof(Impl) <= kMostElementBytes,
                  "a list stores its distance from the start of its element in one byte");
    static_assert(alignof(Impl) <= kElementAlignment, "slabs provide no stricter alignment");
    Derived handle;
    handle.impl_ = new (allocateElement(model.impl(), Impl::kClass)) Impl();
    handle.addRef();
    return handle;
  }

  /// Makes a handle to `element` and adds a reference. \pre the element is of this class
  static Derived handleTo(ElementImpl& element) noexcept {
    Derived handle;
    handle.impl_ = &element;
    handle.addRef();
    return handle;
  }

  /// The element's setters, getters and lists. \pre the handle is not empty
  auto operator->() const noexcept { return static_cast<typename Derived::Impl*>(impl_); }
};

/// Makes an implementation object of class `Impl` from a row: the function of its ElementClass.
template <class Impl>
ElementImpl& makeElementImpl(void* memory, const RowList& rows, std::size_t index) noexcept {
  return *new (memory) Impl(rows, index);
}

/// Destroys an implementation object of class `Impl`: the function of its ElementClass.
template <class Impl>
void destroyElementImpl(ElementImpl& impl) noexcept {
  static_cast<Impl&>(impl).~Impl();
}

}  // namespace mf::zero
