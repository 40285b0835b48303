#pragma once

#include "places/NamedPackages.h"
#include "places/Place.h"
#include "places/ProductLookUp.h"

namespace update_metadata_tool::places {

/// Calls `visit` for each place that the library's model contains, in the order of the model: the
/// products, then the packages with files to delete. Then it calls `visit` for the packages of
/// components that no product names for that side, which are in no model.
///
/// Nothing is stored of a place, so memory is linear in the document however many products share a
/// component. Exceptions of `visit` and of the product data pass through.
void forEachPlaceOfModel(const ReadDocument& read, const DescribedComponents& components,
                         const ProductLookUp& products, const VisitPlace& visit);

}  // namespace update_metadata_tool::places
