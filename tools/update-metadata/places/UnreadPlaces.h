#pragma once

#include "places/NamedPackages.h"
#include "places/Place.h"
#include "places/ProductLookUp.h"

namespace update_metadata_tool::places {

/// Calls `visit` for each place that the library does not read, those in values of duplicate keys,
/// and in components whose names are read like that of an earlier one. First the described
/// packages, then what products name, then the packages with files to delete.
///
/// Exceptions of `visit` and of the product data pass through.
void forEachUnreadPlace(const ReadDocument& read, const DescribedComponents& components,
                        const ProductLookUp& products, const VisitPlace& visit);

}  // namespace update_metadata_tool::places
