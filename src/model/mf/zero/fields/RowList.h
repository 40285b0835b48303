#pragma once

#include <cstddef>
#include <cstdint>

#include "mf/zero/text/Name.h"

namespace mf::zero {

/// An element that does not exist yet: the fields of a class with a name and two byte counts.
struct Row {
  Name name;                           ///< as makeName() stores it
  std::int64_t size = 0;               ///< bytes
  std::int64_t uncompressedBytes = 0;  ///< bytes after unpacking; 0 while unset
};

/// A list of rows in the memory of its model. It does not change once lists refer to it; the rows
/// follow it.
struct RowList {
  std::size_t number;  ///< from 0, in the order in which the model's lists were made
  std::size_t size;    ///< the number of rows
  bool ascending;      ///< whether each name is greater than the one before, by code units

  /// The first row.
  const Row* begin() const noexcept { return reinterpret_cast<const Row*>(this + 1); }

  /// The place after the last row.
  const Row* end() const noexcept { return begin() + size; }

  /// The row at `index`. \pre `index` is less than `size`.
  const Row& operator[](std::size_t index) const noexcept { return begin()[index]; }
};

}  // namespace mf::zero
