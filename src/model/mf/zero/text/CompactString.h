// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "foundation/core/export.h"

namespace mf::zero {

/// A UTF-16 string that lies in the memory of its model, read in place. One byte a unit if all of
/// them are below 0x80, as those of most paths are, and two bytes a unit otherwise.
///
/// It is one pointer, and refers to the string for as long as the model lives.
class FOUNDATION_EXPORT CompactString {
 public:
  /// How the string is stored; its units follow.
  struct Stored {
    const Stored* next;  ///< the string behind it in its sequence; null for the last one
    std::size_t size : sizeof(std::size_t) * 8 - 1;  ///< the number of units
    std::size_t narrow : 1;                          ///< whether each unit is one byte
  };

  /// Refers to a string that lies in the memory of a model.
  explicit CompactString(const Stored& stored) noexcept : stored_(&stored) {}

  /// The number of units.
  std::size_t size() const noexcept { return stored_->size; }

  /// Copies the units out, with no memory to spare.
  std::u16string text() const;

  /// A copy, for whoever takes strings.
  operator std::u16string() const { return text(); }

  /// Orders by units, as unsigned numbers, a prefix first: below, at or above zero.
  int compare(const CompactString& other) const noexcept;

  /// Tells whether the units are those of `text`.
  bool equals(std::u16string_view text) const noexcept;

 private:
  const Stored* stored_;
};

}  // namespace mf::zero
