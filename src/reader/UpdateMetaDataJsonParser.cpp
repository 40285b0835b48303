#include "install/update_metadata_parser/UpdateMetaDataJsonParser.h"

#include <exception>
#include <stdexcept>
#include <utility>

#include "fl/i18n.h"
#include "foundation/json/Value.h"
#include "install/update_metadata_parser/UpdateMetaData.h"
#include "install/update_metadata_parser/UpdateMetaDataHandler.h"
#include "json/JsonText.h"
#include "reader/DocumentFile.h"

namespace install::update_metadata_parser {
namespace {

using foundation::json::Object;

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
  return readDocument(path);
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
