#include "install/update_metadata_parser/UpdateMetaDataJsonParser.h"

#include <algorithm>
#include <exception>
#include <ios>
#include <stdexcept>
#include <utility>

#include "fl/filesystem.h"
#include "fl/i18n.h"
#include "foundation/core/large_pages.h"
#include "foundation/json/Value.h"
#include "install/update_metadata_parser/UpdateMetaData.h"
#include "install/update_metadata_parser/UpdateMetaDataHandler.h"
#include "json/JsonText.h"

namespace install::update_metadata_parser {
namespace {

using foundation::json::Object;
using foundation::json::Value;

// The final blank belongs to the message: callers compare the whole text.
constexpr const char* kMissingFile = "Update MetaData Json file does not exist ";
constexpr const char* kUnopenedFile = "Error opening Update MetaData Json File";
constexpr const char* kParseFailure = "Error while parsing ";

// Bytes asked for at a time, and by how much the room for them grows: room that is never filled
// costs address space only.
constexpr std::size_t kReadBytes = std::size_t{64} << 10;
constexpr std::size_t kGrowth = 4;

// What a file says of its size is believed up to here; a longer one is read all the same.
constexpr std::streamoff kMostBelieved = std::streamoff{1} << 30;

// The bytes that a stream buffer at its beginning seems to have; 0 if it cannot tell.
std::size_t sizeHint(std::streambuf& buffer) {
  const std::streamoff end = buffer.pubseekoff(0, std::ios_base::end, std::ios_base::in);
  if (end <= 0) {
    return 0;
  }
  if (buffer.pubseekpos(0, std::ios_base::in) != std::streampos(0)) {
    throw std::ios_base::failure("a file that has an end has lost its beginning");
  }
  return end <= kMostBelieved ? static_cast<std::size_t>(end) : 0;
}

void reserve(std::string& text, std::size_t room) {
  text.reserve(room);
  foundation::core::adviseLargePages(text.data(), text.capacity());
}

// Takes all that a stream buffer gives, to its end, whatever the file says of its size.
std::string readToEnd(std::streambuf& buffer) {
  std::string text;
  const std::size_t hint = sizeHint(buffer);
  // One byte more than there seem to be: only a read that asks for it meets the end.
  reserve(text, hint != 0 ? hint + 1 : kReadBytes);
  for (;;) {
    const std::size_t size = text.size();
    if (size == text.capacity()) {
      reserve(text, text.capacity() * kGrowth);
    }
    const std::size_t asked = std::min(kReadBytes, text.capacity() - size);
    text.resize(size + asked);
    const auto got = static_cast<std::size_t>(
        buffer.sgetn(text.data() + size, static_cast<std::streamsize>(asked)));
    if (got < asked) {
      text.resize(size + got);
      return text;
    }
  }
}

}  // namespace

UpdateMetaDataJsonParser::UpdateMetaDataJsonParser(const std::u16string& path)
    : metaDataFilePath(path) {}

UpdateMetaDataJsonParser::~UpdateMetaDataJsonParser() = default;

std::shared_ptr<UpdateMetaData> UpdateMetaDataJsonParser::parseUpdateMetaDataJson() {
  setupUpdateMetaDataHandler();
  std::shared_ptr<UpdateMetaData> updateMetaData = setupUpdateMetaData();
  const Object document = getJsonObjFromFile(metaDataFilePath);
  // Each section is looked up when its turn comes, so that what comes before a missing one is read.
  // The products need the tables that the components fill.
  parseMetaData(Value(document.at("metadata")));
  parseComponentData(Value(document.at("components")));
  parseProductData(Value(document.at("products")));
  parseComponentsWithFilesDeleted(Value(document.at("componentsWithFilesDeleted")));
  return updateMetaData;
}

std::string UpdateMetaDataJsonParser::readFile(const std::u16string& path) {
  if (!fl::filesystem::exists(path)) {
    throw std::runtime_error(kMissingFile);
  }
  fl::filesystem::basic_ifstream<char> stream(path, std::ios_base::in);
  if (!stream.is_open()) {
    throw std::runtime_error(kUnopenedFile);
  }
  return readToEnd(*stream.rdbuf());
}

std::shared_ptr<UpdateMetaDataHandler> UpdateMetaDataJsonParser::getUpdateMetaDataHandler() const {
  return std::make_shared<UpdateMetaDataHandler>();
}

Object UpdateMetaDataJsonParser::getJsonObjFromFile(const std::u16string& path) {
  std::string text = readFile(path);
  try {
    return foundation::json::parseJsonText(std::move(text)).as<Object>();
  } catch (const std::exception&) {
    // Callers are told which document, not what is wrong in it.
    throw std::runtime_error(kParseFailure + fl::i18n::to_string(path));
  }
}

void UpdateMetaDataJsonParser::setupUpdateMetaDataHandler() {
  handler = getUpdateMetaDataHandler();
  handler->initializeReleaseData();
  handler->initializeBaseRelease();
  handler->initializeTargetRelease();
}

std::shared_ptr<UpdateMetaData> UpdateMetaDataJsonParser::setupUpdateMetaData() const {
  return std::make_shared<UpdateMetaData>(handler);
}

}  // namespace install::update_metadata_parser
