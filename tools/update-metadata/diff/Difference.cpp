#include "diff/Difference.h"

#include <algorithm>
#include <string_view>
#include <tuple>
#include <utility>

#include "diff/FilesDifference.h"
#include "diff/Matching.h"

namespace update_metadata_tool::diff {
namespace {

using summary::ByteSum;
using summary::Component;
using summary::Contents;
using summary::Package;
using summary::Product;
using summary::Tally;
using summary::Totals;
using Names = std::vector<std::u16string_view>;
using Numbers = std::vector<std::size_t>;

// Of a product or a component.
template <class Item>
Extent extentOf(const Item& item) {
  const Totals before = item.before.value_or(Totals());
  const Totals after = item.after.value_or(Totals());
  return {after.bytesToFetch - before.bytesToFetch, after.bytesUnpacked - before.bytesUnpacked,
          after.bytesDeleted - before.bytesDeleted};
}

Extent extentOfPackage(const PackageChange& package) {
  const PackageSizes before = package.before.value_or(PackageSizes());
  const PackageSizes after = package.after.value_or(PackageSizes());
  return {ByteSum(after.size) - ByteSum(before.size),
          ByteSum(after.uncompressedBytes) - ByteSum(before.uncompressedBytes)};
}

// --- releases -------------------------------------------------------------------------------

std::u16string toText(int number) {
  const std::string digits = std::to_string(number);
  return std::u16string(digits.begin(), digits.end());
}

std::vector<ReleaseChange> compareReleases(const Contents& before, const Contents& after) {
  std::vector<ReleaseChange> changes = {
      {"base.family", before.base.family, after.base.family},
      {"base.version", before.base.version, after.base.version},
      {"target.family", before.target.family, after.target.family},
      {"target.version", before.target.version, after.target.version},
      {"target.updateLevel", toText(before.targetUpdateLevel), toText(after.targetUpdateLevel)},
      {"arch", before.architecture, after.architecture},
  };
  const auto isSame = [](const ReleaseChange& change) { return change.before == change.after; };
  changes.erase(std::remove_if(changes.begin(), changes.end(), isSame), changes.end());
  return changes;
}

// --- packages -------------------------------------------------------------------------------

std::optional<PackageSizes> sizesOf(const std::vector<Package>& packages,
                                    const std::optional<std::size_t>& place) {
  if (!place) {
    return std::nullopt;
  }
  return PackageSizes{packages[*place].size, packages[*place].uncompressedBytes};
}

bool isSame(const std::optional<PackageSizes>& left, const std::optional<PackageSizes>& right) {
  return left && right && left->size == right->size &&
         left->uncompressedBytes == right->uncompressedBytes;
}

std::vector<PackageChange> comparePackages(const std::vector<Package>& before,
                                           const std::vector<Package>& after) {
  std::vector<PackageChange> changes;
  for (const Match& found : match(before, after, &Package::key)) {
    const auto old = sizesOf(before, found.before);
    const auto recent = sizesOf(after, found.after);
    if (!isSame(old, recent)) {
      changes.push_back({eitherOf(found, before, after).key, old, recent});
    }
  }
  putLargestFirst(changes, extentOfPackage);
  return changes;
}

// --- components -----------------------------------------------------------------------------

// The packages of one component with their sizes, in the order of their keys.
using SizesByKey = std::vector<std::tuple<std::u16string_view, std::int64_t, std::int64_t>>;

SizesByKey packagesOf(const Numbers& places, const std::vector<Package>& packages) {
  SizesByKey sizes;
  sizes.reserve(places.size());
  for (const std::size_t place : places) {
    const Package& package = packages[place];
    sizes.emplace_back(package.key, package.size, package.uncompressedBytes);
  }
  std::sort(sizes.begin(), sizes.end());
  return sizes;
}

// Marks the components of the new document whose packages to delete, or to extract, differ from
// those in the old one. A component that only one document has is not marked.
struct ChangedComponents {
  std::vector<bool> toDelete;
  std::vector<bool> toExtract;
};

struct ComponentComparison {
  std::vector<ComponentChange> changes;
  ChangedComponents changed;
};

ComponentComparison compareComponents(const Contents& before, const Contents& after,
                                      const Tally& tallyBefore, const Tally& tallyAfter) {
  ComponentComparison comparison;
  comparison.changed.toDelete.resize(after.components.size());
  comparison.changed.toExtract.resize(after.components.size());
  for (const Match& found : match(before.components, after.components, &Component::name)) {
    ComponentChange change{eitherOf(found, before.components, after.components).name, {}, {}};
    if (found.before && found.after) {
      const auto hasChanged = [&](Numbers Component::*places,
                                  std::vector<Package> Contents::*packages) {
        return packagesOf(before.components[*found.before].*places, before.*packages) !=
               packagesOf(after.components[*found.after].*places, after.*packages);
      };
      const bool isDeletionChanged =
          hasChanged(&Component::packagesToDelete, &Contents::packagesToDelete);
      const bool isExtractionChanged =
          hasChanged(&Component::packagesToExtract, &Contents::packagesToExtract);
      comparison.changed.toDelete[*found.after] = isDeletionChanged;
      comparison.changed.toExtract[*found.after] = isExtractionChanged;
      if (!isDeletionChanged && !isExtractionChanged) {
        continue;
      }
    }
    if (found.before) {
      change.before = tallyBefore.totalsOfComponent(*found.before);
    }
    if (found.after) {
      change.after = tallyAfter.totalsOfComponent(*found.after);
    }
    comparison.changes.push_back(std::move(change));
  }
  putLargestFirst(comparison.changes, extentOf<ComponentChange>);
  return comparison;
}

// --- products -------------------------------------------------------------------------------

Names namesOf(const Numbers& places, const Contents& contents) {
  Names names;
  names.reserve(places.size());
  for (const std::size_t place : places) {
    names.push_back(contents.components[place].name);
  }
  std::sort(names.begin(), names.end());
  return names;
}

bool isAnyMarked(const Numbers& places, const std::vector<bool>& marks) {
  return std::any_of(places.begin(), places.end(),
                     [&marks](std::size_t place) { return marks[place]; });
}

std::vector<ProductChange> compareProducts(const Contents& before, const Contents& after,
                                           Tally& tallyBefore, Tally& tallyAfter,
                                           const ChangedComponents& changed) {
  static const Product kNoProduct;
  std::vector<ProductChange> changes;
  for (const Match& found : match(before.products, after.products, &Product::name)) {
    const Product& old = found.before ? before.products[*found.before] : kNoProduct;
    const Product& recent = found.after ? after.products[*found.after] : kNoProduct;
    const Product& either = eitherOf(found, before.products, after.products);
    ProductChange change{either.name, either.baseCode, {}, {}, {}, {}};
    change.componentsToDelete = compareNames(namesOf(old.componentsToDelete, before),
                                             namesOf(recent.componentsToDelete, after));
    change.componentsToExtract = compareNames(namesOf(old.componentsToExtract, before),
                                              namesOf(recent.componentsToExtract, after));
    if (found.before && found.after && change.componentsToDelete.isEmpty() &&
        change.componentsToExtract.isEmpty() &&
        !isAnyMarked(recent.componentsToDelete, changed.toDelete) &&
        !isAnyMarked(recent.componentsToExtract, changed.toExtract)) {
      continue;
    }
    if (found.before) {
      change.before = tallyBefore.totalsOfProduct(*found.before);
    }
    if (found.after) {
      change.after = tallyAfter.totalsOfProduct(*found.after);
    }
    changes.push_back(std::move(change));
  }
  putLargestFirst(changes, extentOf<ProductChange>);
  return changes;
}

summary::DoubtfulSizes countAllDoubtfulSizes(const Contents& contents, const Tally& tally) {
  summary::DoubtfulSizes sizes = summary::countDoubtfulSizes(contents, tally.selectAll());
  countFilesPackages(contents, sizes);
  return sizes;
}

}  // namespace

bool Difference::isEmpty() const {
  // Without changes in these lists, the totals are equal.
  return releases.empty() && products.empty() && components.empty() && packagesToDelete.empty() &&
         packagesToExtract.empty() && packagesWithFiles.empty();
}

Difference compare(const Contents& before, const Contents& after) {
  Tally tallyBefore(before);
  Tally tallyAfter(after);
  Difference difference;
  difference.releases = compareReleases(before, after);
  difference.totals = {tallyBefore.totalsOfAll(), tallyAfter.totalsOfAll()};
  difference.filesToDelete = {summary::countFilesToDelete(before),
                              summary::countFilesToDelete(after)};
  difference.sha256 = {before.sha256, after.sha256};
  difference.doubtfulSizes = {countAllDoubtfulSizes(before, tallyBefore),
                              countAllDoubtfulSizes(after, tallyAfter)};
  ComponentComparison comparison = compareComponents(before, after, tallyBefore, tallyAfter);
  difference.products = compareProducts(before, after, tallyBefore, tallyAfter, comparison.changed);
  difference.components = std::move(comparison.changes);
  difference.packagesToDelete = comparePackages(before.packagesToDelete, after.packagesToDelete);
  difference.packagesToExtract = comparePackages(before.packagesToExtract, after.packagesToExtract);
  difference.packagesWithFiles = compareFiles(before, after);
  return difference;
}

}  // namespace update_metadata_tool::diff
