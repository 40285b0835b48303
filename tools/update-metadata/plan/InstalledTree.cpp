#include "plan/InstalledTree.h"

#include <cstddef>
#include <system_error>

#include "output/Text.h"
#include "plan/PathWalk.h"

namespace update_metadata_tool::plan {
namespace fs = std::filesystem;

const char* nameOf(FileState state) {
  switch (state) {
    case FileState::kPresent:
      return "present";
    case FileState::kMissing:
      return "missing";
    case FileState::kFolder:
      return "folder";
    case FileState::kOutside:
      return "outside";
    case FileState::kUnknown:
      break;
  }
  return "unknown";
}

InstalledTree::InstalledTree(const fs::path& folder)
    : root_(fs::canonical(folder).generic_u8string()) {
  if (!fs::is_directory(folder)) {
    throw fs::filesystem_error("cannot read", folder,
                               std::make_error_code(std::errc::not_a_directory));
  }
}

bool InstalledTree::isInside(const std::string& resolved) const {
  // The root of a file system ends with a slash.
  const std::size_t size = root_.back() == '/' ? root_.size() - 1 : root_.size();
  return resolved.size() > size + 1 && resolved.compare(0, size, root_, 0, size) == 0 &&
         resolved[size] == '/';
}

InstalledFile InstalledTree::find(std::u16string_view path) const {
  if (!output::isUtf16(path) || path.find(u'\0') != std::u16string_view::npos) {
    return {FileState::kMissing, "no file can have this name"};
  }
  const std::string name = output::toUtf8(path);
  try {
    const std::string resolved = followPath(root_, name);
    if (!isInside(resolved)) {
      return {FileState::kOutside, resolved};
    }
    const fs::file_status status = statusOf(fs::u8path(root_) / fs::u8path(name));
    if (fs::is_directory(status)) {
      return {FileState::kFolder};
    }
    if (fs::exists(status)) {
      return {FileState::kPresent};
    }
    const bool hasStrangeSeparator =
        fs::path::preferred_separator == '/' && name.find('\\') != std::string::npos;
    return {FileState::kMissing,
            hasStrangeSeparator ? "a backslash does not separate folders here" : ""};
  } catch (const fs::filesystem_error& failure) {
    return {FileState::kUnknown, failure.code().message()};
  }
}

}  // namespace update_metadata_tool::plan
