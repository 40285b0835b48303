#include "output/FileReplacement.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstddef>
#include <filesystem>
#include <ios>
#include <random>
#include <system_error>
#include <vector>

#include "output/Text.h"

namespace update_metadata_tool::output {

/// Owns a file descriptor and closes it. Negative if there is none.
class Descriptor {
 public:
  explicit Descriptor(int descriptor) : descriptor_(descriptor) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() {
    if (descriptor_ >= 0) {
      ::close(descriptor_);
    }
  }

  int get() const { return descriptor_; }

 private:
  int descriptor_;
};

namespace {

constexpr const char* kAccessList = "system.posix_acl_access";

[[noreturn]] void fail(const char* what, int error = errno) {
  throw std::system_error(error, std::generic_category(), what);
}

struct stat statusOf(int file) {
  struct stat status {};
  if (::fstat(file, &status) != 0) {
    fail("the file cannot be accessed");
  }
  if (!S_ISREG(status.st_mode)) {
    fail("only a regular file can be replaced", EINVAL);
  }
  return status;
}

bool isSame(const timespec& left, const timespec& right) {
  return left.tv_sec == right.tv_sec && left.tv_nsec == right.tv_nsec;
}

// Returns whether both describe one file that was not written in between.
bool isUnchanged(const struct stat& before, const struct stat& now) {
  return before.st_dev == now.st_dev && before.st_ino == now.st_ino &&
         before.st_size == now.st_size && isSame(before.st_mtim, now.st_mtim);
}

std::filesystem::path follow(const std::string& path) {
  std::error_code error;
  std::filesystem::path target = std::filesystem::canonical(path, error);
  if (error) {
    fail("its path cannot be resolved", error.value());
  }
  return target;
}

int openFolder(const std::filesystem::path& folder) {
  const int opened =
      ::open(folder.empty() ? "." : folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC);
  if (opened < 0) {
    fail("its folder cannot be opened");
  }
  return opened;
}

// Negative if it fails. Does not wait for the other end of a pipe.
int openIn(const Descriptor& folder, const std::string& name, int access) {
  return ::openat(folder.get(), name.c_str(), access | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
}

/// Blocks the signals that end a process while it exists.
class BlockedSignals {
 public:
  BlockedSignals() {
    sigset_t blocked;
    ::sigemptyset(&blocked);
    for (const int signal : {SIGHUP, SIGINT, SIGQUIT, SIGTERM}) {
      ::sigaddset(&blocked, signal);
    }
    ::sigprocmask(SIG_BLOCK, &blocked, &before_);
  }
  BlockedSignals(const BlockedSignals&) = delete;
  BlockedSignals& operator=(const BlockedSignals&) = delete;
  ~BlockedSignals() { ::sigprocmask(SIG_SETMASK, &before_, nullptr); }

 private:
  sigset_t before_;
};

std::string makeName() {
  constexpr unsigned kDigits = 8;
  std::random_device random;
  std::string name = ".update-metadata-";
  appendHexadecimal(random(), kDigits, name, kLowerCaseHexadecimal);
  appendHexadecimal(random(), kDigits, name, kLowerCaseHexadecimal);
  return name;
}

/// A new file that its destructor removes unless it was renamed.
class TemporaryFile {
 public:
  TemporaryFile(const Descriptor& folder, mode_t mode)
      : folder_(folder),
        name_(makeName()),
        file_(
            ::openat(folder.get(), name_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode)) {
    if (file_.get() < 0) {
      fail("no file can be created in its folder");
    }
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;
  ~TemporaryFile() {
    if (!isRenamed_) {
      ::unlinkat(folder_.get(), name_.c_str(), 0);
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

  // Copies owner, group, mode and access control list of the open file `from` with this status.
  void copyRights(int from, const struct stat& status) {
    mode_t mode = status.st_mode & 07777U;
    if (::fchown(file_.get(), status.st_uid, status.st_gid) != 0) {
      // Only an administrator may change the owner. Special rights were meant for the old owner.
      mode &= 0777U;
      constexpr auto kSameOwner = static_cast<uid_t>(-1);
      if (::fchown(file_.get(), kSameOwner, status.st_gid) != 0) {
        mode &= ~static_cast<mode_t>(S_IRWXG);
      }
    }
    copyAccessList(from);
    // With an access control list, the mode's group bits limit what the list permits.
    if (::fchmod(file_.get(), mode) != 0) {
      fail("the new file cannot be given the mode of the old one");
    }
  }

  // Puts the content on the disk, before the file gets its final name.
  void flush() {
    if (::fsync(file_.get()) != 0) {
      fail("the new file cannot be written");
    }
  }

  void rename(const std::string& to) {
    if (::renameat(folder_.get(), name_.c_str(), folder_.get(), to.c_str()) != 0) {
      fail("the file cannot be replaced");
    }
    isRenamed_ = true;
  }

 private:
  // Removes a list that the new file inherited from its folder if the old file has none.
  void copyAccessList(int from) {
    constexpr const char* kComplaint =
        "the new file cannot be given the access control list of the old one";
    const ssize_t size = ::fgetxattr(from, kAccessList, nullptr, 0);
    if (size > 0) {
      std::vector<char> list(static_cast<std::size_t>(size));
      const ssize_t got = ::fgetxattr(from, kAccessList, list.data(), list.size());
      if (got < 0 || ::fsetxattr(file_.get(), kAccessList, list.data(),
                                 static_cast<std::size_t>(got), 0) != 0) {
        fail(kComplaint);
      }
    } else if (size < 0 && errno != ENODATA && errno != ENOTSUP) {
      fail(kComplaint);
    } else if (::fremovexattr(file_.get(), kAccessList) != 0 && errno != ENODATA &&
               errno != ENOTSUP) {
      fail(kComplaint);
    }
  }

  const Descriptor& folder_;
  std::string name_;
  Descriptor file_;
  bool isRenamed_ = false;
};

}  // namespace

struct OpenedFile::State {
  // `target` has no symbolic links.
  State(const std::filesystem::path& target, Use use)
      : folder(openFolder(target.parent_path())),
        name(target.filename().string()),
        file(
            openIn(folder, name.empty() ? "." : name, use == Use::kReplace ? O_WRONLY : O_RDONLY)) {
    if (file.get() < 0) {
      fail(use == Use::kReplace ? "the file cannot be written" : "the file cannot be opened");
    }
    status = statusOf(file.get());
  }

  Descriptor folder;
  std::string name;  // in that folder
  Descriptor file;
  struct stat status {};
};

OpenedFile::OpenedFile(const std::string& path, Use use)
    : state_(std::make_unique<State>(follow(path), use)) {}

OpenedFile::~OpenedFile() = default;

std::string OpenedFile::read(std::uint64_t atMost) const {
  constexpr std::size_t kBytesAtOnce = std::size_t{1} << 20U;
  std::string text;
  for (std::size_t size = 0;;) {
    text.resize(size + kBytesAtOnce);
    const ssize_t got =
        ::pread(state_->file.get(), text.data() + size, kBytesAtOnce, static_cast<off_t>(size));
    if (got < 0 && errno != EINTR) {
      throw std::ios_base::failure("the file cannot be read",
                                   std::error_code(errno, std::generic_category()));
    }
    size += got > 0 ? static_cast<std::size_t>(got) : 0;
    if (got == 0 || size > atMost) {
      text.resize(size);
      return text;
    }
  }
}

void OpenedFile::replace(std::string_view content) const {
  constexpr const char* kChanged = "the file has changed since it was read";
  const BlockedSignals blocked;
  // Opened, because only the system knows whether the file may be written.
  const int opened = openIn(state_->folder, state_->name, O_WRONLY);
  if (opened < 0 && (errno == ELOOP || errno == ENOENT || errno == ENXIO || errno == EISDIR)) {
    fail(kChanged, ECANCELED);
  } else if (opened < 0) {
    fail("the file cannot be written");
  }
  const Descriptor current(opened);
  TemporaryFile file(state_->folder, 0600);
  file.write(content);
  struct stat status {};
  if (::fstat(current.get(), &status) != 0 || !isUnchanged(state_->status, status)) {
    fail(kChanged, ECANCELED);
  }
  file.copyRights(current.get(), status);
  file.flush();
  // The last check: the name must still belong to this file, which must still be unchanged.
  if (::fstatat(state_->folder.get(), state_->name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0 ||
      !isUnchanged(state_->status, status)) {
    fail(kChanged, ECANCELED);
  }
  file.rename(state_->name);
}

void writeFile(const std::string& path, std::string_view content) {
  std::error_code error;
  const std::filesystem::file_status status = std::filesystem::status(path, error);
  if (!std::filesystem::status_known(status)) {
    fail("the file cannot be accessed", error.value());
  }
  if (std::filesystem::is_other(status)) {
    // Not left to OpenedFile: the path of a pipe may have no canonical form.
    fail("only a regular file can be replaced", EINVAL);
  }
  if (std::filesystem::exists(status)) {
    OpenedFile(path, OpenedFile::Use::kReplace).replace(content);
    return;
  }
  if (std::filesystem::is_symlink(path, error)) {
    fail("it is a dangling link", ENOENT);
  }
  const std::filesystem::path target(path);
  const Descriptor folder(openFolder(target.parent_path()));
  const BlockedSignals blocked;
  // The umask and the folder limit these rights.
  TemporaryFile file(folder, 0666);
  file.write(content);
  file.flush();
  file.rename(target.filename().string());
}

}  // namespace update_metadata_tool::output
