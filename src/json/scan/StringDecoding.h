#pragma once

#include <string>

#include "json/ParseResult.h"

namespace foundation::json {

/// Decodes the rest of a string, starting at its first backslash.
///
/// `position` is at the backslash. It is advanced past the closing quotation mark or, on failure,
/// to the first byte that is not accepted. The bytes are appended to `text`.
///
/// Returns kSuccess, kEndOfText, kBadEscape or kBadUnicodeEscape.
ParseResult decodeString(const char*& position, const char* end, std::string& text);

}  // namespace foundation::json
