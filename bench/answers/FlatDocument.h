#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace bench::answers {

/// A part of a list: from `first` up to, but not including, `last`.
struct Range {
  std::uint32_t first = 0;
  std::uint32_t last = 0;
};

/// A decoded document: one flat list for each kind of thing, and ranges of the list below.
///
/// Texts are views into what a library parsed, which must remain valid. They are in the order of
/// the document until sortByName() is called.
struct FlatDocument {
  /// A package of a component; one to delete needs no sizes, because no answer contains them.
  struct Package {
    std::string_view name;
    std::int64_t size = 0;
    std::int64_t uncompressedBytes = 0;
  };
  struct Component {
    std::string_view name;
    Range toDelete;   ///< in `packages`
    Range toExtract;  ///< in `packages`
  };
  struct Product {
    std::string_view name;
    Range toDelete;   ///< in `namings`
    Range toExtract;  ///< in `namings`
  };
  struct PackageWithFiles {
    std::string_view name;
    std::int64_t size = 0;
    Range files;  ///< in `files`
  };
  struct ComponentWithFiles {
    std::string_view name;
    Range packages;  ///< in `packagesWithFiles`
  };

  std::vector<Package> packages;
  std::vector<Component> components;
  std::vector<std::string_view> namings;  ///< names of components
  std::vector<Product> products;
  std::vector<std::string_view> files;
  std::vector<PackageWithFiles> packagesWithFiles;
  std::vector<ComponentWithFiles> componentsWithFiles;

  /// Sorts everything that has a name, except namings and files, and keeps the first of equal
  /// names.
  void sortByName();

  /// The place in `components` of each of their names.
  std::unordered_map<std::string_view, std::uint32_t> componentsByName() const;
};

/// Calls `append`, which appends to `list`, and returns the range of what it appended.
template <class List, class Append>
Range rangeOf(const List& list, Append append) {
  Range range;
  range.first = static_cast<std::uint32_t>(list.size());
  append();
  range.last = static_cast<std::uint32_t>(list.size());
  return range;
}

}  // namespace bench::answers
