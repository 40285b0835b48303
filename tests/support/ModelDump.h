#pragma once

#include <string>

#include "install/datamodels/product_update/ComponentDataWithFilesToDelete.h"
#include "install/datamodels/product_update/ComponentDeltaData.h"
#include "install/datamodels/product_update/PkgDataWithFilesToDelete.h"
#include "install/datamodels/product_update/PkgDeltaData.h"
#include "install/datamodels/product_update/ProductDeltaData.h"
#include "install/datamodels/product_update/ProductUpdateMetaData.h"

namespace test_support {

/// Writes an element and everything below it as text, one line per element, indented by two blanks
/// per level. Every field is shown, so two trees are equal exactly if their texts are:
///
///     release data
///       architecture "x86"
///       base release: family "Orchard", version "1.0", level 0
///       target release: family "Orchard", version "1.1", level -56
///     product "Press"
///       component to delete "core"
///         package to delete "old": size 10, unpacked 0
///       component to extract "core"
///         package to extract "new": size 20, unpacked 40
///     component with files to delete "docs"
///       package "guide": size 30
///         file "guide/old.txt"
///
/// Releases and release data that are not set are shown as "none".
std::string dump(const install::datamodels::product_update::ProductUpdateMetaData& root);
std::string dump(const install::datamodels::product_update::ProductDeltaData& product);
std::string dump(const install::datamodels::product_update::ComponentDeltaData& component);
std::string dump(const install::datamodels::product_update::PkgDeltaData& pkg);
std::string dump(const install::datamodels::product_update::ComponentDataWithFilesToDelete& comp);
std::string dump(const install::datamodels::product_update::PkgDataWithFilesToDelete& pkg);

}  // namespace test_support
