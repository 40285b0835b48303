// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>

namespace mf::zero {

class ElementImpl;
struct RowList;
struct ElementClass;

/// Whether a list or sequence accepts an element or value that it already contains.
enum class Duplicates : std::uint8_t { kAdmitted, kRefused };

/// A contained field of an element class: a single element or a list of elements.
struct ContainedProperty {
  const char16_t* name;              ///< the name in the data model
  const ElementClass* elementClass;  ///< class of the contained elements
  Duplicates duplicates;             ///< for a list: whether it may contain an element twice
};

/// Describes one class of elements to the framework. One static object for each class.
struct ElementClass {
  const char16_t* qualifiedName;  ///< with its namespace, for error reports
  std::size_t number;             ///< from 0, different for each class of a model, which is checked
  std::size_t implSize;           ///< bytes of the implementation object
  void (*destroyImpl)(ElementImpl&) noexcept;  ///< ends its life; the framework frees the memory
  const ContainedProperty* properties;         ///< the contained fields, by their numbers
  /// makes an element from a row in memory of `implSize` bytes; null for a class that has no rows
  ElementImpl& (*makeFromRow)(void* memory, const RowList& rows,
                              std::size_t index) noexcept = nullptr;
};

}  // namespace mf::zero
