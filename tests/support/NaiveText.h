#pragma once

#include <string>
#include <string_view>

namespace test_support {

// Conversions between UTF-8 and UTF-16 by tables, one step per character, for comparison with the
// fast ones.

/// Appends one code point, not a surrogate, as UTF-16 or UTF-8.
void appendUtf16(std::u16string& units, char32_t codePoint);
void appendUtf8(std::string& bytes, char32_t codePoint);

/// Converts UTF-8; each maximal ill-formed part becomes U+FFFD.
std::u16string naiveToUtf16(std::string_view text);

/// Converts UTF-16; each unpaired surrogate becomes U+FFFD.
std::string naiveToUtf8(std::u16string_view text);

}  // namespace test_support
