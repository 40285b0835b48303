#include "support/FailingFiles.h"

#include <dlfcn.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
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

// Shared libraries must see these replacements of system functions.
#pragma GCC visibility push(default)

extern "C" {

// The linker replaces stat() by this function in statically linked code.
int __real_stat(const char* path, struct stat* status);

int __wrap_stat(const char* path, struct stat* status) {
  return fails(FileCall::kStat) ? -1 : __real_stat(path, status);
}

FILE* fopen64(const char* path, const char* mode) {
  static auto* const real = systemsOwn<FILE*(const char*, const char*)>("fopen64");
  if (fails(FileCall::kOpen)) {
    return nullptr;
  }
  FILE* const file = real(path, mode);
  opened += watched && !busy && file != nullptr ? 1 : 0;
  return file;
}

int fclose(FILE* file) {
  static auto* const real = systemsOwn<int(FILE*)>("fclose");
  opened -= watched && !busy ? 1 : 0;
  const bool failing = fails(FileCall::kClose);
  const int result = real(file);
  if (failing) {
    errno = errorOfFailures;
    return EOF;
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
