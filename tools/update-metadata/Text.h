#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace update_metadata_tool {

/// Tells whether `text` is well-formed UTF-8.
bool isUtf8(std::string_view text);

/// The number of bytes before the first that is not well-formed UTF-8; all if there is none.
std::size_t lengthOfUtf8(std::string_view text);

/// Converts UTF-8 to UTF-16.
///
/// \pre isUtf8(text); anything else is an exception of the conversion library
std::u16string toUtf16(std::string_view text);

/// Converts UTF-16 to UTF-8. An unpaired surrogate becomes U+FFFD.
std::string toUtf8(std::u16string_view text);

/// Converts UTF-16 to UTF-8 that is safe to show on a terminal.
///
/// Characters that control the terminal or change the direction or the lines of what stands around
/// them are shown as their code, <U+001B>; an empty text is shown as (empty).
std::string toVisible(std::u16string_view text);

}  // namespace update_metadata_tool
