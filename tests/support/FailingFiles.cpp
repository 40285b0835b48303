#include "support/FailingFiles.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <functional>
#include <limits>
#include <utility>
#include <vector>

namespace {

using test_support::FileCall;

bool watched = false;
bool busy = false;  // inside the watch itself
std::vector<FileCall> seen;
std::size_t firstFailure = 0;
std::size_t failures = 0;
int errorOfFailures = 0;
std::size_t mostBytes = 0;
bool interrupts = false;
bool interrupted = false;
int opened = 0;
std::function<void()> action;
FileCall callOfAction = FileCall::kOpen;
std::size_t callsBeforeAction = 0;

// Records a call and returns whether it is to fail.
bool fails(FileCall call) {
  if (!watched || busy) {
    return false;
  }
  busy = true;
  const std::size_t place = seen.size();
  seen.push_back(call);
  if (action && call == callOfAction && callsBeforeAction-- == 0) {
    std::exchange(action, nullptr)();
  }
  busy = false;
  if (place < firstFailure || place - firstFailure >= failures) {
    return false;
  }
  errno = errorOfFailures;
  return true;
}

template <class Function>
Function* systemsOwn(const char* name) {
  return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

}  // namespace

// Shared libraries must see the replacements of system functions.
#pragma GCC visibility push(default)

extern "C" {

// In statically linked code, the linker replaces the functions by these. Files may be large, so
// their names end in 64.
int __real_stat64(const char* path, struct stat* status);
int __real_fstat64(int descriptor, struct stat* status);
int __real_open64(const char* path, int flags, ...);
int __real_close(int descriptor);

int __wrap_stat64(const char* path, struct stat* status) {
  return fails(FileCall::kStat) ? -1 : __real_stat64(path, status);
}

int __wrap_fstat64(int descriptor, struct stat* status) {
  return fails(FileCall::kStat) ? -1 : __real_fstat64(descriptor, status);
}

int __wrap_open64(const char* path, int flags, ...) {
  std::va_list arguments;
  va_start(arguments, flags);
  const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
  va_end(arguments);
  if (fails(FileCall::kOpen)) {
    return -1;
  }
  const int file = __real_open64(path, flags, mode);
  opened += watched && !busy && file >= 0 ? 1 : 0;
  return file;
}

int __wrap_close(int descriptor) {
  opened -= watched && !busy ? 1 : 0;
  const bool failing = fails(FileCall::kClose);
  const int result = __real_close(descriptor);
  if (failing) {
    errno = errorOfFailures;
    return -1;
  }
  return result;
}

off64_t lseek64(int descriptor, off64_t offset, int origin) noexcept {
  static auto* const real = systemsOwn<off64_t(int, off64_t, int)>("lseek64");
  return fails(FileCall::kSeek) ? -1 : real(descriptor, offset, origin);
}

ssize_t read(int descriptor, void* bytes, std::size_t count) {
  static auto* const real = systemsOwn<ssize_t(int, void*, std::size_t)>("read");
  if (fails(FileCall::kRead)) {
    return -1;
  }
  if (watched && interrupts && !interrupted) {
    interrupted = true;
    errno = EINTR;
    return -1;
  }
  interrupted = false;
  return real(descriptor, bytes, watched ? std::min(count, mostBytes) : count);
}

}  // extern "C"

#pragma GCC visibility pop

namespace test_support {

WatchedFiles::WatchedFiles() noexcept : WatchedFiles(0, 0, 0) {}

WatchedFiles::WatchedFiles(std::size_t nth, std::size_t count, int error) noexcept {
  seen.clear();
  firstFailure = nth;
  failures = count;
  errorOfFailures = error;
  mostBytes = std::numeric_limits<ssize_t>::max();
  interrupts = false;
  interrupted = false;
  opened = 0;
  action = nullptr;
  watched = true;
}

WatchedFiles::~WatchedFiles() {
  watched = false;
}

void WatchedFiles::limitReads(std::size_t bytes) noexcept {
  mostBytes = bytes;
}

void WatchedFiles::interruptReads() noexcept {
  interrupts = true;
}

void WatchedFiles::runBefore(FileCall call, std::size_t nth, std::function<void()> newAction) {
  action = std::move(newAction);
  callOfAction = call;
  callsBeforeAction = nth;
}

const std::vector<FileCall>& WatchedFiles::calls() const noexcept {
  return seen;
}

int WatchedFiles::openFiles() const noexcept {
  return opened;
}

}  // namespace test_support
