#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace update_metadata_tool::plan {

/// The result of searching an installation for a file.
enum class FileState {
  kPresent,  ///< it exists
  kMissing,  ///< it does not exist
  kFolder,   ///< it is a folder, not a file
  kOutside,  ///< its path leads out of the tree, or to the tree's root
  kUnknown,  ///< the system does not permit the search
};

/// The name of a state, as in the plan: "present".
const char* nameOf(FileState state);

struct InstalledFile {
  FileState state = FileState::kMissing;

  /// Explains the state: where the path leads if it is outside; why the search failed if the state
  /// is unknown; for a missing file, why no file can have that name, or a hint if the path has
  /// backslashes. Otherwise empty. Bytes as the system gives them.
  std::string detail = {};
};

/// A folder with an installed product. Never changes anything in it or opens a file.
class InstalledTree {
 public:
  /// Resolves the folder's own path.
  ///
  /// \throws std::filesystem::filesystem_error  the folder does not exist or cannot be accessed
  explicit InstalledTree(const std::filesystem::path& folder);

  /// Searches for a file by its path, relative to the tree or absolute.
  ///
  /// The path is resolved as the system does to open a file: links are followed, and ".." leads up
  /// from where they led. Below a missing folder, the rest is resolved by name alone, so that a
  /// path out of the tree is detected even if it does not exist. A link at the end is followed to
  /// see where it leads, but counts as an existing file even if it leads to a folder or nowhere.
  /// Except on Windows, a backslash is part of a name and does not separate folders; on Windows,
  /// ".." is resolved by name, as the system does.
  ///
  /// A path that is not well-formed or contains a NUL is missing: no file can have that name.
  InstalledFile find(std::u16string_view path) const;

 private:
  bool isInside(const std::string& resolved) const;

  std::string root_;  // resolved, absolute
};

}  // namespace update_metadata_tool::plan
