#include "output/FileReplacement.h"

#include <windows.h>

#include <aclapi.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <filesystem>
#include <ios>
#include <random>
#include <system_error>

#include "output/Text.h"

namespace update_metadata_tool::output {

/// Owns a handle of a file and closes it.
class FileHandle {
 public:
  FileHandle(const std::wstring& path, DWORD access, DWORD share, DWORD disposition)
      : handle_(::CreateFileW(path.c_str(), access, share, nullptr, disposition,
                              FILE_ATTRIBUTE_NORMAL, nullptr)) {}
  FileHandle(const FileHandle&) = delete;
  FileHandle& operator=(const FileHandle&) = delete;
  ~FileHandle() { close(); }

  bool isOpen() const { return handle_ != INVALID_HANDLE_VALUE; }
  HANDLE get() const { return handle_; }

  void close() {
    if (isOpen()) {
      ::CloseHandle(handle_);
      handle_ = INVALID_HANDLE_VALUE;
    }
  }

 private:
  HANDLE handle_;
};

namespace {

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
constexpr std::size_t kBytesAtOnce = std::size_t{1} << 20U;

// The error of the last system call as the standard library numbers errors.
int lastError() {
  const std::error_code error(static_cast<int>(::GetLastError()), std::system_category());
  const std::error_condition condition = error.default_error_condition();
  return condition.category() == std::generic_category() ? condition.value() : EIO;
}

[[noreturn]] void fail(const char* what, int error) {
  throw std::system_error(error, std::generic_category(), what);
}

[[noreturn]] void fail(const char* what) {
  fail(what, lastError());
}

using Status = BY_HANDLE_FILE_INFORMATION;

Status statusOf(const FileHandle& file) {
  if (::GetFileType(file.get()) != FILE_TYPE_DISK) {
    fail("only a regular file can be replaced", EINVAL);
  }
  Status status{};
  if (::GetFileInformationByHandle(file.get(), &status) == 0) {
    fail("the file cannot be accessed");
  }
  return status;
}

// Returns whether both describe one file that was not written in between.
bool isUnchanged(const Status& before, const Status& now) {
  return before.dwVolumeSerialNumber == now.dwVolumeSerialNumber &&
         before.nFileIndexHigh == now.nFileIndexHigh && before.nFileIndexLow == now.nFileIndexLow &&
         before.nFileSizeHigh == now.nFileSizeHigh && before.nFileSizeLow == now.nFileSizeLow &&
         ::CompareFileTime(&before.ftLastWriteTime, &now.ftLastWriteTime) == 0;
}

// The path of an open file without links, in the form that may be long.
std::wstring pathOf(const FileHandle& file) {
  std::wstring path;
  for (DWORD size = MAX_PATH;;) {
    path.resize(size);
    const DWORD needed = ::GetFinalPathNameByHandleW(file.get(), path.data(), size, 0);
    if (needed == 0) {
      fail("its path cannot be resolved");
    }
    path.resize(needed);
    if (needed < size) {
      return path;
    }
    size = needed;
  }
}

BOOL WINAPI ignoreSignal(DWORD /*signal*/) {
  return TRUE;
}

/// Ignores the keys that end a process while it exists.
class IgnoredSignals {
 public:
  IgnoredSignals() { ::SetConsoleCtrlHandler(ignoreSignal, TRUE); }
  IgnoredSignals(const IgnoredSignals&) = delete;
  IgnoredSignals& operator=(const IgnoredSignals&) = delete;
  ~IgnoredSignals() { ::SetConsoleCtrlHandler(ignoreSignal, FALSE); }
};

std::wstring makeName() {
  constexpr unsigned kDigits = 8;
  std::random_device random;
  std::string name = ".update-metadata-";
  appendHexadecimal(random(), kDigits, name, kLowerCaseHexadecimal);
  appendHexadecimal(random(), kDigits, name, kLowerCaseHexadecimal);
  return {name.begin(), name.end()};
}

/// A new file that its destructor removes unless it was renamed.
class TemporaryFile {
 public:
  explicit TemporaryFile(const std::filesystem::path& folder)
      : path_((folder / makeName()).native()),
        file_(path_, GENERIC_WRITE | WRITE_DAC, 0, CREATE_NEW) {
    if (!file_.isOpen()) {
      fail("no file can be created in its folder");
    }
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;
  ~TemporaryFile() {
    if (!isRenamed_) {
      file_.close();
      ::DeleteFileW(path_.c_str());
    }
  }

  // Puts the content on the disk, before the file gets its final name.
  void write(std::string_view content) {
    while (!content.empty()) {
      const auto size = static_cast<DWORD>(std::min(content.size(), kBytesAtOnce));
      DWORD written = 0;
      if (::WriteFile(file_.get(), content.data(), size, &written, nullptr) == 0) {
        fail("the new file cannot be written");
      }
      content.remove_prefix(written);
    }
    if (::FlushFileBuffers(file_.get()) == 0) {
      fail("the new file cannot be written");
    }
  }

  // Copies the access control list of the open file `from`.
  void copyRights(const FileHandle& from) {
    PACL list = nullptr;
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    DWORD error = ::GetSecurityInfo(from.get(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr,
                                    nullptr, &list, nullptr, &descriptor);
    if (error == ERROR_SUCCESS) {
      error = ::SetSecurityInfo(file_.get(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr,
                                nullptr, list, nullptr);
      ::LocalFree(descriptor);
    }
    // A file system without rights has no list either.
    if (error != ERROR_SUCCESS && error != ERROR_NOT_SUPPORTED && error != ERROR_INVALID_FUNCTION) {
      ::SetLastError(error);
      fail("the new file cannot be given the access control list of the old one");
    }
  }

  // Replaces whatever has that name in one step.
  void rename(const std::wstring& to, DWORD attributes = FILE_ATTRIBUTE_NORMAL) {
    file_.close();
    ::SetFileAttributesW(path_.c_str(), attributes);
    if (::MoveFileExW(path_.c_str(), to.c_str(),
                      MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) == 0) {
      const int error = lastError();
      ::SetFileAttributesW(path_.c_str(), FILE_ATTRIBUTE_NORMAL);
      fail("the file cannot be replaced", error);
    }
    isRenamed_ = true;
  }

 private:
  std::wstring path_;
  FileHandle file_;
  bool isRenamed_ = false;
};

}  // namespace

struct OpenedFile::State {
  State(const std::wstring& path, Use use)
      : file(path, use == Use::kReplace ? GENERIC_WRITE : GENERIC_READ, kShareAll, OPEN_EXISTING) {
    if (!file.isOpen()) {
      fail(use == Use::kReplace ? "the file cannot be written" : "the file cannot be opened");
    }
    status = statusOf(file);
    target = pathOf(file);
  }

  FileHandle file;
  Status status{};
  std::wstring target;  // without links
};

OpenedFile::OpenedFile(const std::string& path, Use use)
    : state_(std::make_unique<State>(std::filesystem::u8path(path).native(), use)) {}

OpenedFile::~OpenedFile() = default;

std::string OpenedFile::read(std::uint64_t atMost) const {
  std::string text;
  for (;;) {
    const std::size_t size = text.size();
    text.resize(size + kBytesAtOnce);
    DWORD got = 0;
    if (::ReadFile(state_->file.get(), text.data() + size, static_cast<DWORD>(kBytesAtOnce), &got,
                   nullptr) == 0) {
      throw std::ios_base::failure("the file cannot be read",
                                   std::error_code(lastError(), std::generic_category()));
    }
    text.resize(size + got);
    if (got == 0 || text.size() > atMost) {
      return text;
    }
  }
}

void OpenedFile::replace(std::string_view content) const {
  constexpr const char* kChanged = "the file has changed since it was read";
  const IgnoredSignals ignored;
  const std::filesystem::path target(state_->target);
  // Opened, because only the system knows whether the file may be written.
  FileHandle current(state_->target, GENERIC_WRITE | READ_CONTROL, kShareAll, OPEN_EXISTING);
  if (!current.isOpen() && ::GetLastError() == ERROR_FILE_NOT_FOUND) {
    fail(kChanged, ECANCELED);
  } else if (!current.isOpen()) {
    fail("the file cannot be written");
  } else if ((state_->status.dwFileAttributes & FILE_ATTRIBUTE_READONLY) != 0) {
    fail("the file cannot be written", EACCES);
  }
  TemporaryFile file(target.parent_path());
  file.write(content);
  file.copyRights(current);
  // The last check: the name must still belong to this file, which must still be unchanged.
  if (!isUnchanged(state_->status, statusOf(current))) {
    fail(kChanged, ECANCELED);
  }
  // An open file cannot be replaced.
  current.close();
  state_->file.close();
  file.rename(state_->target, state_->status.dwFileAttributes);
}

void writeFile(const std::string& path, std::string_view content) {
  const std::filesystem::path target = std::filesystem::u8path(path);
  const DWORD attributes = ::GetFileAttributesW(target.c_str());
  if (attributes != INVALID_FILE_ATTRIBUTES) {
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
      fail("only a regular file can be replaced", EINVAL);
    }
    OpenedFile(path, OpenedFile::Use::kReplace).replace(content);
    return;
  }
  const std::filesystem::path folder = target.parent_path();
  std::error_code error;
  if (!folder.empty() && !std::filesystem::is_directory(folder, error)) {
    fail("its folder cannot be opened", ENOENT);
  }
  const IgnoredSignals ignored;
  TemporaryFile file(folder);
  file.write(content);
  file.rename(target.native());
}

}  // namespace update_metadata_tool::output
