#include "fl/filesystem.h"

#include <sys/stat.h>

#include <locale>
#include <optional>

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

bool isFolder(const std::string& nativePath) {
  struct stat status = {};
  return ::stat(nativePath.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

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

basic_ifstream<char>::basic_ifstream(const std::u16string& path, std::ios_base::openmode mode) {
  const std::optional<std::string> native = toNativePath(path);
  if (!native) {
    setstate(std::ios_base::failbit);
    return;
  }
  // Before the file is opened, and so for every byte of it: a global locale may convert characters.
  imbue(std::locale::classic());
  open(*native, mode);
  // The platform opens a folder for reading and rejects only the first read.
  if (is_open() && isFolder(*native)) {
    close();
    setstate(std::ios_base::failbit);
  }
}

}  // namespace fl::filesystem
