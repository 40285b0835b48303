// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <string_view>

namespace mf::zero {

/// A string as its model stores it: once, however many elements have it. Its units follow it.
struct InternedString {
  std::size_t hash;  ///< with the key of its pool
  std::size_t size;  ///< the number of units

  /// The units; they are valid as long as the pool.
  std::u16string_view view() const noexcept {
    return {static_cast<const char16_t*>(static_cast<const void*>(this + 1)), size};
  }
};

/// A name of an element: one pointer. Within one model, equal names are the same object, so names
/// compare without reading their units.
class Name {
 public:
  /// Makes an unset name, which reads as the empty string.
  constexpr Name() noexcept = default;

  /// Makes the name that `string` stores.
  explicit Name(const InternedString& string) noexcept : string_(&string) {}

  /// The units; they are valid as long as the model.
  std::u16string_view view() const noexcept {
    return string_ == nullptr ? std::u16string_view() : string_->view();
  }

  /// Identifies the stored string among others of the same model; null for an unset name.
  const InternedString* identity() const noexcept { return string_; }

 private:
  const InternedString* string_ = nullptr;
};

}  // namespace mf::zero
