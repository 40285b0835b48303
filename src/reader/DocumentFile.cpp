#include "reader/DocumentFile.h"

#include <ios>
#include <stdexcept>

#include "fl/filesystem.h"
#include "reader/StreamText.h"

namespace install::update_metadata_parser {
namespace {

// The final blank belongs to the message: callers compare the whole text.
constexpr const char* kMissingFile = "Update MetaData Json file does not exist ";
constexpr const char* kUnopenedFile = "Error opening Update MetaData Json File";

}  // namespace

std::string readDocument(const std::u16string& path, std::size_t atMost) {
  if (!fl::filesystem::exists(path)) {
    throw std::runtime_error(kMissingFile);
  }
  fl::filesystem::basic_ifstream<char> stream(path, std::ios_base::in);
  if (!stream.is_open()) {
    throw std::runtime_error(kUnopenedFile);
  }
  return readText(*stream.rdbuf(), atMost);
}

}  // namespace install::update_metadata_parser
