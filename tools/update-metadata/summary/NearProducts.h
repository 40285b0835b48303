#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "summary/Contents.h"

namespace update_metadata_tool::summary {

/// A name or a base code to show, cut to about sixty characters.
std::string shorten(std::u16string_view text);

/// The five of `products` whose base code or name comes closest to `asked`, the nearest first, to
/// show: "FE (Fernlight Editor), FV (Fernlight Viewer)". Empty if there are none.
///
/// \pre each has a base code
std::string listNearProducts(std::vector<const Product*> products, const std::u16string& asked);

}  // namespace update_metadata_tool::summary
