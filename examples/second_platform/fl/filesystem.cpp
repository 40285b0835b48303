#include "fl/filesystem.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace fl::filesystem {
namespace {

struct File {
  const char16_t* path;
  const char* text;  ///< null if the file is locked; bytes beyond ASCII are escaped, as in %C3%A9
};

// All names and texts are Latin-1, this platform's general encoding, except the deleted file, which
// is UTF-8.
constexpr const char* kUpdate = R"({"metadata":{"arch":"m%E9l%E9",
  "base":{"zelvan_version":"","date":"","version":"un%B9","prerelease":false,
          "release":"b%E2le","checksum":"","description":"","update":6},
  "target":{"zelvan_version":"","date":"","version":"trois%B3","prerelease":false,
            "release":"t%EAte","checksum":"","description":"","update":7}},
"components":{
  "vi%E8ux":{"delete":{"p%E8re":{"size":1}},"extract":{}},
  "no%EBl":{"delete":{},"extract":{"fl%FBte":{"size":3,"uncompressedBytes":4}}}},
"products":{"%C8ve":{"delete":["vi%E8ux"],"extract":["no%EBl"]}},
"componentsWithFilesDeleted":{"for%EAt":{"cl%EAt":{"size":2,"files":["%C3%A9t%C3%A9"]}}}})";

constexpr File kFiles[] = {
    {u"built-in:update", kUpdate},
    {u"built-in:broken", "{"},
    {u"built-in:locked", nullptr},
};

const File* find(const std::u16string& path) {
  for (const File& file : kFiles) {
    if (file.path == path) {
      return &file;
    }
  }
  return nullptr;
}

std::string bytesOf(std::string_view text) {
  std::string bytes;
  for (std::size_t position = 0; position != text.size(); ++position) {
    if (text[position] != '%') {
      bytes += text[position];
      continue;
    }
    bytes += static_cast<char>(std::stoi(std::string(text.substr(position + 1, 2)), nullptr, 16));
    position += 2;
  }
  return bytes;
}

}  // namespace

bool exists(const std::u16string& path) {
  return find(path) != nullptr;
}

basic_ifstream<char>::basic_ifstream(const std::u16string& path, std::ios_base::openmode /*mode*/)
    : std::istream(nullptr) {
  rdbuf(&buffer_);
  const File* const file = find(path);
  if (file != nullptr && file->text != nullptr) {
    buffer_.str(bytesOf(file->text));
    isOpen_ = true;
  }
}

}  // namespace fl::filesystem
