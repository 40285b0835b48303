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

/// How the new document differs from the old one in an item.
enum class Change { kAdded, kRemoved, kChanged };

/// The names that only the new document has, and those that only the old one has, each ordered by
/// code units.
struct NameChanges {
  std::vector<std::u16string> added;
  std::vector<std::u16string> removed;

  bool isEmpty() const { return added.empty() && removed.empty(); }
};

/// A member of the releases that differs.
struct ReleaseChange {
  const char* field;  ///< "base.family", as the JSON answers name it
  std::u16string before;
  std::u16string after;
};

/// A product that only one document has, or whose components or packages differ.
///
/// In this and the following structs, an added item has no `before` and a removed one no `after`.
struct ProductChange {
  std::u16string name;
  std::optional<std::u16string> baseCode;  ///< as Product::baseCode
  std::optional<summary::Totals> before;
  std::optional<summary::Totals> after;
  NameChanges componentsToDelete;
  NameChanges componentsToExtract;
};

/// A component that products of only one document name, or whose packages differ.
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

/// A package with single files to delete, by its key and its component.
struct FilesChange {
  std::u16string key;
  std::u16string component;
  bool isKeyShared = false;            ///< with another component of either document
  std::optional<std::int64_t> before;  ///< size of the package in bytes
  std::optional<std::int64_t> after;
  NameChanges files;
};

/// A value of both documents.
template <class Value>
struct Sides {
  Value before{};
  Value after{};
};

/// All differences between two documents.
///
/// Names and keys are compared as the library reads them, without regard to order. If several
/// products have one name, the first is compared with the first, and so on. In each list, the
/// largest change of either sign comes first: by bytes to fetch, then unpacked, then deleted, for
/// files by their number, and finally by name.
///
/// Among packages with files that have one key, the chosen products decide which one counts. So
/// they are compared for every component, although the totals, like the library, count only the
/// first.
struct Difference {
  Sides<std::string> sha256;  ///< of the documents, if they were requested
  std::vector<ReleaseChange> releases;
  Sides<summary::Totals> totals;
  Sides<std::size_t> filesToDelete;
  Sides<summary::DoubtfulSizes> doubtfulSizes;  ///< of all packages, including those with files
  std::vector<ProductChange> products;
  std::vector<ComponentChange> components;
  std::vector<PackageChange> packagesToDelete;
  std::vector<PackageChange> packagesToExtract;
  std::vector<FilesChange> packagesWithFiles;

  /// Returns whether there are no differences.
  bool isEmpty() const;
};

/// How `item`, one of the structs above, differs.
template <class Item>
Change changeOf(const Item& item) {
  if (!item.before) {
    return Change::kAdded;
  }
  return item.after ? Change::kChanged : Change::kRemoved;
}

/// Compares two documents in O(n log n) time, for n entries including what their products name.
Difference compare(const summary::Contents& before, const summary::Contents& after);

}  // namespace update_metadata_tool::diff
