#include "install/update_metadata_parser/UpdateMetaData.h"

#include "install/update_metadata_parser/UpdateMetaDataHandler.h"

namespace install::update_metadata_parser {

UpdateMetaData::UpdateMetaData(const std::shared_ptr<UpdateMetaDataHandler>& updateMetaDataHandler)
    : handler(updateMetaDataHandler) {}

UpdateMetaData::~UpdateMetaData() = default;

std::u16string UpdateMetaData::getBaseReleaseFamily() const {
  return handler->getBaseReleaseFamily();
}

std::u16string UpdateMetaData::getTargetReleaseFamily() const {
  return handler->getTargetReleaseFamily();
}

std::u16string UpdateMetaData::getBaseReleaseVersion() const {
  return handler->getBaseReleaseVersion();
}

std::u16string UpdateMetaData::getTargetReleaseVersion() const {
  return handler->getTargetReleaseVersion();
}

int UpdateMetaData::getTargetUpdateLevelForQorv() const {
  return handler->getTargetUpdateLevelForQorv();
}

std::map<std::u16string, std::set<std::u16string>> UpdateMetaData::getComponentsToExtract(
    const std::u16string& productDataLocation) const {
  return handler->getComponentsToExtract(productDataLocation);
}

std::set<std::u16string> UpdateMetaData::getComponentsToExtract(
    const std::u16string& productBaseCode, const std::u16string& productDataLocation) const {
  return handler->getComponentsToExtract(productBaseCode, productDataLocation);
}

std::map<std::u16string, std::set<std::u16string>> UpdateMetaData::getComponentsToDelete(
    const std::u16string& productDataLocation) const {
  return handler->getComponentsToDelete(productDataLocation);
}

std::set<std::u16string> UpdateMetaData::getComponentsToDelete(
    const std::u16string& productBaseCode, const std::u16string& productDataLocation) const {
  return handler->getComponentsToDelete(productBaseCode, productDataLocation);
}

std::map<std::u16string, std::pair<std::set<std::u16string>, std::int64_t>>
UpdateMetaData::getComponentsWithFilesToDelete() const {
  return handler->getComponentsWithFilesToDelete();
}

std::map<std::u16string, std::pair<std::int64_t, std::int64_t>>
UpdateMetaData::getUpdateSizeForComponentsToExtract() const {
  return handler->getUpdateSizeForComponentsToExtract();
}

}  // namespace install::update_metadata_parser
