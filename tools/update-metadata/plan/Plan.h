#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
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

/// One file to delete, and the result of searching for it.
struct PlannedFile {
  std::u16string path;
  std::optional<InstalledFile> installed;  ///< nothing before the search
};

/// A package with single files to delete.
struct PlannedFiles {
  std::u16string key;
  std::int64_t size = 0;  ///< of the package, in bytes
  std::vector<PlannedFile> files;
};

/// What an installer would do for some products. Packages are ordered by key and the files of each
/// by path, as in the library's answers.
struct Plan {
  std::vector<summary::Product> products;
  std::vector<summary::Product> leftOut;  ///< as ProductChoice::leftOut
  std::vector<summary::Package> packagesToDelete;
  std::vector<PlannedFiles> filesToDelete;
  std::vector<summary::Package> packagesToExtract;
  summary::Totals totals;
  summary::DoubtfulSizes doubtfulSizes;  ///< includes packages with files, unlike the totals
};

/// Numbers of the files to delete by their state, including zeros.
using InstalledCounts = std::map<FileState, std::size_t>;

/// Makes the plan for the chosen products.
///
/// Files to delete do not belong to products: those of a component are planned if a chosen product
/// names the component, or if no product of the document does. Among packages with one key, the
/// first in model order of the planned components counts, as in the library's answers.
Plan makePlan(const summary::Contents& contents, const ProductChoice& choice);

/// Searches `tree` for every file to delete, sets the results in `plan` and counts them. Updates
/// `progress`.
InstalledCounts searchForFiles(Plan& plan, const InstalledTree& tree,
                               terminal::ProgressLine& progress);

}  // namespace update_metadata_tool::plan
