#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "summary/Contents.h"
#include "summary/DoubtfulSizes.h"
#include "summary/Totals.h"

namespace update_metadata_tool::show {

/// The order of rows.
enum class RowOrder {
  kSize,  ///< largest first: by bytes to fetch, then unpacked, then deleted, then by name
  kName,  ///< by the code units of the name; with one name, largest first
};

/// The user's choices.
struct OverviewOptions {
  RowOrder order = RowOrder::kSize;
  std::size_t top = 5;  ///< number of the largest products, components and packages
};

/// A product or component with its totals.
struct NamedTotals {
  std::u16string name;
  std::optional<std::u16string> baseCode;  ///< of a product, as Product::baseCode
  summary::Totals totals;
};

/// One of the largest packages.
struct LargePackage {
  summary::Package package;
  bool isDeleted = false;  ///< a package to delete, not to extract
};

/// A summary of one document.
struct Overview {
  summary::Totals totals;
  std::size_t filesToDelete = 0;
  std::size_t packagesWithFiles = 0;  ///< packages with single files to delete, or with none

  /// Packages that several products name. In the totals, each counts once.
  std::size_t sharedPackagesToDelete = 0;
  std::size_t sharedPackagesToExtract = 0;

  summary::DoubtfulSizes doubtfulSizes;
  std::vector<NamedTotals> products;  ///< all of them

  /// The largest, in the chosen order.
  std::vector<NamedTotals> largestProducts;
  std::vector<NamedTotals> largestComponents;
  std::vector<LargePackage> largestPackages;
};

/// Makes the summary of a document. Takes time linear in what its products name, and O(n log n) in
/// the number of rows.
Overview makeOverview(const summary::Contents& contents, const OverviewOptions& options);

}  // namespace update_metadata_tool::show
