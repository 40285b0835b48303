#pragma once

#include "install/datamodels/product_update/ProductUpdateMetaData.h"
#include "summary/Contents.h"
#include "terminal/ProgressLine.h"

namespace update_metadata_tool::summary {

/// Fills the products, the components and all packages of `contents`, which holds none yet, from
/// the library's model. Base codes stay unset.
///
/// Walks the model front to back. A component is read where it is first mentioned: the elements
/// that later products have for it hold the same packages. `progress` is told that it goes on.
void gatherModel(const install::datamodels::product_update::ProductUpdateMetaData& root,
                 Contents& contents, terminal::ProgressLine& progress);

}  // namespace update_metadata_tool::summary
