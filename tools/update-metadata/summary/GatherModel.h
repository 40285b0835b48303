#pragma once

#include <string>

#include "install/datamodels/product_update/ProductUpdateMetaData.h"
#include "install/update_metadata_parser/UpdateMetaDataHandler.h"
#include "summary/Contents.h"
#include "terminal/ProgressLine.h"

namespace update_metadata_tool::summary {

/// Adds the model's products, components and packages to `contents`, which must have none. Base
/// codes remain unset.
///
/// Walks the model front to back and reads each component where it is first named, because all
/// products have the same packages of it. Updates `progress`.
void gatherModel(const install::datamodels::product_update::ProductUpdateMetaData& root,
                 Contents& contents, terminal::ProgressLine& progress);

/// Sets the base codes of the products of `contents`, as `handler` finds them in the product data.
/// Its exceptions pass through.
void gatherBaseCodes(install::update_metadata_parser::UpdateMetaDataHandler& handler,
                     const std::u16string& productData, Contents& contents);

}  // namespace update_metadata_tool::summary
