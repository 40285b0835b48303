// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>

#include "foundation/core/export.h"
#include "mf/zero/elements/ModelElement.h"

namespace mf::zero {

/// An ordered list of elements of one class, each of them held by a reference. Read it front to
/// back by index.
///
/// Elements that were made one after the other lie one behind the other in their model's memory. A
/// list of such elements, a run, is its first element and their number and has no memory of its
/// own. Any other list, and any that holds a placeholder, keeps an array of pointers.
class FOUNDATION_EXPORT ReferenceCollection {
 public:
  ReferenceCollection(const ReferenceCollection&) = delete;
  ReferenceCollection& operator=(const ReferenceCollection&) = delete;

  /// The number of elements.
  std::size_t size() const noexcept { return size_; }

  /// Tells whether there is no element.
  bool empty() const noexcept { return size_ == 0; }

 protected:
  ReferenceCollection() noexcept : first_(nullptr) {}

  /// Frees the array. Dropping the references is the derived class's part, which knows how large an
  /// element is.
  ~ReferenceCollection();

  /// Tells whether the list is a run; an empty list may be one. A run holds no placeholder.
  bool isRun() const noexcept { return capacityLog_ == 0; }

  /// The element at `index`, of a class whose implementation objects have `elementBytes`.
  ElementImpl& at(std::size_t index, std::size_t elementBytes) const noexcept {
    return isRun() ? runAt(index, elementBytes) : *places_[index];
  }

  /// Tells whether `element` stands in the list. Linear time, constant for a run.
  FOUNDATION_HIDDEN bool holds(const ElementImpl& element, std::size_t elementBytes) const noexcept;

  /// Makes sure that push() has room for `element`.
  /// \throws std::bad_alloc  nothing has changed then
  void makeRoomFor(const ElementImpl& element, std::size_t elementBytes) {
    const bool fits =
        isRun() ? continuesRun(element, elementBytes) : size_ != std::size_t{1} << capacityLog_;
    if (!fits) {
      makePlaces(std::size_t{size_} + 1, elementBytes);
    }
  }

  /// Puts `element` at the end and takes a reference to it. \pre makeRoomFor() has been called.
  void push(ElementImpl& element) noexcept {
    if (!isRun()) {
      places_[size_] = &element;
    } else if (size_ == 0) {
      first_ = &element;
    }
    ++size_;
    element.references_.add();
  }

  /// Makes room for `count` elements in all, unless the list is a run.
  /// \throws std::bad_alloc  nothing has changed then
  void reserve(std::size_t count);

  /// Puts `element` in the place of the one at `index`, taking the one reference and dropping the
  /// other. \pre the list is no run.
  FOUNDATION_HIDDEN void replace(std::size_t index, ElementImpl& element) const noexcept;

 private:
  ElementImpl& runAt(std::size_t index, std::size_t elementBytes) const noexcept {
    void* element = reinterpret_cast<char*>(first_) + index * elementBytes;
    return *static_cast<ElementImpl*>(element);
  }

  // The head of a slab lies between its elements and those before it, so no run leaves its slab.
  bool continuesRun(const ElementImpl& element, std::size_t elementBytes) const noexcept {
    return !element.isProxy() && (size_ == 0 || &element == &runAt(size_, elementBytes));
  }

  void makePlaces(std::size_t count, std::size_t elementBytes);

  union {
    ElementImpl* first_;    // of a run; meaningless while it is empty
    ElementImpl** places_;  // owned; replaced elements' places change while the list is only read
  };
  std::uint32_t size_ = 0;
  std::uint8_t capacityLog_ = 0;  // the array has two to the power of this many places; 0: no array
};

}  // namespace mf::zero
