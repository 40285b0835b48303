#pragma once

#include <string_view>

namespace foundation::json::detail {

/// Converts a number as the C library does in its classic locale, whatever the program's: correctly
/// rounded, too large ones to infinity and too small ones to zero. For standard libraries that lack
/// std::from_chars() for doubles. Linear.
///
/// \pre `number` is a number in JSON's form
/// \throws std::bad_alloc
double classicStrtod(std::string_view number);

}  // namespace foundation::json::detail
