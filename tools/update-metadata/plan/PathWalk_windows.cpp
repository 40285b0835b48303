#include "plan/PathWalk.h"

#include <system_error>

namespace update_metadata_tool::plan {

namespace fs = std::filesystem;

std::string followPath(const std::string& start, std::string_view path) {
  // The system resolves ".." by name, before it follows a link.
  const fs::path whole = (fs::u8path(start) / fs::u8path(path)).lexically_normal();
  std::error_code error;
  fs::path resolved = fs::weakly_canonical(whole, error);
  if (error) {
    throw fs::filesystem_error("cannot search for", whole, error);
  }
  if (!resolved.has_filename()) {
    resolved = resolved.parent_path();
  }
  return resolved.generic_u8string();
}

fs::file_status statusOf(const fs::path& path) {
  std::error_code error;
  const fs::file_status status = fs::symlink_status(path, error);
  if (status.type() == fs::file_type::none) {
    throw fs::filesystem_error("cannot search for", path, error);
  }
  return status;
}

}  // namespace update_metadata_tool::plan
