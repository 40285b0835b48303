#pragma once

#include <cstddef>
#include <string_view>

namespace update_metadata_tool::output {

/// How many units have to be inserted, removed or replaced to turn one text into the other; upper
/// and lower case of ASCII letters count as the same.
///
/// Memory in proportion to `left`, time in proportion to the product of both lengths.
std::size_t editDistance(std::string_view left, std::string_view right);
std::size_t editDistance(std::u16string_view left, std::u16string_view right);

}  // namespace update_metadata_tool::output
