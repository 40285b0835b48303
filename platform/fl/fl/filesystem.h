#pragma once

#include <ios>
#include <istream>
#include <memory>
#include <streambuf>
#include <string>
#include <string_view>

/// Files by UTF-16 paths. On Windows a path is the text itself, unit for unit, and elsewhere its
/// UTF-8 form, byte for byte. It means what it means to the system: relative paths, long paths and
/// reserved names are left to it.
namespace fl::filesystem {

/// Returns whether `path` names an entry of any kind; links are followed.
///
/// Returns false on every error of the file system: a missing or unsearchable parent, a dangling or
/// circular link, a name that is too long. Also returns false for a path that no file can have: an
/// empty one, one with a NUL and, except on Windows, one with an unpaired surrogate.
///
/// Throws nothing except on memory exhaustion. One file system query, or two for a link on Windows.
bool exists(const std::u16string& path);

/// Returns whether `path` names a folder that may be searched; links are followed. Returns false
/// where exists() does. Costs the same.
bool is_directory(const std::u16string& path);

/// Returns the path of the entry `name` of a folder.
///
/// \pre `folder` is not empty
std::u16string join(const std::u16string& folder, std::u16string_view name);

/// Input file stream that opens a UTF-16 path. Only `char` is provided.
template <class CharT>
class basic_ifstream;

/// Reads the bytes of a file unchanged, from the first to the last, whatever the global locale.
///
/// is_open() reports whether the file was opened, and so does failbit, as for every file stream.
/// Anything that can be read as a sequence of bytes opens: a file, a device, or a FIFO, whose
/// writers are waited for. A folder does not open, nor does a path whose form makes exists() false.
///
/// A read error after opening leaves the stream's buffer as std::ios_base::failure; bytes that
/// could not be read are never mistaken for the end of the file. The formatted and unformatted
/// operations of the stream report it as badbit, as in every stream.
template <>
class basic_ifstream<char> : public std::istream {
 public:
  /// Opens `path` for reading, always as bytes and from the first one; `mode` makes no difference.
  ///
  /// Throws nothing except on memory exhaustion.
  explicit basic_ifstream(const std::u16string& path,
                          std::ios_base::openmode mode = std::ios_base::in);

  /// Whether the file was opened.
  bool is_open() const { return buffer_ != nullptr; }

 private:
  std::unique_ptr<std::streambuf> buffer_;  // null if the file was not opened
};

}  // namespace fl::filesystem
