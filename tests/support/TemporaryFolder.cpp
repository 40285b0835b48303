#include "support/TemporaryFolder.h"

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <random>
#include <system_error>

namespace test_support {

namespace {

namespace fs = std::filesystem;

void require(bool success, const std::string& what) {
  if (!success) {
    throw std::system_error(errno, std::generic_category(), what);
  }
}

std::u16string toUtf16(const std::string& path) {
  return fs::u8path(path).u16string();
}

std::string newName() {
  std::random_device random;
  return "folder-" + std::to_string(random()) + '-' + std::to_string(random());
}

}  // namespace

TemporaryFolder::TemporaryFolder()
    : nativePath_((fs::temp_directory_path() / newName()).generic_u8string()) {
  const fs::path folder = fs::u8path(nativePath_);
  require(fs::create_directory(folder), nativePath_);
  fs::permissions(folder, fs::perms::owner_all);
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  fs::remove_all(fs::u8path(nativePath_), ignored);
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
  checkName(name);
  const std::string file = nativePath(name);
  fs::create_directories(fs::u8path(file).parent_path());
  std::ofstream stream(fs::u8path(file), std::ios_base::binary);
  stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  stream.close();
  require(stream.good(), file);
  return toUtf16(file);
}

std::u16string TemporaryFolder::makeFolder(std::string_view name) const {
  checkName(name);
  fs::create_directories(fs::u8path(nativePath(name)));
  return path(name);
}

}  // namespace test_support
