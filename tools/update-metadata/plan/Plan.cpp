#include "plan/Plan.h"

#include <algorithm>
#include <cstddef>
#include <set>
#include <string_view>

namespace update_metadata_tool::plan {
namespace {

using summary::Contents;
using summary::PackageWithFiles;

template <class Keyed>
void sortByKey(std::vector<Keyed>& rows) {
  std::sort(rows.begin(), rows.end(),
            [](const Keyed& left, const Keyed& right) { return left.key < right.key; });
}

template <class Item>
std::vector<Item> pick(const std::vector<Item>& items, const std::vector<std::size_t>& numbers) {
  std::vector<Item> picked;
  picked.reserve(numbers.size());
  for (const std::size_t number : numbers) {
    picked.push_back(items[number]);
  }
  return picked;
}

// The names of the components that products name, but none of the chosen ones does.
std::set<std::u16string_view> findForeignComponents(const Contents& contents,
                                                    const summary::Selection& chosen) {
  std::set<std::u16string_view> names;
  for (std::size_t number = 0; number < contents.components.size(); ++number) {
    if (!std::binary_search(chosen.components.begin(), chosen.components.end(), number)) {
      names.insert(contents.components[number].name);
    }
  }
  return names;
}

PlannedFiles planFiles(const PackageWithFiles& package) {
  PlannedFiles planned{package.key, package.size, {}};
  planned.files.reserve(package.files.size());
  for (const std::u16string& file : package.files) {
    planned.files.push_back({file, std::nullopt});
  }
  return planned;
}

// The packages of the components that are not foreign, each key once. A repeated package counts
// only if the first with its key belongs to a foreign component.
std::vector<const PackageWithFiles*> pickPackagesWithFiles(
    const Contents& contents, const std::set<std::u16string_view>& foreign) {
  std::vector<const PackageWithFiles*> picked;
  std::set<std::u16string_view> keys;
  for (const auto packages :
       {&summary::ComponentWithFiles::packages, &summary::ComponentWithFiles::repeatedPackages}) {
    for (const summary::ComponentWithFiles& component : contents.componentsWithFiles) {
      if (foreign.count(component.name) != 0) {
        continue;
      }
      for (const PackageWithFiles& package : component.*packages) {
        if (keys.insert(package.key).second) {
          picked.push_back(&package);
        }
      }
    }
  }
  return picked;
}

}  // namespace

Plan makePlan(const Contents& contents, const ProductChoice& choice) {
  summary::Tally tally(contents);
  const summary::Selection selection = tally.select(choice.products);
  Plan plan;
  plan.products = pick(contents.products, choice.products);
  plan.leftOut = pick(contents.products, choice.leftOut);
  plan.packagesToDelete = pick(contents.packagesToDelete, selection.packagesToDelete);
  sortByKey(plan.packagesToDelete);
  plan.packagesToExtract = pick(contents.packagesToExtract, selection.packagesToExtract);
  sortByKey(plan.packagesToExtract);
  plan.doubtfulSizes = summary::countDoubtfulSizes(contents, selection);
  const std::set<std::u16string_view> foreign = findForeignComponents(contents, selection);
  for (const PackageWithFiles* const package : pickPackagesWithFiles(contents, foreign)) {
    plan.filesToDelete.push_back(planFiles(*package));
    plan.doubtfulSizes.count(package->size);
  }
  sortByKey(plan.filesToDelete);
  plan.totals = tally.totalsOf(selection);
  return plan;
}

InstalledCounts searchForFiles(Plan& plan, const InstalledTree& tree,
                               terminal::ProgressLine& progress) {
  InstalledCounts counts = {{FileState::kPresent, 0},
                            {FileState::kMissing, 0},
                            {FileState::kFolder, 0},
                            {FileState::kOutside, 0},
                            {FileState::kUnknown, 0}};
  for (PlannedFiles& package : plan.filesToDelete) {
    for (PlannedFile& file : package.files) {
      progress.update();
      file.installed = tree.find(file.path);
      ++counts[file.installed->state];
    }
  }
  return counts;
}

}  // namespace update_metadata_tool::plan
