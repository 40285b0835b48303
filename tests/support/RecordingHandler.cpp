#include "support/RecordingHandler.h"

#include "support/VisibleText.h"

namespace test_support {
namespace {

using install::datamodels::product_update::PkgDataWithFilesToDelete;
using install::datamodels::product_update::ProductUpdateMetaData;
using install::update_metadata_parser::UpdateMetaDataHandler;
using install::update_metadata_parser::UpdatePkgData;

std::string written(const std::u16string& text) {
  return visible(text);
}

std::string written(std::int64_t number) {
  return std::to_string(number);
}

std::string written(const UpdatePkgData& pkg) {
  return '(' + written(pkg.name) + ", " + written(pkg.size) + ", " +
         written(pkg.uncompressedBytes) + ')';
}

std::string written(const PkgDataWithFilesToDelete& pkg) {
  return pkg ? written(pkg->getName()) : "none";
}

template <class T>
std::string written(const std::vector<T>& list) {
  std::string text;
  for (const T& item : list) {
    text += (text.empty() ? "" : ", ") + written(item);
  }
  return '[' + text + ']';
}

template <class T>
std::string written(const std::map<std::u16string, T>& table) {
  std::string text;
  for (const auto& [key, value] : table) {
    text += (text.empty() ? "" : ", ") + written(key) + ": " + written(value);
  }
  return '{' + text + '}';
}

template <class First, class... Others>
std::string call(const char* operation, const First& first, const Others&... others) {
  std::string text = operation + ('(' + written(first));
  ((text += ", " + written(others)), ...);
  return text + ')';
}

}  // namespace

void RecordingHandler::initializeReleaseData() const {
  calls_.emplace_back("initializeReleaseData()");
  UpdateMetaDataHandler::initializeReleaseData();
}

void RecordingHandler::initializeBaseRelease() const {
  calls_.emplace_back("initializeBaseRelease()");
  UpdateMetaDataHandler::initializeBaseRelease();
}

void RecordingHandler::initializeTargetRelease() const {
  calls_.emplace_back("initializeTargetRelease()");
  UpdateMetaDataHandler::initializeTargetRelease();
}

void RecordingHandler::setBaseReleaseFamily(const std::u16string& family) {
  calls_.push_back(call("setBaseReleaseFamily", family));
  UpdateMetaDataHandler::setBaseReleaseFamily(family);
}

std::u16string RecordingHandler::getBaseReleaseFamily() const {
  calls_.emplace_back("getBaseReleaseFamily()");
  return UpdateMetaDataHandler::getBaseReleaseFamily();
}

void RecordingHandler::setTargetReleaseFamily(const std::u16string& family) {
  calls_.push_back(call("setTargetReleaseFamily", family));
  UpdateMetaDataHandler::setTargetReleaseFamily(family);
}

std::u16string RecordingHandler::getTargetReleaseFamily() const {
  calls_.emplace_back("getTargetReleaseFamily()");
  return UpdateMetaDataHandler::getTargetReleaseFamily();
}

void RecordingHandler::setBaseReleaseVersion(const std::u16string& version) const {
  calls_.push_back(call("setBaseReleaseVersion", version));
  UpdateMetaDataHandler::setBaseReleaseVersion(version);
}

std::u16string RecordingHandler::getBaseReleaseVersion() const {
  calls_.emplace_back("getBaseReleaseVersion()");
  return UpdateMetaDataHandler::getBaseReleaseVersion();
}

void RecordingHandler::setTargetReleaseVersion(const std::u16string& version) const {
  calls_.push_back(call("setTargetReleaseVersion", version));
  UpdateMetaDataHandler::setTargetReleaseVersion(version);
}

std::u16string RecordingHandler::getTargetReleaseVersion() const {
  calls_.emplace_back("getTargetReleaseVersion()");
  return UpdateMetaDataHandler::getTargetReleaseVersion();
}

void RecordingHandler::setTargetUpdateLevelForQorv(int level) const {
  calls_.push_back(call("setTargetUpdateLevelForQorv", level));
  UpdateMetaDataHandler::setTargetUpdateLevelForQorv(level);
}

int RecordingHandler::getTargetUpdateLevelForQorv() const {
  calls_.emplace_back("getTargetUpdateLevelForQorv()");
  return UpdateMetaDataHandler::getTargetUpdateLevelForQorv();
}

void RecordingHandler::setMetaDataArch(const std::u16string& arch) const {
  calls_.push_back(call("setMetaDataArch", arch));
  UpdateMetaDataHandler::setMetaDataArch(arch);
}

void RecordingHandler::setProductDeltaData(const std::u16string& name,
                                           const std::vector<std::u16string>& compsToDelete,
                                           const std::vector<std::u16string>& compsToExtract,
                                           const PkgsToDelete& pkgsToDelete,
                                           const PkgsToExtract& pkgsToExtract) const {
  calls_.push_back(call("setProductDeltaData", name, compsToDelete, compsToExtract, pkgsToDelete,
                        pkgsToExtract));
  UpdateMetaDataHandler::setProductDeltaData(name, compsToDelete, compsToExtract, pkgsToDelete,
                                             pkgsToExtract);
}

PkgDataWithFilesToDelete RecordingHandler::createPkgDataWithFilesToDelete(
    const std::u16string& name, std::int64_t size, const std::vector<std::u16string>& files) const {
  calls_.push_back(call("createPkgDataWithFilesToDelete", name, size, files));
  return UpdateMetaDataHandler::createPkgDataWithFilesToDelete(name, size, files);
}

void RecordingHandler::setComponentDataWithFilesToDelete(
    const std::u16string& name, const std::vector<PkgDataWithFilesToDelete>& pkgs) const {
  calls_.push_back(call("setComponentDataWithFilesToDelete", name, pkgs));
  UpdateMetaDataHandler::setComponentDataWithFilesToDelete(name, pkgs);
}

std::map<std::u16string, std::set<std::u16string>> RecordingHandler::getComponentsToExtract(
    const std::u16string& productDataLocation) {
  calls_.push_back(call("getComponentsToExtract", productDataLocation));
  return UpdateMetaDataHandler::getComponentsToExtract(productDataLocation);
}

std::set<std::u16string> RecordingHandler::getComponentsToExtract(
    const std::u16string& productBaseCode, const std::u16string& productDataLocation) {
  calls_.push_back(call("getComponentsToExtract", productBaseCode, productDataLocation));
  return UpdateMetaDataHandler::getComponentsToExtract(productBaseCode, productDataLocation);
}

std::map<std::u16string, std::set<std::u16string>> RecordingHandler::getComponentsToDelete(
    const std::u16string& productDataLocation) {
  calls_.push_back(call("getComponentsToDelete", productDataLocation));
  return UpdateMetaDataHandler::getComponentsToDelete(productDataLocation);
}

std::set<std::u16string> RecordingHandler::getComponentsToDelete(
    const std::u16string& productBaseCode, const std::u16string& productDataLocation) {
  calls_.push_back(call("getComponentsToDelete", productBaseCode, productDataLocation));
  return UpdateMetaDataHandler::getComponentsToDelete(productBaseCode, productDataLocation);
}

std::map<std::u16string, std::pair<std::set<std::u16string>, std::int64_t>>
RecordingHandler::getComponentsWithFilesToDelete() const {
  calls_.emplace_back("getComponentsWithFilesToDelete()");
  return UpdateMetaDataHandler::getComponentsWithFilesToDelete();
}

std::map<std::u16string, std::pair<std::int64_t, std::int64_t>>
RecordingHandler::getUpdateSizeForComponentsToExtract() const {
  calls_.emplace_back("getUpdateSizeForComponentsToExtract()");
  return UpdateMetaDataHandler::getUpdateSizeForComponentsToExtract();
}

ProductUpdateMetaData RecordingHandler::getProductUpdateMetaDataModel() const {
  calls_.emplace_back("getProductUpdateMetaDataModel()");
  return UpdateMetaDataHandler::getProductUpdateMetaDataModel();
}

void RecordingHandler::initializeProductDataProvider(const std::u16string& productDataLocation) {
  calls_.push_back(call("initializeProductDataProvider", productDataLocation));
  UpdateMetaDataHandler::initializeProductDataProvider(productDataLocation);
}

std::u16string RecordingHandler::getProductName(const std::u16string& productBaseCode,
                                                const std::u16string& productDataLocation) {
  calls_.push_back(call("getProductName", productBaseCode, productDataLocation));
  return UpdateMetaDataHandler::getProductName(productBaseCode, productDataLocation);
}

std::u16string RecordingHandler::getProductBaseCode(const std::u16string& productName,
                                                    const std::u16string& productDataLocation) {
  calls_.push_back(call("getProductBaseCode", productName, productDataLocation));
  return UpdateMetaDataHandler::getProductBaseCode(productName, productDataLocation);
}

}  // namespace test_support
