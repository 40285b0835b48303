#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "summary/Release.h"

namespace update_metadata_tool::summary {

/// A package to delete or to extract, as the library's answers keep it.
struct Package {
  /// The component's name, an underscore and the package's name.
  std::u16string key;

  /// In bytes, as the library holds it: to fetch, or of the package to delete. It may be negative;
  /// the smallest number of 64 bits stands for a size that the document gives, but that fits no
  /// number of 64 bits.
  std::int64_t size = 0;

  /// Bytes after unpacking, of the same kind; 0 for a package to delete.
  std::int64_t uncompressedBytes = 0;
};

/// A component that some product names.
///
/// Its packages are numbers of Contents::packagesToDelete and Contents::packagesToExtract, each
/// once, in model order. They are the same for every product that names the component, so they
/// stand here and not with the products. Packages to delete are known only if some product names
/// the component to delete, and likewise for those to extract: nothing else is ever done to them.
struct Component {
  std::u16string name;
  std::vector<std::size_t> packagesToDelete;
  std::vector<std::size_t> packagesToExtract;
};

/// A product that names a component.
struct Product {
  std::u16string name;

  /// Nothing without product data, and for a product that they do not know.
  std::optional<std::u16string> baseCode;

  /// Numbers of Contents::components, each once, in the order in which the product names them.
  std::vector<std::size_t> componentsToDelete;
  std::vector<std::size_t> componentsToExtract;
};

/// A package that stays but loses single files.
struct PackageWithFiles {
  std::u16string key;
  std::int64_t size = 0;              ///< of the package, in bytes, as Package::size
  std::vector<std::u16string> files;  ///< paths, each once, in the order of their code units
};

/// A component with such packages.
struct ComponentWithFiles {
  std::u16string name;
  std::vector<PackageWithFiles> packages;

  /// Packages whose keys came before, mostly in another component. They are in none of the
  /// library's answers, but matter where that other component is left out.
  std::vector<PackageWithFiles> repeatedPackages;
};

/// Everything that the library knows of one document, as plain data.
///
/// Names are as the library holds them and may contain anything: what goes to a terminal goes
/// through toVisible(). The model orders products, packages and components with files by their
/// names in UTF-8, byte by byte, and the components of a product as the document names them.
///
/// Duplicates are resolved as by the library's queries: the first in model order counts. Of
/// packages to extract with one key ("a" with "b_c" and "a_b" with "c", or one component in two
/// products) the first gives the sizes, for every product; the others are not kept. Packages to
/// delete and packages with files follow the same rule, each kind for itself. A package with files
/// belongs to the component that it was first found in; later ones with its key are kept aside.
struct Contents {
  Release base;
  Release target;
  int targetUpdateLevel = 0;
  std::u16string architecture;

  std::vector<Package> packagesToDelete;   ///< each key once, in model order
  std::vector<Package> packagesToExtract;  ///< each key once, in model order
  std::vector<Component> components;       ///< each name once, in the order of their first mention
  std::vector<Product> products;           ///< in model order; two may have one name or base code

  /// In model order, each name once.
  std::vector<ComponentWithFiles> componentsWithFiles;
};

/// The package's own name: what stands behind the component's name and the underscore in its key.
///
/// \pre `package` is one of `component`
std::u16string packageName(const Component& component, const Package& package);

}  // namespace update_metadata_tool::summary
