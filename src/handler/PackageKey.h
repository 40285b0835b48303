#pragma once

#include <string>
#include <string_view>

namespace install::update_metadata_parser {

/// The separator between the two names of a package key.
constexpr std::u16string_view kKeySeparator = u"_";

/// The two names of a package key, which is compared without being built. The key is the
/// component's name, the separator and the package's name.
struct PackageKey {
  std::u16string_view component;  ///< name of the component
  std::u16string_view package;    ///< name of the package

  /// Writes the key into `text`, whose memory is used again.
  void copyTo(std::u16string& text) const;

  /// Compares as the texts of both keys do; the result is below, at or above zero. Code units
  /// compare as unsigned numbers, with a prefix first.
  int compare(const PackageKey& other) const noexcept;
};

/// Compares the names of two components, each followed by the separator, as the keys of their
/// packages begin; the result is below, at or above zero.
int compareComponents(std::u16string_view left, std::u16string_view right) noexcept;

/// Whether `longer` begins with `shorter` and the separator. Two components with different names
/// can have packages with one key only in this case.
bool isContinued(std::u16string_view shorter, std::u16string_view longer) noexcept;

}  // namespace install::update_metadata_parser
