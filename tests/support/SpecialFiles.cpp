// The names and files of a TemporaryFolder that only POSIX systems have.

#include <sys/stat.h>

#include <cerrno>
#include <filesystem>
#include <system_error>

#include "support/TemporaryFolder.h"

namespace test_support {
namespace {

void requireMade(bool success, const std::string& what) {
  if (!success) {
    throw std::system_error(errno, std::generic_category(), what);
  }
}

}  // namespace

void TemporaryFolder::checkName(std::string_view /*name*/) {}

std::u16string TemporaryFolder::makeLink(std::string_view name, std::string_view target) const {
  std::filesystem::create_symlink(target, nativePath(name));
  return path(name);
}

std::u16string TemporaryFolder::makeFifo(std::string_view name) const {
  requireMade(::mkfifo(nativePath(name).c_str(), 0600) == 0, nativePath(name));
  return path(name);
}

std::u16string TemporaryFolder::makeSocket(std::string_view name) const {
  requireMade(::mknod(nativePath(name).c_str(), S_IFSOCK | 0600, 0) == 0, nativePath(name));
  return path(name);
}

}  // namespace test_support
