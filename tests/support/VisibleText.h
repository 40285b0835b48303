#pragma once

#include <string>
#include <string_view>

namespace test_support {

/// Writes UTF-16 text in quotation marks so that every unit is distinguishable: printable ASCII
/// verbatim; everything else, the quotation mark and the backslash as \uHHHH.
std::string visible(std::u16string_view text);

}  // namespace test_support
