#pragma once

#include <ios>
#include <sstream>
#include <string>

/// Files that are compiled into the application.
namespace fl::filesystem {

/// Tells whether `path` names one of the files.
bool exists(const std::u16string& path);

/// Input file stream that is opened by a UTF-16 path. Only `char` is provided.
template <class CharT>
class basic_ifstream;

/// Reads the bytes of one of the files.
template <>
class basic_ifstream<char> : public std::istringstream {
 public:
  /// Opens the file at `path`; one that there is not, or is locked, stays closed.
  explicit basic_ifstream(const std::u16string& path,
                          std::ios_base::openmode mode = std::ios_base::in);

  bool is_open() const { return isOpen_; }

 private:
  bool isOpen_ = false;
};

}  // namespace fl::filesystem
