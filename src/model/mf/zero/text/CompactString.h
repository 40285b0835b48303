// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "foundation/core/export.h"

namespace mf::zero {

/// A UTF-16 string in the memory of its model, read in place. It takes one byte per unit if all
/// units are below 0x80, as in most paths, otherwise two.
///
/// It is one pointer, and refers to the string as long as the model lives.
class FOUNDATION_EXPORT CompactString {
 public:
  /// The stored form of a string; its units follow it.
  struct Stored {
    const Stored* next;  ///< the next string of the sequence; null for the last one
    std::size_t size : sizeof(std::size_t) * 8 - 1;  ///< the number of units
    std::size_t narrow : 1;                          ///< whether each unit is one byte
  };

  /// Refers to a string in the memory of a model.
  explicit CompactString(const Stored& stored) noexcept : stored_(&stored) {}

  /// The number of units.
  std::size_t size() const noexcept { return stored_->size; }

  /// Copies the units, with no spare capacity.
  std::u16string text() const;

  /// A copy, for code that takes strings.
  operator std::u16string() const { return text(); }

  /// Compares by units as unsigned numbers, with a prefix first; the result is below, at or above
  /// zero.
  int compare(const CompactString& other) const noexcept;

  /// Whether the units are those of `text`.
  bool equals(std::u16string_view text) const noexcept;

 private:
  const Stored* stored_;
};

}  // namespace mf::zero
