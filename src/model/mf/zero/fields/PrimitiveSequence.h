// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <iterator>
#include <string>
#include <string_view>

#include "foundation/core/export.h"
#include "mf/zero/elements/ElementClass.h"
#include "mf/zero/elements/ModelElement.h"
#include "mf/zero/text/CompactString.h"

namespace mf::zero {

/// An ordered list of plain values in an element.
template <class T>
class PrimitiveSequence;

/// An ordered list of UTF-16 strings in an element, the owner. Nothing is ever removed or
/// reordered.
///
/// The strings lie in the memory of the owner's model, many to a block, and stay there until the
/// model is destroyed, as names do. Read the sequence front to back.
template <>
class FOUNDATION_EXPORT PrimitiveSequence<std::u16string> {
 public:
  /// Iterates over the strings in the order of appending, including those appended during the
  /// iteration.
  class Iterator {
   public:
    /// \cond required of every iterator by the standard library
    using iterator_category = std::forward_iterator_tag;
    using value_type = CompactString;
    using difference_type = std::ptrdiff_t;
    using pointer = void;
    using reference = CompactString;
    /// \endcond

    /// Points at a string; null is the end.
    explicit Iterator(const CompactString::Stored* stored) noexcept : stored_(stored) {}

    /// The string, which is valid as long as its model. \pre this is not the end
    CompactString operator*() const noexcept { return CompactString(*stored_); }

    /// Moves to the next string. \pre this is not the end
    Iterator& operator++() noexcept {
      stored_ = stored_->next;
      return *this;
    }

    /// The same; returns the former position.
    Iterator operator++(int) noexcept {
      const Iterator before = *this;
      ++*this;
      return before;
    }

    /// Whether both point at the same string, or both at an end.
    friend bool operator==(const Iterator& left, const Iterator& right) noexcept {
      return left.stored_ == right.stored_;
    }

    /// The opposite of equality.
    friend bool operator!=(const Iterator& left, const Iterator& right) noexcept {
      return !(left == right);
    }

   private:
    const CompactString::Stored* stored_;
  };

  /// An empty sequence, a member of `owner`.
  PrimitiveSequence(const ElementImpl& owner, Duplicates duplicates) noexcept
      : owner_(&owner), duplicates_(duplicates) {}

  PrimitiveSequence(const PrimitiveSequence&) = delete;
  PrimitiveSequence& operator=(const PrimitiveSequence&) = delete;

  /// Appends a copy of `value`. Does nothing if duplicates are not admitted and the sequence
  /// already contains an equal value, for which it is searched.
  ///
  /// If it throws std::bad_alloc, nothing has changed. If duplicates are admitted, constant time
  /// apart from copying the value.
  void push_back(std::u16string_view value);

  /// The number of strings.
  std::size_t size() const noexcept { return size_; }

  /// Whether there are no strings.
  bool empty() const noexcept { return size_ == 0; }

  /// The string appended first.
  Iterator begin() const noexcept { return Iterator(first_); }

  /// The end of the strings.
  Iterator end() const noexcept { return Iterator(nullptr); }

 private:
  FOUNDATION_HIDDEN bool holds(std::u16string_view value) const noexcept;

  const ElementImpl* owner_;
  CompactString::Stored* first_ = nullptr;
  CompactString::Stored* last_ = nullptr;
  std::size_t size_ = 0;
  Duplicates duplicates_;
};

}  // namespace mf::zero
