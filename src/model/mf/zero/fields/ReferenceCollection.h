// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>

#include "foundation/core/export.h"
#include "mf/zero/elements/ModelElement.h"

namespace mf::zero {

struct RowList;

/// An ordered list of elements of one class, each held by a reference. Read it front to back by
/// index.
///
/// Elements that were made one after the other are adjacent in their model's memory. A list of such
/// elements, a run, consists of its first element and their number and allocates nothing itself.
/// Any other list, and any that contains a placeholder, has an array of pointers. A third kind
/// refers to rows: its elements are made when one of them is first requested.
class FOUNDATION_EXPORT ReferenceCollection {
 public:
  ReferenceCollection(const ReferenceCollection&) = delete;
  ReferenceCollection& operator=(const ReferenceCollection&) = delete;

  /// The number of elements.
  std::size_t size() const noexcept { return size_; }

  /// Whether there are no elements.
  bool empty() const noexcept { return size_ == 0; }

 protected:
  ReferenceCollection() noexcept : first_(nullptr) {}

  /// Frees the array. The derived class drops the references, because it knows how large an element
  /// is.
  ~ReferenceCollection();

  /// Whether the list is a run; an empty list may be one. A run contains no placeholder.
  bool isRun() const noexcept { return capacityLog_ == 0; }

  /// The rows that the list refers to, or null if it consists of elements.
  const RowList* rows() const noexcept { return capacityLog_ == kRows ? rows_ : nullptr; }

  /// Makes the empty list refer to `rows`, which live as long as the model.
  FOUNDATION_HIDDEN void setRows(const RowList& rows) const noexcept;

  /// Makes the list empty and frees the array. The caller drops the references.
  FOUNDATION_HIDDEN void clear() const noexcept;

  /// The element at `index`, of a class whose implementation objects have `elementBytes`.
  ElementImpl& at(std::size_t index, std::size_t elementBytes) const noexcept {
    return isRun() ? runAt(index, elementBytes) : *places_[index];
  }

  /// Whether `element` is in the list. Linear time; constant for a run.
  FOUNDATION_HIDDEN bool holds(const ElementImpl& element, std::size_t elementBytes) const noexcept;

  /// Ensures that push() has room for `element`.
  /// \throws std::bad_alloc  nothing has changed then
  void makeRoomFor(const ElementImpl& element, std::size_t elementBytes) const {
    const bool fits =
        isRun() ? continuesRun(element, elementBytes) : size_ != std::size_t{1} << capacityLog_;
    if (!fits) {
      makePlaces(std::size_t{size_} + 1, elementBytes);
    }
  }

  /// Appends `element` and adds a reference to it. \pre makeRoomFor() has been called
  void push(ElementImpl& element) const noexcept {
    if (!isRun()) {
      places_[size_] = &element;
    } else if (size_ == 0) {
      first_ = &element;
    }
    ++size_;
    element.references_.add();
  }

  /// Makes room for `count` elements in total, unless the list is a run or rows.
  /// \throws std::bad_alloc  nothing has changed then
  void reserve(std::size_t count);

  /// Replaces the element at `index` by `element`, adding a reference to the new one and dropping
  /// that to the old one. \pre the list is not a run
  FOUNDATION_HIDDEN void replace(std::size_t index, ElementImpl& element) const noexcept;

 private:
  ElementImpl& runAt(std::size_t index, std::size_t elementBytes) const noexcept {
    void* element = reinterpret_cast<char*>(first_) + index * elementBytes;
    return *static_cast<ElementImpl*>(element);
  }

  // The head of a slab separates its elements from those before it, so no run leaves its slab.
  bool continuesRun(const ElementImpl& element, std::size_t elementBytes) const noexcept {
    return !element.isProxy() && (size_ == 0 || &element == &runAt(size_, elementBytes));
  }

  static constexpr std::uint8_t kRows = 0xFF;

  void makePlaces(std::size_t count, std::size_t elementBytes) const;

  // Mutable: reading a list turns rows into elements and replaces placeholders.
  union {
    mutable ElementImpl* first_;    // of a run; meaningless while the list is empty
    mutable ElementImpl** places_;  // owned
    mutable const RowList* rows_;   // owned by the model
  };
  mutable std::uint32_t size_ = 0;
  // Base-2 logarithm of the array's capacity; 0: a run, kRows: rows.
  mutable std::uint8_t capacityLog_ = 0;
};

}  // namespace mf::zero
