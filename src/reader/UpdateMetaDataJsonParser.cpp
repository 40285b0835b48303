#include "install/update_metadata_parser/UpdateMetaDataJsonParser.h"

#include <exception>
#include <ios>
#include <stdexcept>
#include <utility>

#include "fl/filesystem.h"
#include "fl/i18n.h"
#include "foundation/json/Value.h"
#include "install/update_metadata_parser/UpdateMetaData.h"
#include "install/update_metadata_parser/UpdateMetaDataHandler.h"
#include "json/JsonText.h"
#include "reader/StreamText.h"

namespace install::update_metadata_parser {
namespace {

using foundation::json::Object;

// The final blank belongs to the message: callers compare the whole text.
constexpr const char* kMissingFile = "Update MetaData Json file does not exist ";
constexpr const char* kUnopenedFile = "Error opening Update MetaData Json File";
constexpr const char* kParseFailure = "Error while parsing ";

}  // namespace

UpdateMetaDataJsonParser::UpdateMetaDataJsonParser(const std::u16string& path)
    : metaDataFilePath(path) {}

UpdateMetaDataJsonParser::~UpdateMetaDataJsonParser() = default;

std::shared_ptr<UpdateMetaData> UpdateMetaDataJsonParser::parseUpdateMetaDataJson() {
  setupUpdateMetaDataHandler();
  std::shared_ptr<UpdateMetaData> updateMetaData = setupUpdateMetaData();
  const Object document = getJsonObjFromFile(metaDataFilePath);
  // Each section is looked up only when it is read, so that those before a missing one are read.
  // The products need the tables that the components fill.
  parseMetaData(document.at("metadata"));
  parseComponentData(document.at("components"));
  parseProductData(document.at("products"));
  parseComponentsWithFilesDeleted(document.at("componentsWithFilesDeleted"));
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
    // The caller learns which document is at fault, not what is wrong in it.
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
