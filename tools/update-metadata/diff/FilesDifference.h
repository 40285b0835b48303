#pragma once

#include <vector>

#include "diff/Difference.h"
#include "summary/Contents.h"
#include "summary/DoubtfulSizes.h"

namespace update_metadata_tool::diff {

/// Compares the packages with single files to delete, largest change first.
std::vector<FilesChange> compareFiles(const summary::Contents& before,
                                      const summary::Contents& after);

/// Adds the packages with files to `sizes`.
void countFilesPackages(const summary::Contents& contents, summary::DoubtfulSizes& sizes);

}  // namespace update_metadata_tool::diff
