#pragma once

#include <sys/stat.h>

#include <string>
#include <string_view>

namespace update_metadata_tool::output {

/// A file descriptor that is closed at the end of its life. Negative if there is none.
class Descriptor {
 public:
  explicit Descriptor(int descriptor) : descriptor_(descriptor) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor();

  int get() const { return descriptor_; }

 private:
  int descriptor_;
};

/// A regular file that is opened now and may be replaced later, if it is still the same then.
///
/// Symbolic links are followed when it is opened, and never again: what is replaced is a name in
/// the folder that the file was opened in, whatever other names and links lead to by then.
class OpenedFile {
 public:
  enum class Use { kReadAndReplace, kReplace };

  /// \throws std::system_error  it is missing, not a regular file or may not be opened for `use`
  explicit OpenedFile(const std::string& path, Use use = Use::kReadAndReplace);

  /// All its bytes, from the beginning.
  ///
  /// \pre opened with Use::kReadAndReplace
  /// \throws std::ios_base::failure  they cannot be read to the end
  std::string read() const;

  /// Replaces what the file holds, wholly or not at all, by writing a new file beside it and giving
  /// that its name: anyone who opens it finds the old content or the new one, also after a failure.
  /// Until that is done, signals that end the process wait, so that no other file is left.
  ///
  /// Mode, access control list, owner and group are kept; if the system does not permit to keep the
  /// group, its rights are dropped, so that no other group gets them. What else belongs to the old
  /// file, other hard links for instance, stays with the old content.
  ///
  /// \throws std::system_error  the file is as it was: it may not be written, the new one cannot be
  ///                            made beside it, or, with std::errc::operation_canceled, the name
  ///                            leads to another file or the file has been written since it was
  ///                            opened
  void replace(std::string_view content) const;

 private:
  std::string path_;  ///< without links
  Descriptor folder_;
  std::string name_;  ///< in the folder
  Descriptor file_;
  struct stat status_ {};
};

/// Writes a file that may be there already, wholly or not at all: one that is there is replaced as
/// by OpenedFile, a new one has the rights that the process and the folder give new files.
///
/// \throws std::system_error  nothing is changed: what is there cannot be replaced, for instance a
///                            symbolic link that leads nowhere, or no file can be made beside it
void writeFile(const std::string& path, std::string_view content);

}  // namespace update_metadata_tool::output
