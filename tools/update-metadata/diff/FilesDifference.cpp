#include "diff/FilesDifference.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>

#include "diff/Matching.h"

namespace update_metadata_tool::diff {
namespace {

using summary::ByteSum;
using summary::ComponentWithFiles;
using summary::Contents;
using summary::PackageWithFiles;

/// A package with files, and its component.
struct LocatedPackage {
  const PackageWithFiles* package;
  const ComponentWithFiles* component;
};

std::pair<std::u16string_view, std::u16string_view> nameOf(const LocatedPackage& located) {
  return {located.package->key, located.component->name};
}

Extent extentOf(const FilesChange& package) {
  const std::size_t files = package.files.added.size() + package.files.removed.size();
  return {ByteSum(static_cast<std::int64_t>(files)),
          ByteSum(package.after.value_or(0)) - ByteSum(package.before.value_or(0))};
}

// Every package that may count for some choice of products: the first with its key in each
// component.
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

}  // namespace

std::vector<FilesChange> compareFiles(const Contents& before, const Contents& after) {
  static const PackageWithFiles kNoPackage;
  const auto olds = listPackagesWithFiles(before);
  const auto recents = listPackagesWithFiles(after);
  const std::vector<Match> matches = match(olds, recents, nameOf);
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
  putLargestFirst(changes, extentOf);
  return changes;
}

void countFilesPackages(const Contents& contents, summary::DoubtfulSizes& sizes) {
  for (const LocatedPackage& located : listPackagesWithFiles(contents)) {
    sizes.count(located.package->size);
  }
}

}  // namespace update_metadata_tool::diff
