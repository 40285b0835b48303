#include "fl/filesystem.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <optional>
#include <system_error>
#include <utility>

#include "fl/i18n.h"

namespace fl::filesystem {

namespace {

/// Returns the path in the platform's form, or nothing for a text that cannot be a path.
std::optional<std::string> toNativePath(const std::u16string& path) {
  // The conversion replaces unpaired surrogates, and the replaced path could name another file.
  // Only well-formed text survives the round trip.
  std::string native = i18n::to_string(path);
  if (path.empty() || path.find(u'\0') != std::u16string::npos ||
      i18n::utf8_to_ustring(native) != path) {
    return std::nullopt;
  }
  return native;
}

/// Reads a file. Not std::filebuf, because some standard libraries take a read error for the end of
/// the file.
class FileBuffer : public std::streambuf {
 public:
  explicit FileBuffer(const std::string& nativePath)
      : file_(::open(nativePath.c_str(), O_RDONLY | O_CLOEXEC)) {}
  FileBuffer(const FileBuffer&) = delete;
  FileBuffer& operator=(const FileBuffer&) = delete;
  ~FileBuffer() override {
    if (file_ >= 0) {
      ::close(file_);
    }
  }

  /// Whether the file can be read. The platform opens a folder and rejects only the first read.
  bool isReadable() const {
    struct stat status = {};
    return file_ >= 0 && !(::fstat(file_, &status) == 0 && S_ISDIR(status.st_mode));
  }

 protected:
  int_type underflow() override {
    const std::size_t got = read(block_.data(), block_.size());
    setg(block_.data(), block_.data(), block_.data() + got);
    return got == 0 ? traits_type::eof() : traits_type::to_int_type(block_.front());
  }

  std::streamsize xsgetn(char* out, std::streamsize count) override {
    const auto wanted = static_cast<std::size_t>(count);
    std::size_t size = std::min(wanted, static_cast<std::size_t>(egptr() - gptr()));
    std::copy_n(gptr(), size, out);
    gbump(static_cast<int>(size));
    while (size != wanted) {
      const std::size_t got = read(out + size, wanted - size);
      if (got == 0) {
        break;
      }
      size += got;
    }
    return static_cast<std::streamsize>(size);
  }

 private:
  // Returns 0 at the end. Throws std::ios_base::failure on errors.
  std::size_t read(char* out, std::size_t size) const {
    ssize_t got = 0;
    do {
      got = ::read(file_, out, size);
    } while (got < 0 && errno == EINTR);
    if (got < 0) {
      const int error = errno;  // before an exception is made, which may change it
      throw std::ios_base::failure("the file cannot be read",
                                   std::error_code(error, std::generic_category()));
    }
    return static_cast<std::size_t>(got);
  }

  int file_;
  std::array<char, 8192> block_;  // what underflow() read
};

}  // namespace

bool exists(const std::u16string& path) {
  const std::optional<std::string> native = toNativePath(path);
  struct stat status = {};
  return native && ::stat(native->c_str(), &status) == 0;
}

bool is_directory(const std::u16string& path) {
  // Only a folder that may be searched can be followed by "/.".
  return !path.empty() && exists(path + u"/.");
}

std::u16string join(const std::u16string& folder, std::u16string_view name) {
  std::u16string path = folder;
  if (path.back() != u'/') {
    path += u'/';
  }
  return path.append(name);
}

basic_ifstream<char>::basic_ifstream(const std::u16string& path, std::ios_base::openmode /*mode*/)
    : std::istream(nullptr) {
  if (const std::optional<std::string> native = toNativePath(path)) {
    auto buffer = std::make_unique<FileBuffer>(*native);
    if (buffer->isReadable()) {
      buffer_ = std::move(buffer);
    }
  }
  rdbuf(buffer_.get());
  if (!is_open()) {
    setstate(std::ios_base::failbit);
  }
}

}  // namespace fl::filesystem
