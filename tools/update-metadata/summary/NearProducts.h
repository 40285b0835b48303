#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "summary/Contents.h"

namespace update_metadata_tool::summary {

/// A name or a base code to show, cut to about sixty characters.
std::string shorten(std::u16string_view text);

/// Lists the five products whose base code or name is nearest to `wanted`, the nearest first:
/// "FE (Fernlight Editor), FV (Fernlight Viewer)". Empty if no product qualifies.
///
/// \param findName  the name of the product that a base code selects; a product that its own base
///                  code does not select is left out
std::string listNearProducts(
    const Contents& contents,
    const std::function<std::u16string(const std::u16string& baseCode)>& findName,
    const std::u16string& wanted);

}  // namespace update_metadata_tool::summary
