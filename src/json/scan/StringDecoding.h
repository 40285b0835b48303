#pragma once

#include <string>

#include "json/ParseResult.h"

namespace foundation::json {

/// Decodes the rest of a string from its first backslash on.
///
/// `position` stands at the backslash; it is advanced behind the closing quotation mark or, on
/// failure, to the first byte that is not accepted. The bytes are appended to `text`.
///
/// Returns kSuccess, kEndOfText, kBadEscape or kBadUnicodeEscape.
ParseResult decodeString(const char*& position, const char* end, std::string& text);

}  // namespace foundation::json
