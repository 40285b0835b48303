#pragma once

#include <string>
#include <string_view>

#include "foundation/json/Value.h"

namespace test_support {

/// Writes a value so that different values always have different texts. Doubles are plain; other
/// numbers are written as float(1.5), int64(-1) and uint64(1); a zero has its sign. In strings, the
/// quotation mark, the backslash and every byte except printable ASCII are written as \xHH. For
/// example
///
///     {"key": [1.5, -0, int64(7), "caf\xC3\xA9", null, undefined]}
///
/// Recurses over the depth of the value.
std::string valueText(const foundation::json::Value& value);

/// Writes bytes as valueText() writes a string.
std::string quoted(std::string_view bytes);

}  // namespace test_support
