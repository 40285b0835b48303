#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "generate/Dice.h"

namespace bench::generate {

/// What names look like. No two components and packages make the same key in any style.
enum class NameStyle {
  words,    ///< core_runtime_042, bin_win64_common
  letters,  ///< a, b, ..., z, aa, ...
  wide,     ///< nothing in ASCII but digits and separators
};

/// `count` different names of components.
std::vector<std::string> componentNames(NameStyle style, std::size_t count);

/// `count` different names of packages, the same for every component.
std::vector<std::string> packageNames(NameStyle style, std::size_t count);

/// The name of one product.
std::string productName(NameStyle style, std::size_t number);

/// One path of about `bytes` bytes, as it stands between the quotes of a JSON string.
///
/// One in 16 holds raw characters beyond ASCII, one in 64 the same as escapes, one in 64 escaped
/// backslashes for slashes. `serial` makes it unique.
std::string filePath(Dice& dice, std::size_t serial, std::size_t bytes);

}  // namespace bench::generate
