#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "summary/Contents.h"
#include "summary/DoubtfulSizes.h"
#include "summary/Totals.h"

namespace update_metadata_tool::diff {

/// What became of something from the old document to the new one.
enum class Change { kAdded, kRemoved, kChanged };

/// Which of several names only the new document has, and which only the old one, each in the order
/// of their code units.
struct NameChanges {
  std::vector<std::u16string> added;
  std::vector<std::u16string> removed;

  bool isEmpty() const { return added.empty() && removed.empty(); }
};

/// A text or number about the releases that differs.
struct ReleaseChange {
  const char* field;  ///< "base.family", as the JSON answers name it
  std::u16string before;
  std::u16string after;
};

/// In each of the following, `before` is missing of what was added, `after` of what was removed.

/// A product that only one document has, or that names other components, or whose packages differ.
struct ProductChange {
  std::u16string name;
  std::optional<std::u16string> baseCode;  ///< as Product::baseCode
  std::optional<summary::Totals> before;
  std::optional<summary::Totals> after;
  NameChanges componentsToDelete;
  NameChanges componentsToExtract;
};

/// A component that the products of only one document name, or whose packages differ.
struct ComponentChange {
  std::u16string name;
  std::optional<summary::Totals> before;
  std::optional<summary::Totals> after;
};

struct PackageSizes {
  std::int64_t size = 0;
  std::int64_t uncompressedBytes = 0;  ///< 0 of a package to delete
};

/// A package to delete or to extract, by its key.
struct PackageChange {
  std::u16string key;
  std::optional<PackageSizes> before;
  std::optional<PackageSizes> after;
};

/// A package with single files to delete, by its key and the component that has it.
struct FilesChange {
  std::u16string key;
  std::u16string component;
  bool isKeyShared = false;            ///< by another component, of either document
  std::optional<std::int64_t> before;  ///< size of the package in bytes
  std::optional<std::int64_t> after;
  NameChanges files;
};

/// One number, of both documents.
template <class Number>
struct Sides {
  Number before{};
  Number after{};
};

/// Everything in which two documents differ.
///
/// Names and keys are compared as the library holds them; of several products with one name the
/// first is compared with the first, and so on. Orders are not compared. In each list, the largest
/// change comes first: by bytes to fetch, to unpack, to delete, either way; of files by their
/// number; then by name.
///
/// Of packages with files that have one key, the products that are chosen decide which one counts.
/// So every component's is compared, though the totals, as the library, count only the first.
struct Difference {
  std::vector<ReleaseChange> releases;
  Sides<summary::Totals> totals;
  Sides<std::size_t> filesToDelete;
  Sides<summary::DoubtfulSizes> doubtfulSizes;  ///< of all packages, also of those with files
  std::vector<ProductChange> products;
  std::vector<ComponentChange> components;
  std::vector<PackageChange> packagesToDelete;
  std::vector<PackageChange> packagesToExtract;
  std::vector<FilesChange> packagesWithFiles;

  /// Tells whether both documents say the same.
  bool isEmpty() const;
};

/// What `item`, one of the above, is an example of.
template <class Item>
Change changeOf(const Item& item) {
  if (!item.before) {
    return Change::kAdded;
  }
  return item.after ? Change::kChanged : Change::kRemoved;
}

/// Compares two documents. O(n log n) in what they hold and what their products name.
Difference compare(const summary::Contents& before, const summary::Contents& after);

}  // namespace update_metadata_tool::diff
