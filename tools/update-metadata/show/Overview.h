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

/// What rows are ordered by.
enum class RowOrder {
  kSize,  ///< the largest first: by bytes to fetch, then to unpack, then to delete, then by name
  kName,  ///< by the code units of the name; of one name, the largest first
};

/// What the user wants to see.
struct OverviewOptions {
  RowOrder order = RowOrder::kSize;
  std::size_t top = 5;  ///< how many of the largest products, components and packages
};

/// One product or component, with what it names or holds.
struct NamedTotals {
  std::u16string name;
  std::optional<std::u16string> baseCode;  ///< of a product, as Product::baseCode
  summary::Totals totals;
};

/// One of the largest packages.
struct LargePackage {
  summary::Package package;
  bool isDeleted = false;  ///< a package to delete; else one to extract
};

/// What one document does, on one screen.
struct Overview {
  summary::Totals totals;
  std::size_t filesToDelete = 0;
  std::size_t packagesWithFiles = 0;  ///< that lose files or list none

  /// Packages that several products name. In the totals each counts once.
  std::size_t sharedPackagesToDelete = 0;
  std::size_t sharedPackagesToExtract = 0;

  summary::DoubtfulSizes doubtfulSizes;
  std::vector<NamedTotals> products;  ///< all of them

  /// The largest, in the order that was asked for.
  std::vector<NamedTotals> largestProducts;
  std::vector<NamedTotals> largestComponents;
  std::vector<LargePackage> largestPackages;
};

/// Adds up and orders. Linear in what each product names, and n log n in the rows.
Overview makeOverview(const summary::Contents& contents, const OverviewOptions& options);

}  // namespace update_metadata_tool::show
