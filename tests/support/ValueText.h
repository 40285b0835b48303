#pragma once

#include <string>
#include <string_view>

#include "foundation/json/Value.h"

namespace test_support {

/// Writes a value so that no two different values have the same text: doubles plain, the other
/// numbers as float(1.5), int64(-1) and uint64(1), a zero with its sign, and in strings every byte
/// but printable ASCII, the quotation mark and the backslash as \xHH. For example
///
///     {"key": [1.5, -0, int64(7), "caf\xC3\xA9", null, undefined]}
///
/// Recurses over the depth of the value.
std::string valueText(const foundation::json::Value& value);

/// Writes bytes as valueText() writes a string.
std::string quoted(std::string_view bytes);

}  // namespace test_support
