#pragma once

#include <cstddef>
#include <string_view>

namespace install::update_metadata_parser::diagnosis {

/// The number of units to insert, remove or replace to turn one text into the other, ignoring the
/// case of ASCII letters.
///
/// Memory is linear in the length of `left`, time in the product of both lengths.
std::size_t editDistance(std::string_view left, std::string_view right);

/// The same for UTF-16.
std::size_t editDistance(std::u16string_view left, std::u16string_view right);

}  // namespace install::update_metadata_parser::diagnosis
