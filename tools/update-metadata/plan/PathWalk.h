#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace update_metadata_tool::plan {

/// Resolves a path, in UTF-8 and relative to `start` or absolute, as the system does to open a
/// file. Returns an absolute path without links and "..", with slashes.
///
/// Below a missing folder, the rest is resolved by name alone.
///
/// \param start  an absolute path without links, with slashes
/// \throws std::filesystem::filesystem_error  the path cannot be resolved
std::string followPath(const std::string& start, std::string_view path);

/// Returns the status of `path` itself, without following a link. A name that is too long does not
/// exist.
///
/// \throws std::filesystem::filesystem_error  the status cannot be determined
std::filesystem::file_status statusOf(const std::filesystem::path& path);

}  // namespace update_metadata_tool::plan
