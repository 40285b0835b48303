#pragma once

#include <string>
#include <string_view>

namespace install::update_metadata_parser {

/// What stands between the two names of a package key.
constexpr std::u16string_view kKeySeparator = u"_";

/// The two names whose package key, the component's name, the separator and the package's name, is
/// compared without being built.
struct PackageKey {
  std::u16string_view component;  ///< name of the component
  std::u16string_view package;    ///< name of the package

  /// Builds the key, with no memory to spare.
  std::u16string text() const;

  /// Orders like the texts of both keys: below, at or above zero. Code units compare as unsigned
  /// numbers, a prefix goes first.
  int compare(const PackageKey& other) const noexcept;
};

/// Orders components by their names as the keys of their packages begin, each with the separator:
/// below, at or above zero.
int compareComponents(std::u16string_view left, std::u16string_view right) noexcept;

/// Tells whether `longer` is `shorter`, the separator and perhaps more. Of two components with
/// different names, only two such can have packages with one key.
bool isContinued(std::u16string_view shorter, std::u16string_view longer) noexcept;

}  // namespace install::update_metadata_parser
