#include "fl/filesystem.h"

#include <windows.h>

#include <filesystem>
#include <fstream>
#include <locale>
#include <utility>

namespace fl::filesystem {

namespace {

/// Attributes of a path that names nothing.
constexpr DWORD kNothing = INVALID_FILE_ATTRIBUTES;

bool isPath(const std::u16string& text) {
  return !text.empty() && text.find(u'\0') == std::u16string::npos;
}

std::wstring toNativePath(const std::u16string& path) {
  return {path.begin(), path.end()};
}

/// Returns the attributes of what `path` leads to if its last part is a link.
DWORD attributesBehindLink(const std::wstring& path) {
  constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  const HANDLE file = ::CreateFileW(path.c_str(), FILE_READ_ATTRIBUTES, kShareAll, nullptr,
                                    OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  if (file == INVALID_HANDLE_VALUE) {
    return kNothing;
  }
  BY_HANDLE_FILE_INFORMATION information{};
  const bool isKnown = ::GetFileInformationByHandle(file, &information) != 0;
  ::CloseHandle(file);
  return isKnown ? information.dwFileAttributes : kNothing;
}

DWORD attributesOf(const std::u16string& path) {
  if (!isPath(path)) {
    return kNothing;
  }
  const std::wstring native = toNativePath(path);
  const DWORD attributes = ::GetFileAttributesW(native.c_str());
  const bool isLink = attributes != kNothing && (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
  return isLink ? attributesBehindLink(native) : attributes;
}

}  // namespace

bool exists(const std::u16string& path) {
  return attributesOf(path) != kNothing;
}

bool is_directory(const std::u16string& path) {
  const DWORD attributes = attributesOf(path);
  return attributes != kNothing && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

std::u16string join(const std::u16string& folder, std::u16string_view name) {
  std::u16string path = folder;
  // After a colon, the name is relative to the working directory of the drive.
  if (std::u16string_view(u"/\\:").find(path.back()) == std::u16string_view::npos) {
    // After the prefix "\\?\", a slash is an ordinary character.
    path += path.find(u'\\') != std::u16string::npos ? u'\\' : u'/';
  }
  return path.append(name);
}

basic_ifstream<char>::basic_ifstream(const std::u16string& path, std::ios_base::openmode /*mode*/)
    : std::istream(nullptr) {
  if (isPath(path)) {
    auto buffer = std::make_unique<std::filebuf>();
    // Before the file is opened, and so for every byte of it: a global locale may convert
    // characters.
    buffer->pubimbue(std::locale::classic());
    // As text, bytes would be converted and 1A would end the file. A folder does not open.
    if (buffer->open(std::filesystem::path(toNativePath(path)),
                     std::ios_base::in | std::ios_base::binary) != nullptr) {
      buffer_ = std::move(buffer);
    }
  }
  rdbuf(buffer_.get());
  if (!is_open()) {
    setstate(std::ios_base::failbit);
  }
}

}  // namespace fl::filesystem
