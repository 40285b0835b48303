#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "generate/Dice.h"

namespace bench::generate {

/// The style of names. In no style do two pairs of component and package have the same key.
enum class NameStyle {
  words,    ///< core_runtime_042, bin_win64_common
  letters,  ///< a, b, ..., z, aa, ...
  wide,     ///< no ASCII except digits and separators
};

/// Returns `count` different names of components.
std::vector<std::string> componentNames(NameStyle style, std::size_t count);

/// Renames components so that names continue each other: of every `oneIn` names in a row, the last
/// ones become a chain of `chain` names a, a_docs, a_docs_docs and so on, where a is the first of
/// the chain. Names remain different, and keys too, because no package's name begins with "docs".
///
/// \pre oneIn is at least chain, which is at least 1
void continueNames(std::vector<std::string>& names, std::size_t oneIn, std::size_t chain);

/// Returns `count` different names of packages, the same for every component.
std::vector<std::string> packageNames(NameStyle style, std::size_t count);

/// Returns the name of one product.
std::string productName(NameStyle style, std::size_t number);

/// Returns one path of about `bytes` bytes, as written between the quotes of a JSON string.
///
/// One in 16 contains raw characters beyond ASCII, one in 64 the same characters as escapes, and
/// one in 64 escaped backslashes instead of slashes. `serial` makes it unique.
std::string filePath(Dice& dice, std::size_t serial, std::size_t bytes);

}  // namespace bench::generate
