#pragma once

#include <ios>
#include <istream>
#include <sstream>
#include <string>

/// Files that are compiled into the application.
namespace fl::filesystem {

/// Returns whether `path` names one of the files.
bool exists(const std::u16string& path);

/// The bytes of a file, which can only be read from first to last: seeking fails.
class ForwardBuffer : public std::stringbuf {
 protected:
  pos_type seekoff(off_type, std::ios_base::seekdir, std::ios_base::openmode) override {
    return pos_type(off_type(-1));
  }
  pos_type seekpos(pos_type, std::ios_base::openmode) override { return pos_type(off_type(-1)); }
};

/// Input file stream that opens a UTF-16 path. Only `char` is provided.
template <class CharT>
class basic_ifstream;

/// Reads the bytes of one of the files.
template <>
class basic_ifstream<char> : public std::istream {
 public:
  /// Opens the file at `path`. The stream stays closed if the file does not exist or is locked.
  explicit basic_ifstream(const std::u16string& path,
                          std::ios_base::openmode mode = std::ios_base::in);

  bool is_open() const { return isOpen_; }

 private:
  ForwardBuffer buffer_;
  bool isOpen_ = false;
};

}  // namespace fl::filesystem
