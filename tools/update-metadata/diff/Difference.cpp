#include "diff/Difference.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <tuple>
#include <utility>

namespace update_metadata_tool::diff {
namespace {

using summary::ByteSum;
using summary::ComponentWithFiles;
using summary::Contents;
using summary::Package;
using summary::PackageWithFiles;
using summary::Product;
using summary::Tally;
using summary::Totals;
using Names = std::vector<std::u16string_view>;
using Numbers = std::vector<std::size_t>;

// --- matching what has one name -------------------------------------------------------------

const std::u16string& nameOf(const Product& product) {
  return product.name;
}

const std::u16string& nameOf(const summary::Component& component) {
  return component.name;
}

const std::u16string& nameOf(const Package& package) {
  return package.key;
}

/// A package with files, and where it is.
struct LocatedPackage {
  const PackageWithFiles* package;
  const ComponentWithFiles* component;
};

std::pair<std::u16string_view, std::u16string_view> nameOf(const LocatedPackage& located) {
  return {located.package->key, located.component->name};
}

// The places of the items in the order of their names, of one name in their own order.
template <class Item>
Numbers orderByName(const std::vector<Item>& items) {
  Numbers order(items.size());
  for (std::size_t place = 0; place != order.size(); ++place) {
    order[place] = place;
  }
  std::stable_sort(order.begin(), order.end(), [&](std::size_t left, std::size_t right) {
    return nameOf(items[left]) < nameOf(items[right]);
  });
  return order;
}

// The places of one item in both documents.
struct Match {
  std::optional<std::size_t> before;
  std::optional<std::size_t> after;
};

// Puts together what has one name, in the order of the names.
template <class Item>
std::vector<Match> match(const std::vector<Item>& before, const std::vector<Item>& after) {
  const Numbers old = orderByName(before);
  const Numbers recent = orderByName(after);
  std::vector<Match> matches;
  for (std::size_t i = 0, j = 0; i != old.size() || j != recent.size();) {
    int order = 0;
    if (i == old.size()) {
      order = 1;
    } else if (j == recent.size()) {
      order = -1;
    } else {
      const auto& left = nameOf(before[old[i]]);
      const auto& right = nameOf(after[recent[j]]);
      order = left < right ? -1 : right < left ? 1 : 0;
    }
    Match found;
    if (order <= 0) {
      found.before = old[i++];
    }
    if (order >= 0) {
      found.after = recent[j++];
    }
    matches.push_back(found);
  }
  return matches;
}

// The item of a match, of the new document if that has it.
template <class Item>
const Item& eitherOf(const Match& found, const std::vector<Item>& before,
                     const std::vector<Item>& after) {
  return found.after ? after[*found.after] : before[*found.before];
}

// The names of the one list that the other does not hold. Both are in order.
template <class Name>
std::vector<std::u16string> subtract(const std::vector<Name>& names,
                                     const std::vector<Name>& others) {
  std::vector<Name> left;
  std::set_difference(names.begin(), names.end(), others.begin(), others.end(),
                      std::back_inserter(left));
  return std::vector<std::u16string>(left.begin(), left.end());
}

template <class Name>
NameChanges compareNames(const std::vector<Name>& before, const std::vector<Name>& after) {
  return {subtract(after, before), subtract(before, after)};
}

// --- the largest first ----------------------------------------------------------------------

// How large a change is. What counts more comes first.
using Extent = std::tuple<ByteSum, ByteSum, ByteSum>;

ByteSum magnitude(const ByteSum& sum) {
  return sum.isNegative() ? ByteSum() - sum : sum;
}

// Of a product or a component.
template <class Item>
Extent extentOf(const Item& item) {
  const Totals before = item.before.value_or(Totals());
  const Totals after = item.after.value_or(Totals());
  return {magnitude(after.bytesToFetch - before.bytesToFetch),
          magnitude(after.bytesUnpacked - before.bytesUnpacked),
          magnitude(after.bytesDeleted - before.bytesDeleted)};
}

Extent extentOf(const PackageChange& package) {
  const PackageSizes before = package.before.value_or(PackageSizes());
  const PackageSizes after = package.after.value_or(PackageSizes());
  return {magnitude(ByteSum(after.size) - ByteSum(before.size)),
          magnitude(ByteSum(after.uncompressedBytes) - ByteSum(before.uncompressedBytes)),
          ByteSum()};
}

Extent extentOf(const FilesChange& package) {
  const std::size_t files = package.files.added.size() + package.files.removed.size();
  return {ByteSum(static_cast<std::int64_t>(files)),
          magnitude(ByteSum(package.after.value_or(0)) - ByteSum(package.before.value_or(0))),
          ByteSum()};
}

// The items are in the order of their names, which stays among those of one extent.
template <class Item>
void putLargestFirst(std::vector<Item>& items) {
  std::vector<std::pair<Extent, std::size_t>> extents;
  extents.reserve(items.size());
  for (const Item& item : items) {
    extents.emplace_back(extentOf(item), extents.size());
  }
  std::stable_sort(extents.begin(), extents.end(),
                   [](const auto& left, const auto& right) { return right.first < left.first; });
  std::vector<Item> ordered;
  ordered.reserve(items.size());
  for (const auto& [extent, place] : extents) {
    ordered.push_back(std::move(items[place]));
  }
  items = std::move(ordered);
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
  for (const Match& found : match(before, after)) {
    const auto old = sizesOf(before, found.before);
    const auto recent = sizesOf(after, found.after);
    if (!isSame(old, recent)) {
      changes.push_back({eitherOf(found, before, after).key, old, recent});
    }
  }
  putLargestFirst(changes);
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

// Of which components of the new document something else is deleted, or extracted, than before.
// Only those that both documents have are marked.
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
  for (const Match& found : match(before.components, after.components)) {
    ComponentChange change{eitherOf(found, before.components, after.components).name, {}, {}};
    if (found.before && found.after) {
      const summary::Component& old = before.components[*found.before];
      const summary::Component& recent = after.components[*found.after];
      const bool isDeletedAlike = packagesOf(old.packagesToDelete, before.packagesToDelete) ==
                                  packagesOf(recent.packagesToDelete, after.packagesToDelete);
      const bool isExtractedAlike = packagesOf(old.packagesToExtract, before.packagesToExtract) ==
                                    packagesOf(recent.packagesToExtract, after.packagesToExtract);
      comparison.changed.toDelete[*found.after] = !isDeletedAlike;
      comparison.changed.toExtract[*found.after] = !isExtractedAlike;
      if (isDeletedAlike && isExtractedAlike) {
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
  putLargestFirst(comparison.changes);
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
  for (const Match& found : match(before.products, after.products)) {
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
  putLargestFirst(changes);
  return changes;
}

// --- files ----------------------------------------------------------------------------------

// Every package that may count for some products: of one key, the first of each component.
std::vector<LocatedPackage> listPackagesWithFiles(const Contents& contents) {
  std::vector<LocatedPackage> list;
  for (const ComponentWithFiles& component : contents.componentsWithFiles) {
    for (const auto packages :
         {&ComponentWithFiles::packages, &ComponentWithFiles::repeatedPackages}) {
      for (const PackageWithFiles& package : component.*packages) {
        list.push_back({&package, &component});
      }
    }
  }
  std::stable_sort(list.begin(), list.end(),
                   [](const LocatedPackage& left, const LocatedPackage& right) {
                     return nameOf(left) < nameOf(right);
                   });
  const auto isSameName = [](const LocatedPackage& left, const LocatedPackage& right) {
    return nameOf(left) == nameOf(right);
  };
  list.erase(std::unique(list.begin(), list.end(), isSameName), list.end());
  return list;
}

std::vector<FilesChange> compareFiles(const Contents& before, const Contents& after) {
  static const PackageWithFiles kNoPackage;
  const auto olds = listPackagesWithFiles(before);
  const auto recents = listPackagesWithFiles(after);
  const std::vector<Match> matches = match(olds, recents);
  const auto keyAt = [&](std::size_t place) -> const std::u16string& {
    return eitherOf(matches[place], olds, recents).package->key;
  };
  std::vector<FilesChange> changes;
  for (std::size_t place = 0; place != matches.size(); ++place) {
    const Match& found = matches[place];
    const PackageWithFiles& old = found.before ? *olds[*found.before].package : kNoPackage;
    const PackageWithFiles& recent = found.after ? *recents[*found.after].package : kNoPackage;
    FilesChange change;
    change.key = keyAt(place);
    change.component = eitherOf(found, olds, recents).component->name;
    // The matches are in the order of the keys.
    change.isKeyShared = (place != 0 && keyAt(place - 1) == change.key) ||
                         (place + 1 != matches.size() && keyAt(place + 1) == change.key);
    change.files = compareNames(old.files, recent.files);
    if (found.before && found.after && old.size == recent.size && change.files.isEmpty()) {
      continue;
    }
    if (found.before) {
      change.before = old.size;
    }
    if (found.after) {
      change.after = recent.size;
    }
    changes.push_back(std::move(change));
  }
  putLargestFirst(changes);
  return changes;
}

summary::DoubtfulSizes countAllDoubtfulSizes(const Contents& contents, const Tally& tally) {
  summary::DoubtfulSizes sizes = summary::countDoubtfulSizes(contents, tally.selectAll());
  for (const LocatedPackage& located : listPackagesWithFiles(contents)) {
    sizes.count(located.package->size);
  }
  return sizes;
}

}  // namespace

bool Difference::isEmpty() const {
  // A document without changes in these has the same totals, too.
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
