#pragma once

#include <string>
#include <string_view>

namespace test_support {

/// A new folder for one test, removed with everything in it at the end of its life.
///
/// Names are UTF-8, relative to the folder, and may have several parts. Paths come back as the
/// operations under test take them, in UTF-16, and as the operating system takes them, in UTF-8.
/// Every operation throws std::system_error if the file system refuses.
class TemporaryFolder {
 public:
  TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder();

  /// The path of the folder itself, without a final slash.
  std::u16string path() const;

  /// The path of an entry of the folder, whether it exists or not.
  std::u16string path(std::string_view name) const;

  std::string nativePath() const { return nativePath_; }
  std::string nativePath(std::string_view name) const;

  /// Writes a file, and the folders above it, and returns its path.
  std::u16string writeFile(std::string_view name, std::string_view bytes) const;

  /// Makes a folder, and the folders above it, and returns its path.
  std::u16string makeFolder(std::string_view name) const;

  /// Makes a symbolic link to `target`, which is kept as it is given, and returns its path.
  std::u16string makeLink(std::string_view name, std::string_view target) const;

  /// Makes a FIFO and returns its path.
  std::u16string makeFifo(std::string_view name) const;

  /// Makes a socket, which exists but cannot be opened even by an administrator, and returns its
  /// path.
  std::u16string makeSocket(std::string_view name) const;

 private:
  std::string nativePath_;
};

}  // namespace test_support
