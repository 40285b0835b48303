#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "plan/InstalledTree.h"
#include "plan/ProductChoice.h"
#include "summary/Contents.h"
#include "summary/DoubtfulSizes.h"
#include "summary/Totals.h"
#include "terminal/ProgressLine.h"

namespace update_metadata_tool::plan {

/// One file to delete, and what became of looking for it.
struct PlannedFile {
  std::u16string path;
  std::optional<InstalledFile> installed;  ///< nothing before it was looked for
};

/// A package with single files to delete.
struct PlannedFiles {
  std::u16string key;
  std::int64_t size = 0;  ///< of the package, in bytes
  std::vector<PlannedFile> files;
};

/// What an installer would do for some products. Everything is ordered by key, and the files of a
/// package by path, as the library's answers are.
struct Plan {
  std::vector<summary::Product> products;
  std::vector<summary::Product> leftOut;  ///< as ProductChoice::leftOut
  std::vector<summary::Package> packagesToDelete;
  std::vector<PlannedFiles> filesToDelete;
  std::vector<summary::Package> packagesToExtract;
  summary::Totals totals;
  summary::DoubtfulSizes
      doubtfulSizes;  ///< of packages with files, too, though no sum counts these
};

/// How many of the files to delete were found how.
struct InstalledCounts {
  std::size_t present = 0;
  std::size_t missing = 0;
  std::size_t folder = 0;
  std::size_t outside = 0;
  std::size_t unknown = 0;
};

/// Makes the plan for the chosen products.
///
/// Files to delete belong to no product: those of a component are planned if a chosen product names
/// that component, or if no product of the document does. Of packages with one key in several
/// planned components the first in model order counts, as in the library's answers.
Plan makePlan(const summary::Contents& contents, const ProductChoice& choice);

/// Looks for every file to delete of `plan` in `tree`, and counts what was found. Changes nothing
/// but `plan`, and tells `progress` that it goes on.
InstalledCounts lookForFiles(Plan& plan, const InstalledTree& tree,
                             terminal::ProgressLine& progress);

}  // namespace update_metadata_tool::plan
