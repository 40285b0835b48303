#pragma once

#include <string>
#include <string_view>

namespace update_metadata_tool::report {

/// Makes the page that shows `data`, a JSON text in UTF-8: self-contained HTML.
///
/// No string in `data` can end the element that contains it: characters with a meaning in HTML
/// become JSON escapes, which the page reads as the same data.
std::string makePage(std::string_view data);

}  // namespace update_metadata_tool::report
