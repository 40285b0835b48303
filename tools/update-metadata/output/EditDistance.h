#pragma once

#include <cstddef>
#include <string_view>

namespace update_metadata_tool::output {

/// How many units have to be inserted, removed or replaced to make one text of the other, where
/// small and capital letters of ASCII are the same.
///
/// Memory in proportion to `left`, time to the product of both.
std::size_t editDistance(std::u16string_view left, std::u16string_view right);

}  // namespace update_metadata_tool::output
