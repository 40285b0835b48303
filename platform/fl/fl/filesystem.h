#pragma once

#include <fstream>
#include <ios>
#include <string>

/// Files by UTF-16 paths. On this platform a path is the UTF-8 form of the text, byte for byte; a
/// relative one starts at the working directory of the process.
namespace fl::filesystem {

/// Tells whether `path` names an entry of any kind; links are followed.
///
/// Every error of the file system means false: a missing or unsearchable parent, a link that leads
/// nowhere or in a circle, a name that is too long. So does a path that no file can have: an empty
/// one and one with a NUL or with a surrogate that lacks its partner.
///
/// Throws nothing but what memory exhaustion throws. One file system query.
bool exists(const std::u16string& path);

/// Input file stream that is opened by a UTF-16 path. Only `char` is provided.
template <class CharT>
class basic_ifstream;

/// Reads the bytes of a file unchanged, whatever the global locale: the stream has the classic one.
///
/// Whether the file was opened is told by is_open(), and by failbit as for every file stream.
/// Whatever can be read as a sequence of bytes opens: a file, a device, a FIFO, whose writers are
/// waited for. A folder does not, nor does a path for which exists() is false by its form.
///
/// A read error after opening leaves the stream's buffer as std::ios_base::failure; bytes that
/// could not be read are never taken for the end of the file. The formatted and unformatted
/// operations of the stream report it in the way of all streams, as badbit.
template <>
class basic_ifstream<char> : public std::basic_ifstream<char> {
 public:
  /// Opens `path` for reading; `mode` is as for std::basic_ifstream.
  ///
  /// Throws nothing but what memory exhaustion throws.
  explicit basic_ifstream(const std::u16string& path,
                          std::ios_base::openmode mode = std::ios_base::in);
};

}  // namespace fl::filesystem
