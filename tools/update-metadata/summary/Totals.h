#pragma once

#include <cstddef>
#include <vector>

#include "summary/ByteSum.h"
#include "summary/Contents.h"

namespace update_metadata_tool::summary {

/// Which components and packages some products name, each once, as numbers of the lists of Contents
/// in ascending order.
struct Selection {
  std::vector<std::size_t> components;         ///< named to delete, to extract or both
  std::vector<std::size_t> packagesToDelete;   ///< of the components named to delete
  std::vector<std::size_t> packagesToExtract;  ///< of the components named to extract
};

/// Numbers and sizes of packages. A package counts once, however many components and products hold
/// it. Sizes are added up as they stand, negative ones too.
struct Totals {
  std::size_t components = 0;
  std::size_t packagesToDelete = 0;
  std::size_t packagesToExtract = 0;
  ByteSum bytesToFetch;   ///< sum of Package::size to extract
  ByteSum bytesUnpacked;  ///< sum of Package::uncompressedBytes to extract
  ByteSum bytesDeleted;   ///< sum of Package::size to delete

  /// What the update adds to the installation: what is unpacked less what is deleted.
  ByteSum netChange() const { return bytesUnpacked - bytesDeleted; }

  /// What is needed beside the installation before anything is deleted: what is fetched and what is
  /// unpacked.
  ByteSum peakNeed() const { return bytesToFetch + bytesUnpacked; }
};

/// Adds up what products of one document name. It refers to the document's contents, which have to
/// stay where they are.
class Tally {
 public:
  explicit Tally(const Contents& contents);

  /// What `products`, numbers of Contents::products, name. Linear in that.
  Selection select(const std::vector<std::size_t>& products);

  /// What all products name: every component and package of the contents.
  Selection selectAll() const;

  /// The totals of what was selected.
  Totals totalsOf(const Selection& selection) const;

  /// The totals of one product, by its number. Linear in what it names.
  Totals totalsOfProduct(std::size_t product) { return totalsOf(select({product})); }

  /// The totals of all products.
  Totals totalsOfAll() const { return totalsOf(selectAll()); }

  /// The totals of one component, by its number: of all that is ever done to its packages.
  Totals totalsOfComponent(std::size_t component) const;

 private:
  const Contents& contents_;

  // Whether a component or package belongs to the selection under way; all unset between two.
  std::vector<bool> isComponentSelected_;
  std::vector<bool> isSelectedToDelete_;
  std::vector<bool> isSelectedToExtract_;
};

/// The number of files to delete: the distinct paths of each package, added up.
std::size_t countFilesToDelete(const Contents& contents);

}  // namespace update_metadata_tool::summary
