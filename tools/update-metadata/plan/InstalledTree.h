#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace update_metadata_tool::plan {

/// What looking for a file in an installation can come to.
enum class FileState {
  kPresent,  ///< it is there
  kMissing,  ///< it is not there
  kFolder,   ///< a folder is there, which is no file
  kOutside,  ///< its path leads out of the tree, or to the tree's own folder
  kUnknown,  ///< the system did not let it be looked for
};

struct InstalledFile {
  FileState state = FileState::kMissing;

  /// Where it leads if it is outside, why it could not be looked for if that is unknown, why there
  /// can be no such file if it is missing for that, what may have been meant if it is missing and
  /// its path has backslashes; else empty. Bytes as the system gives them.
  std::string detail = {};
};

/// A folder with an installed product. Nothing in it is ever changed, nor is any file opened.
class InstalledTree {
 public:
  /// Resolves the folder's own path.
  ///
  /// \throws std::filesystem::filesystem_error  there is no such folder, or it cannot be reached
  explicit InstalledTree(const std::filesystem::path& folder);

  /// Looks for the file with a path that is relative to the tree, or absolute.
  ///
  /// The path is followed as the system does when it opens a file: links lead on, ".." leads up
  /// from where the links have led. Where nothing exists, the rest of the path is taken by its
  /// names, so that a path that leads out of the tree is told even if nothing is there. A link at
  /// its end is followed to tell where it leads, but is a file that is there even if it leads to a
  /// folder or to nothing. A backslash is part of a name and parts no folders.
  ///
  /// A path that is not well-formed or holds a NUL is missing: no file can have it.
  InstalledFile find(std::u16string_view path) const;

 private:
  bool isInside(const std::string& resolved) const;

  std::string root_;  // resolved, absolute
};

}  // namespace update_metadata_tool::plan
