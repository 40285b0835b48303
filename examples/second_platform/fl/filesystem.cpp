#include "fl/filesystem.h"

namespace fl::filesystem {
namespace {

struct File {
  const char16_t* path;
  const char* bytes;  ///< null if the file is locked
};

// The name of the product is Latin-1, as all general text of this platform; the file is UTF-8.
constexpr const char* kUpdate =
    R"({"metadata":{"arch":"","base":null,"target":null},)"
    R"("components":{"core":{"delete":{"old":{"size":1}},"extract":{}}},)"
    "\"products\":{\"\xC9"
    "diteur\":{\"delete\":[\"core\"],\"extract\":[]}},"
    "\"componentsWithFilesDeleted\":{\"core\":{\"manual\":{\"size\":2,\"files\":["
    "\"\xC3\xA9t\xC3\xA9\"]}}}}";

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

}  // namespace

bool exists(const std::u16string& path) {
  return find(path) != nullptr;
}

basic_ifstream<char>::basic_ifstream(const std::u16string& path, std::ios_base::openmode /*mode*/)
    : std::istream(nullptr) {
  rdbuf(&buffer_);
  const File* const file = find(path);
  if (file != nullptr && file->bytes != nullptr) {
    buffer_.str(file->bytes);
    isOpen_ = true;
  }
}

}  // namespace fl::filesystem
