#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace update_metadata_tool::output {

/// A regular file that is opened now and can be replaced later if it is unchanged by then.
///
/// Symbolic links are followed only when the file is opened. Replacing it replaces its name in the
/// folder in which it was opened, even if links lead elsewhere by then.
class OpenedFile {
 public:
  enum class Use { kReadAndReplace, kReplace };

  /// \throws std::system_error  it is missing, is not a regular file or cannot be opened for `use`
  ///
  /// \pre `path` is UTF-8 on Windows
  explicit OpenedFile(const std::string& path, Use use = Use::kReadAndReplace);
  ~OpenedFile();

  /// Reads the whole file, or what exceeds `atMost` bytes by a little if it is longer.
  ///
  /// \pre opened with Use::kReadAndReplace
  /// \throws std::ios_base::failure  it cannot be read completely
  std::string read(std::uint64_t atMost) const;

  /// Replaces the content, all or nothing, by writing a new file beside the old one and renaming
  /// it: anyone who opens the file sees the old or the new content, even after a failure. Signals
  /// that end the process are blocked meanwhile, so that no temporary file is left behind.
  ///
  /// Keeps mode, access control list, owner and group. If the system does not permit keeping the
  /// group, the group loses its rights, so that no other group gets them. Other hard links keep the
  /// old content. On Windows, keeps attributes and access control list, and closes the file, which
  /// can then not be used again.
  ///
  /// \throws std::system_error  nothing was changed: the file may not be written, or no file can be
  ///                            created beside it; with std::errc::operation_canceled, the file was
  ///                            written or its name was given to another one since it was opened
  void replace(std::string_view content) const;

 private:
  struct State;

  std::unique_ptr<State> state_;
};

/// Writes a file, all or nothing. An existing file is replaced as by OpenedFile; a new one gets the
/// usual rights of new files.
///
/// \throws std::system_error  nothing was changed: the path cannot be replaced, for example a
///                            dangling symbolic link, or no file can be created in the folder
void writeFile(const std::string& path, std::string_view content);

}  // namespace update_metadata_tool::output
