#pragma once

#include <cstddef>
#include <cstdint>

#include "mf/zero/text/Name.h"

namespace mf::zero {

struct RowList;

/// A package that is not yet an element.
struct PackageRow {
  Name name;                           ///< as makeName() stores it
  std::int64_t size = 0;               ///< bytes
  std::int64_t uncompressedBytes = 0;  ///< bytes after unpacking; 0 while unset
};

/// A component that is not yet an element.
struct ComponentRow {
  Name name;                          ///< as makeName() stores it
  const RowList* packages = nullptr;  ///< null if there are none
};

/// A list of rows in the memory of its model. It does not change once lists refer to it; the rows,
/// all of one kind, follow it.
struct alignas(std::int64_t) RowList {
  std::size_t size;    ///< the number of rows
  std::size_t number;  ///< of packages: from 0, in the order in which such lists were made
  bool ascending;      ///< of packages: whether each name is greater than the one before
  std::uint8_t field;  ///< of components: the number of the list that contains their packages

  /// The row at `index`, of the kind of this list. \pre `index` is less than `size`.
  template <class Row>
  const Row& at(std::size_t index) const noexcept {
    return reinterpret_cast<const Row*>(this + 1)[index];
  }
};

}  // namespace mf::zero
