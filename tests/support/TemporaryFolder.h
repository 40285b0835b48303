#pragma once

#include <string>
#include <string_view>

namespace test_support {

/// A new folder for one test, removed with its contents when the object is destroyed.
///
/// Names are UTF-8, relative to the folder, and may have several parts. Paths are returned in
/// UTF-16, for the operations under test, and in UTF-8, for the operating system. Every operation
/// throws std::system_error if the file system reports an error.
class TemporaryFolder {
 public:
  TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder();

  /// Ends the test as skipped if the system permits no such name.
  static void checkName(std::string_view name);

  /// The path of the folder itself, without a final slash.
  std::u16string path() const;

  /// The path of an entry of the folder, whether it exists or not.
  std::u16string path(std::string_view name) const;

  std::string nativePath() const { return nativePath_; }
  std::string nativePath(std::string_view name) const;

  /// Writes a file and the folders above it; returns its path.
  std::u16string writeFile(std::string_view name, std::string_view bytes) const;

  /// Makes a folder and the folders above it; returns its path.
  std::u16string makeFolder(std::string_view name) const;

  /// Makes a symbolic link to `target`, which is stored verbatim; returns its path. On Windows,
  /// this and the two operations below end the test as skipped.
  std::u16string makeLink(std::string_view name, std::string_view target) const;

  /// Makes a FIFO; returns its path.
  std::u16string makeFifo(std::string_view name) const;

  /// Makes a socket, which exists but cannot be opened even by an administrator; returns its path.
  std::u16string makeSocket(std::string_view name) const;

 private:
  std::string nativePath_;
};

}  // namespace test_support
