#pragma once

#include <string>
#include <string_view>

namespace update_metadata_tool::lint {

/// The differences of two versions of a file as a unified diff, as `patch` reads it; empty if there
/// are none.
///
/// Three equal lines are shown around each change. The bytes of the lines are written as they are.
/// Changes that are far apart are found in linear time; of a long change that has few lines in
/// common with the old text, more lines than necessary may be shown.
///
/// \param file  the name in the headings; written as in C if it contains control characters,
///              quotation marks or backslashes
std::string unifiedDiff(const std::string& file, std::string_view before, std::string_view after);

}  // namespace update_metadata_tool::lint
