#include "support/TemporaryFolder.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <system_error>

namespace test_support {

namespace {

namespace fs = std::filesystem;

void require(bool success, const std::string& what) {
  if (!success) {
    throw std::system_error(errno, std::generic_category(), what);
  }
}

std::u16string toUtf16(const std::string& nativePath) {
  return fs::path(nativePath).u16string();
}

}  // namespace

TemporaryFolder::TemporaryFolder()
    : nativePath_((fs::temp_directory_path() / "folder-XXXXXX").string()) {
  require(::mkdtemp(nativePath_.data()) != nullptr, nativePath_);
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  fs::remove_all(nativePath_, ignored);
}

std::u16string TemporaryFolder::path() const {
  return toUtf16(nativePath_);
}

std::u16string TemporaryFolder::path(std::string_view name) const {
  return toUtf16(nativePath(name));
}

std::string TemporaryFolder::nativePath(std::string_view name) const {
  return nativePath_ + '/' + std::string(name);
}

std::u16string TemporaryFolder::writeFile(std::string_view name, std::string_view bytes) const {
  const std::string file = nativePath(name);
  fs::create_directories(fs::path(file).parent_path());
  std::ofstream stream(file, std::ios_base::binary);
  stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  stream.close();
  require(stream.good(), file);
  return toUtf16(file);
}

std::u16string TemporaryFolder::makeFolder(std::string_view name) const {
  fs::create_directories(nativePath(name));
  return path(name);
}

std::u16string TemporaryFolder::makeLink(std::string_view name, std::string_view target) const {
  fs::create_symlink(target, nativePath(name));
  return path(name);
}

std::u16string TemporaryFolder::makeFifo(std::string_view name) const {
  require(::mkfifo(nativePath(name).c_str(), 0600) == 0, nativePath(name));
  return path(name);
}

std::u16string TemporaryFolder::makeSocket(std::string_view name) const {
  require(::mknod(nativePath(name).c_str(), S_IFSOCK | 0600, 0) == 0, nativePath(name));
  return path(name);
}

}  // namespace test_support
