// Any UTF-16 text as a path below a folder with entries of many kinds: whether it exists, whether
// it opens, and what readFile() returns or throws agree with the operating system.

#include <sys/stat.h>

#include <cstring>
#include <ios>
#include <iterator>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <typeinfo>

#include "Fuzzer.h"
#include "Require.h"
#include "fl/filesystem.h"
#include "install/update_metadata_parser/UpdateMetaDataJsonParser.h"
#include "support/NaiveText.h"
#include "support/TemporaryFolder.h"

namespace {

using fuzz::require;
using fuzz::requireEqual;
using install::update_metadata_parser::UpdateMetaDataJsonParser;
using test_support::TemporaryFolder;

// Every file contains the name that it was created with.
constexpr const char* kFiles[] = {"a",
                                  "document.json",
                                  "\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80",
                                  "\xEF\xBF\xBD",
                                  "folder/a",
                                  "folder/deeper/a",
                                  "with blank",
                                  "\\"};

class Folder {
 public:
  Folder() {
    for (const char* file : kFiles) {
      folder_.writeFile(file, file);
    }
    folder_.makeFolder("empty");
    folder_.makeLink("link", "folder/a");
    folder_.makeLink("link-to-folder", "folder");
    folder_.makeLink("nowhere", "missing");
    folder_.makeLink("loop", "loop");
    folder_.makeSocket("socket");
  }

  std::u16string path() const { return folder_.path(); }

 private:
  TemporaryFolder folder_;
};

// The kind of the entry at a path according to the system, or nothing.
std::optional<mode_t> kindOf(const std::u16string& path) {
  const std::string native = test_support::naiveToUtf8(path);
  struct stat status = {};
  if (path.empty() || native.find('\0') != std::string::npos ||
      test_support::naiveToUtf16(native) != path || ::stat(native.c_str(), &status) != 0) {
    return std::nullopt;
  }
  return status.st_mode & static_cast<mode_t>(S_IFMT);
}

void checkPath(const std::u16string& path, std::optional<mode_t> kind) {
  const bool opens = kind == mode_t{S_IFREG};
  require(fl::filesystem::exists(path) == kind.has_value(), "exists() says something else");
  fl::filesystem::basic_ifstream<char> stream(path);
  require(stream.is_open() == opens, "is_open() is wrong");
  require(stream.fail() != opens, "fail() does not agree with is_open()");
  const std::string expected = opens  ? std::string(std::istreambuf_iterator<char>(stream), {})
                               : kind ? "Error opening Update MetaData Json File"
                                      : "Update MetaData Json file does not exist ";
  UpdateMetaDataJsonParser parser(path);
  std::string found;
  bool isRead = false;
  try {
    found = parser.readFile(path);
    isRead = true;
  } catch (const std::runtime_error& failure) {
    require(typeid(failure) == typeid(std::runtime_error), "an exception of another kind");
    found = failure.what();
  }
  require(isRead == opens, "readFile() reads or does not");
  requireEqual(found, expected, "readFile() gives something else");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const Folder folder;
  // Tried as UTF-8, the encoding of most names, and as UTF-16, which may be ill-formed.
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  std::u16string units(size / sizeof(char16_t), u'\0');
  if (!units.empty()) {
    std::memcpy(units.data(), data, units.size() * sizeof(char16_t));
  }
  for (const std::u16string& name : {test_support::naiveToUtf16(bytes), units}) {
    // Nothing outside the folder may be opened.
    if (name.find(u"..") == std::u16string::npos) {
      const std::u16string below = folder.path() + u'/' + name;
      checkPath(below, kindOf(below));
      if (name.find(u'/') == std::u16string::npos && !kindOf(name)) {
        checkPath(name, std::nullopt);
      }
    }
  }
  return 0;
}
