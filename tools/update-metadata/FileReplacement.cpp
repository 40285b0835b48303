#include "FileReplacement.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace update_metadata_tool {
namespace {

[[noreturn]] void fail(const char* what, int error = errno) {
  throw std::system_error(error, std::generic_category(), what);
}

class Descriptor {
 public:
  explicit Descriptor(int descriptor) : descriptor_(descriptor) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() { ::close(descriptor_); }

  int get() const { return descriptor_; }

 private:
  int descriptor_;
};

// What the file at `path` is, if it is a regular one that may be written. It is opened, not only
// asked about, because the system alone knows what may be written.
struct stat requireWritable(const std::string& path) {
  const int opened = ::open(path.c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC);
  if (opened < 0) {
    fail("the file cannot be written");
  }
  const Descriptor file(opened);
  struct stat status {};
  if (::fstat(file.get(), &status) != 0) {
    fail("the file cannot be looked at");
  }
  if (!S_ISREG(status.st_mode)) {
    fail("only a regular file can be replaced", EINVAL);
  }
  return status;
}

/// A new file, of this user alone, that is gone at the end unless it was given another name.
class TemporaryFile {
 public:
  explicit TemporaryFile(const std::filesystem::path& folder)
      : path_((folder / ".update-metadata-XXXXXX").string()), file_(::mkstemp(path_.data())) {
    if (file_.get() < 0) {
      fail("no file can be made in its folder");
    }
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;
  ~TemporaryFile() {
    if (!isRenamed_) {
      ::unlink(path_.c_str());
    }
  }

  void write(std::string_view content) {
    while (!content.empty()) {
      const ssize_t written = ::write(file_.get(), content.data(), content.size());
      if (written >= 0) {
        content.remove_prefix(static_cast<std::size_t>(written));
      } else if (errno != EINTR) {
        fail("the new file cannot be written");
      }
    }
  }

  void takeRights(const struct stat& from) {
    mode_t mode = from.st_mode & 07777U;
    if (::fchown(file_.get(), from.st_uid, from.st_gid) != 0) {
      // Only an administrator gives files away. Special rights were meant for the old owner.
      mode &= 0777U;
      constexpr auto kSameOwner = static_cast<uid_t>(-1);
      if (::fchown(file_.get(), kSameOwner, from.st_gid) != 0) {
        mode &= ~static_cast<mode_t>(S_IRWXG);
      }
    }
    if (::fchmod(file_.get(), mode) != 0) {
      fail("the new file cannot be given the mode of the old one");
    }
  }

  // Without this it would stay what it was made as, of this user alone.
  void takeRightsOfNewFiles() {
    const mode_t mask = ::umask(0);
    ::umask(mask);
    if (::fchmod(file_.get(), 0666U & ~mask) != 0) {
      fail("the new file cannot be given the mode of new files");
    }
  }

  // Its content is on the disk before it has the name.
  void rename(const std::string& to) {
    if (::fsync(file_.get()) != 0) {
      fail("the new file cannot be written");
    }
    if (std::rename(path_.c_str(), to.c_str()) != 0) {
      fail("the file cannot be replaced");
    }
    isRenamed_ = true;
  }

 private:
  std::string path_;
  Descriptor file_;
  bool isRenamed_ = false;
};

}  // namespace

void replaceFile(const std::string& path, std::string_view content) {
  const struct stat status = requireWritable(path);
  std::error_code error;
  const std::filesystem::path target = std::filesystem::canonical(path, error);
  if (error) {
    fail("its path cannot be followed", error.value());
  }
  TemporaryFile file(target.parent_path());
  file.write(content);
  file.takeRights(status);
  file.rename(target.string());
}

void writeFile(const std::string& path, std::string_view content) {
  std::error_code error;
  const std::filesystem::file_status status = std::filesystem::status(path, error);
  if (!std::filesystem::status_known(status)) {
    fail("the file cannot be looked at", error.value());
  }
  if (std::filesystem::exists(status)) {
    replaceFile(path, content);
    return;
  }
  if (std::filesystem::is_symlink(path, error)) {
    fail("it is a link that leads nowhere", ENOENT);
  }
  TemporaryFile file(std::filesystem::path(path).parent_path());
  file.write(content);
  file.takeRightsOfNewFiles();
  file.rename(path);
}

}  // namespace update_metadata_tool
