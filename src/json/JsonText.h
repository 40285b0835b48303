#pragma once

#include <string>

#include "foundation/json/Value.h"

namespace foundation::json {

/// Reads one JSON value from UTF-8 text.
///
/// The grammar is that of RFC 8259, with these differences. `text` is exactly one value: white
/// space before or after it is an error, a final line feed included. Numbers may have leading
/// zeros. Strings may contain any bytes, unchecked, except quotes and backslashes. White space is
/// the six ASCII bytes 09 to 0D and 20. Plain numbers become doubles, correctly rounded; those out
/// of range become infinity or zero. A key repeated in an object keeps its first value. In an
/// object with a member "qztype" that names an integer type, the member "qzdata" is an array of
/// 64-bit integers (json/TypedValues.h).
///
/// \param text           the whole text; pass it with std::move to save a copy, because the
///                       result keeps it
/// \param allowComments  accepts // and /* */ comments wherever white space is allowed
///
/// \throws ParserException     malformed text: code, byte offset, line and column (from 1)
/// \throws std::runtime_error  "invalid conversion: " ... to string: a "qztype" member that is not
///                             a string, or whose value is malformed
///
/// Memory is linear in the size of `text`, time O(n log n) for n bytes, whatever the nesting and
/// however many "qztype" members follow one payload. The depth of nesting costs no stack.
Value parseJsonText(std::string text, bool allowComments = false);

}  // namespace foundation::json
