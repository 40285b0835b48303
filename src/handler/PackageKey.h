#pragma once

#include <string>
#include <string_view>

namespace install::update_metadata_parser {

/// The two names whose package key, the component's name, an underscore and the package's name, is
/// compared without being built.
struct PackageKey {
  std::u16string_view component;
  std::u16string_view package;

  /// Builds the key, with no memory to spare.
  std::u16string text() const;

  /// Orders like the texts of both keys: below, at or above zero. Code units compare as unsigned
  /// numbers, a prefix goes first.
  int compare(const PackageKey& other) const noexcept;
};

}  // namespace install::update_metadata_parser
