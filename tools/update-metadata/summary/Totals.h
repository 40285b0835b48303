#pragma once

#include <cstddef>
#include <vector>

#include "summary/ByteSum.h"
#include "summary/Contents.h"

namespace update_metadata_tool::summary {

/// The components and packages that some products name: indices into the lists of Contents, each
/// once, in ascending order.
struct Selection {
  std::vector<std::size_t> components;         ///< named to delete, to extract or both
  std::vector<std::size_t> packagesToDelete;   ///< of the components named to delete
  std::vector<std::size_t> packagesToExtract;  ///< of the components named to extract
};

/// Numbers and sizes of packages. A package counts once, however many components and products
/// contain it. Negative sizes are included.
struct Totals {
  std::size_t components = 0;
  std::size_t packagesToDelete = 0;
  std::size_t packagesToExtract = 0;
  ByteSum bytesToFetch;   ///< sum of Package::size to extract
  ByteSum bytesUnpacked;  ///< sum of Package::uncompressedBytes to extract
  ByteSum bytesDeleted;   ///< sum of Package::size to delete

  /// By how much the installation grows.
  ByteSum netChange() const { return bytesUnpacked - bytesDeleted; }

  /// The space needed beside the installation before anything is deleted.
  ByteSum peakNeed() const { return bytesToFetch + bytesUnpacked; }
};

/// Computes totals of one document, whose contents must outlive it and must not move.
class Tally {
 public:
  explicit Tally(const Contents& contents);

  /// Selects what `products`, indices into Contents::products, name. Linear time in that.
  Selection select(const std::vector<std::size_t>& products);

  /// Selects what all products name: every component and package of the contents.
  Selection selectAll() const;

  /// The totals of a selection.
  Totals totalsOf(const Selection& selection) const;

  /// The totals of one product, by its index. Linear time in what it names.
  Totals totalsOfProduct(std::size_t product) { return totalsOf(select({product})); }

  /// The totals of all products.
  Totals totalsOfAll() const { return totalsOf(selectAll()); }

  /// The totals of all packages of one component, by its index.
  Totals totalsOfComponent(std::size_t component) const;

 private:
  const Contents& contents_;

  // Whether a component or package is in the selection being made; all false between selections.
  std::vector<bool> isComponentSelected_;
  std::vector<bool> isSelectedToDelete_;
  std::vector<bool> isSelectedToExtract_;
};

/// The number of files to delete: the sum of each package's distinct paths.
std::size_t countFilesToDelete(const Contents& contents);

}  // namespace update_metadata_tool::summary
