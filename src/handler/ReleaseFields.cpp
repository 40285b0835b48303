#include "install/datamodels/common/Release.h"
#include "install/datamodels/product_update/ReleaseData.h"
#include "install/update_metadata_parser/UpdateMetaDataHandler.h"
#include "mf/zero/elements/Uuid.h"

namespace install::update_metadata_parser {
namespace {

using datamodels::common::Release;
using datamodels::product_update::ProductUpdateMetaData;
using datamodels::product_update::ReleaseData;

Release baseRelease(const ProductUpdateMetaData& root) {
  return root->getReleaseData()->getBaseRelease();
}

Release targetRelease(const ProductUpdateMetaData& root) {
  return root->getReleaseData()->getTargetRelease();
}

// The low eight bits of a level, read as a signed byte. The reader makes the level from a
// document's number: toIntUpdateLevel() in reader/NumberConversion.h.
std::int8_t toStoredUpdateLevel(int level) noexcept {
  const int low = level & 0xFF;
  return static_cast<std::int8_t>(low < 0x80 ? low : low - 0x100);
}

}  // namespace

void UpdateMetaDataHandler::initializeReleaseData() const {
  root->setReleaseData(ReleaseData::create(model, mf::zero::Uuid()));
}

void UpdateMetaDataHandler::initializeBaseRelease() const {
  const Release release = Release::create(model, mf::zero::Uuid());
  root->getReleaseData()->setBaseRelease(release);
}

void UpdateMetaDataHandler::initializeTargetRelease() const {
  const Release release = Release::create(model, mf::zero::Uuid());
  root->getReleaseData()->setTargetRelease(release);
}

void UpdateMetaDataHandler::setBaseReleaseFamily(const std::u16string& family) {
  baseRelease(root)->setReleaseFamily(family);
}

std::u16string UpdateMetaDataHandler::getBaseReleaseFamily() const {
  return baseRelease(root)->getReleaseFamily();
}

void UpdateMetaDataHandler::setTargetReleaseFamily(const std::u16string& family) {
  targetRelease(root)->setReleaseFamily(family);
}

std::u16string UpdateMetaDataHandler::getTargetReleaseFamily() const {
  return targetRelease(root)->getReleaseFamily();
}

void UpdateMetaDataHandler::setBaseReleaseVersion(const std::u16string& version) const {
  baseRelease(root)->setVersion(version);
}

std::u16string UpdateMetaDataHandler::getBaseReleaseVersion() const {
  return baseRelease(root)->getVersion();
}

void UpdateMetaDataHandler::setTargetReleaseVersion(const std::u16string& version) const {
  targetRelease(root)->setVersion(version);
}

std::u16string UpdateMetaDataHandler::getTargetReleaseVersion() const {
  return targetRelease(root)->getVersion();
}

void UpdateMetaDataHandler::setTargetUpdateLevelForQorv(int level) const {
  targetRelease(root)->setUpdateLevel(toStoredUpdateLevel(level));
}

int UpdateMetaDataHandler::getTargetUpdateLevelForQorv() const {
  return targetRelease(root)->getUpdateLevel();
}

void UpdateMetaDataHandler::setMetaDataArch(const std::u16string& arch) const {
  root->getReleaseData()->setMetaDataArch(arch);
}

}  // namespace install::update_metadata_parser
