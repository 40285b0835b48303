#pragma once

#include <string>
#include <string_view>

namespace update_metadata_tool {

/// Makes the page that shows `data`, a JSON text in UTF-8: HTML that needs nothing but itself.
///
/// Whatever the strings in `data` are, none ends the element that holds them: the characters that
/// mean something to HTML are written as JSON escapes, which the page reads as the same data.
std::string makePage(std::string_view data);

}  // namespace update_metadata_tool
