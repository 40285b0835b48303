#include "show/Overview.h"

#include <algorithm>
#include <tuple>

namespace update_metadata_tool::show {
namespace {

bool isLarger(const NamedTotals& left, const NamedTotals& right) {
  const summary::Totals& ours = left.totals;
  const summary::Totals& others = right.totals;
  return std::tie(others.bytesToFetch, others.bytesUnpacked, others.bytesDeleted, left.name) <
         std::tie(ours.bytesToFetch, ours.bytesUnpacked, ours.bytesDeleted, right.name);
}

bool isLarger(const LargePackage& left, const LargePackage& right) {
  return std::tie(right.package.size, right.package.uncompressedBytes, left.package.key,
                  left.isDeleted) < std::tie(left.package.size, left.package.uncompressedBytes,
                                             right.package.key, right.isDeleted);
}

const std::u16string& nameOf(const NamedTotals& row) {
  return row.name;
}

const std::u16string& nameOf(const LargePackage& row) {
  return row.package.key;
}

// Equal rows stay in model order.
template <class Row>
void sortRows(std::vector<Row>& rows, RowOrder order) {
  std::stable_sort(rows.begin(), rows.end(), [order](const Row& left, const Row& right) {
    const int names = order == RowOrder::kName ? nameOf(left).compare(nameOf(right)) : 0;
    return names != 0 ? names < 0 : isLarger(left, right);
  });
}

template <class Row>
void keepLargest(std::vector<Row>& rows, const OverviewOptions& options) {
  sortRows(rows, RowOrder::kSize);
  rows.resize(std::min(rows.size(), options.top));
  sortRows(rows, options.order);
}

std::vector<LargePackage> listPackages(const summary::Contents& contents) {
  std::vector<LargePackage> packages;
  packages.reserve(contents.packagesToDelete.size() + contents.packagesToExtract.size());
  for (const summary::Package& package : contents.packagesToDelete) {
    packages.push_back({package, true});
  }
  for (const summary::Package& package : contents.packagesToExtract) {
    packages.push_back({package, false});
  }
  return packages;
}

/// Counts the packages that several products use.
class UseCounts {
 public:
  explicit UseCounts(std::size_t packages) : uses_(packages) {}

  void add(const std::vector<std::size_t>& packages) {
    for (const std::size_t package : packages) {
      ++uses_[package];
    }
  }

  std::size_t countShared() const {
    return static_cast<std::size_t>(
        std::count_if(uses_.begin(), uses_.end(), [](std::size_t uses) { return uses > 1; }));
  }

 private:
  std::vector<std::size_t> uses_;
};

void addProducts(const summary::Contents& contents, summary::Tally& tally, Overview& overview) {
  UseCounts toDelete(contents.packagesToDelete.size());
  UseCounts toExtract(contents.packagesToExtract.size());
  for (std::size_t number = 0; number < contents.products.size(); ++number) {
    const summary::Product& product = contents.products[number];
    const summary::Selection selection = tally.select({number});
    toDelete.add(selection.packagesToDelete);
    toExtract.add(selection.packagesToExtract);
    overview.products.push_back({product.name, product.baseCode, tally.totalsOf(selection)});
  }
  overview.sharedPackagesToDelete = toDelete.countShared();
  overview.sharedPackagesToExtract = toExtract.countShared();
}

}  // namespace

Overview makeOverview(const summary::Contents& contents, const OverviewOptions& options) {
  Overview overview;
  summary::Tally tally(contents);
  overview.totals = tally.totalsOfAll();
  overview.filesToDelete = summary::countFilesToDelete(contents);
  for (const summary::ComponentWithFiles& component : contents.componentsWithFiles) {
    overview.packagesWithFiles += component.packages.size();
  }
  overview.doubtfulSizes = summary::countDoubtfulSizes(contents, tally.selectAll());
  addProducts(contents, tally, overview);
  overview.largestProducts = overview.products;
  keepLargest(overview.largestProducts, options);
  sortRows(overview.products, options.order);
  for (std::size_t number = 0; number < contents.components.size(); ++number) {
    overview.largestComponents.push_back(
        {contents.components[number].name, std::nullopt, tally.totalsOfComponent(number)});
  }
  keepLargest(overview.largestComponents, options);
  overview.largestPackages = listPackages(contents);
  keepLargest(overview.largestPackages, options);
  return overview;
}

}  // namespace update_metadata_tool::show
