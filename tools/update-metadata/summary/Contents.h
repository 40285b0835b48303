#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace update_metadata_tool::summary {

/// A release that an update starts from or leads to.
struct Release {
  std::u16string family;
  std::u16string version;
};

/// A package to delete or to extract, as in the library's answers.
struct Package {
  /// The component's name, an underscore and the package's name.
  std::u16string key;

  /// Bytes to fetch, or of the package to delete, as the library reads them. May be negative; the
  /// smallest 64-bit number means a size in the document that does not fit into 64 bits.
  std::int64_t size = 0;

  /// Bytes after unpacking, with the same range; 0 for a package to delete.
  std::int64_t uncompressedBytes = 0;
};

/// A component that some product names.
///
/// Its packages are indices into Contents::packagesToDelete and Contents::packagesToExtract, each
/// once, in model order. They belong to the component because every product that names it has the
/// same ones. Packages to delete are listed only if some product names the component to delete, and
/// likewise for packages to extract.
struct Component {
  std::u16string name;
  std::vector<std::size_t> packagesToDelete;
  std::vector<std::size_t> packagesToExtract;
};

/// A product that names a component.
struct Product {
  std::u16string name;

  /// Nothing without product data, or if they do not contain the product.
  std::optional<std::u16string> baseCode;

  /// Indices into Contents::components, each once, in the order in which the product names them.
  std::vector<std::size_t> componentsToDelete;
  std::vector<std::size_t> componentsToExtract;
};

/// A package that is kept except for single files.
struct PackageWithFiles {
  std::u16string key;
  std::int64_t size = 0;              ///< of the package, in bytes, as Package::size
  std::vector<std::u16string> files;  ///< paths of the files, each once, ordered by code units
};

/// A component with such packages.
struct ComponentWithFiles {
  std::u16string name;
  std::vector<PackageWithFiles> packages;

  /// Duplicates of packages that came before, usually in another component. The library's answers
  /// omit them, but they count where that other component is left out.
  std::vector<PackageWithFiles> repeatedPackages;
};

/// Everything that the library knows about one document, as plain data.
///
/// Names may contain anything, so pass them through toVisible() before writing them to a terminal.
/// The model orders products, packages and components with files by the bytes of their names in
/// UTF-8, and the components of a product as the document does.
///
/// Duplicates are resolved as in the library's queries: the first in model order counts. Among
/// packages to extract with one key ("a" with "b_c" and "a_b" with "c", or one component in two
/// products), the first gives the sizes for every product and the others are dropped. The same
/// holds for packages to delete and, separately, for packages with files, whose duplicates are kept
/// in ComponentWithFiles::repeatedPackages.
struct Contents {
  std::string sha256;  ///< of the document, if it was requested
  Release base;
  Release target;
  int targetUpdateLevel = 0;
  std::u16string architecture;

  std::vector<Package> packagesToDelete;   ///< each key once, in model order
  std::vector<Package> packagesToExtract;  ///< each key once, in model order
  std::vector<Component> components;       ///< each name once, in order of first mention
  std::vector<Product> products;           ///< in model order; two may have one name or base code

  /// In model order, each name once.
  std::vector<ComponentWithFiles> componentsWithFiles;
};

}  // namespace update_metadata_tool::summary
