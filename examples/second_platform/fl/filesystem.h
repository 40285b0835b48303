#pragma once

#include <ios>
#include <istream>
#include <sstream>
#include <string>

/// Files that are compiled into the application.
namespace fl::filesystem {

/// Tells whether `path` names one of the files.
bool exists(const std::u16string& path);

/// The bytes of a file, to be read from the first to the last: it cannot be sought in.
class ForwardBuffer : public std::stringbuf {
 protected:
  pos_type seekoff(off_type, std::ios_base::seekdir, std::ios_base::openmode) override {
    return pos_type(off_type(-1));
  }
  pos_type seekpos(pos_type, std::ios_base::openmode) override { return pos_type(off_type(-1)); }
};

/// Input file stream that is opened by a UTF-16 path. Only `char` is provided.
template <class CharT>
class basic_ifstream;

/// Reads the bytes of one of the files.
template <>
class basic_ifstream<char> : public std::istream {
 public:
  /// Opens the file at `path`; one that there is not, or is locked, stays closed.
  explicit basic_ifstream(const std::u16string& path,
                          std::ios_base::openmode mode = std::ios_base::in);

  bool is_open() const { return isOpen_; }

 private:
  ForwardBuffer buffer_;
  bool isOpen_ = false;
};

}  // namespace fl::filesystem
