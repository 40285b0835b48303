#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "install/update_metadata_parser/UpdateMetaDataHandler.h"

namespace test_support {

/// A handler that records every call of a virtual operation and then does what its base does.
///
/// Calls that the base makes through the object are recorded as well, after the call that makes
/// them. Each call is one line with its arguments:
///
///     setBaseReleaseFamily("Orchard")
///     setProductDeltaData("Press", ["core"], [], {"core": {"old": 10}}, {})
///     createPkgDataWithFilesToDelete("guide", 30, ["guide/old.txt"])
///     setComponentDataWithFilesToDelete("docs", ["guide"])
class RecordingHandler : public install::update_metadata_parser::UpdateMetaDataHandler {
 public:
  const std::vector<std::string>& calls() const { return calls_; }

  /// Returns the calls so far and clears the record.
  std::vector<std::string> takeCalls() { return std::exchange(calls_, {}); }

  void initializeReleaseData() const override;
  void initializeBaseRelease() const override;
  void initializeTargetRelease() const override;
  void setBaseReleaseFamily(const std::u16string& family) override;
  std::u16string getBaseReleaseFamily() const override;
  void setTargetReleaseFamily(const std::u16string& family) override;
  std::u16string getTargetReleaseFamily() const override;
  void setBaseReleaseVersion(const std::u16string& version) const override;
  std::u16string getBaseReleaseVersion() const override;
  void setTargetReleaseVersion(const std::u16string& version) const override;
  std::u16string getTargetReleaseVersion() const override;
  void setTargetUpdateLevelForQorv(int level) const override;
  int getTargetUpdateLevelForQorv() const override;
  void setMetaDataArch(const std::u16string& arch) const override;
  void setProductDeltaData(const std::u16string& name,
                           const std::vector<std::u16string>& compsToDelete,
                           const std::vector<std::u16string>& compsToExtract,
                           const PkgsToDelete& pkgsToDelete,
                           const PkgsToExtract& pkgsToExtract) const override;
  install::datamodels::product_update::PkgDataWithFilesToDelete createPkgDataWithFilesToDelete(
      const std::u16string& name, std::int64_t size,
      const std::vector<std::u16string>& files) const override;
  void setComponentDataWithFilesToDelete(
      const std::u16string& name,
      const std::vector<install::datamodels::product_update::PkgDataWithFilesToDelete>& pkgs)
      const override;
  std::map<std::u16string, std::set<std::u16string>> getComponentsToExtract(
      const std::u16string& productDataLocation) override;
  std::set<std::u16string> getComponentsToExtract(
      const std::u16string& productBaseCode, const std::u16string& productDataLocation) override;
  std::map<std::u16string, std::set<std::u16string>> getComponentsToDelete(
      const std::u16string& productDataLocation) override;
  std::set<std::u16string> getComponentsToDelete(
      const std::u16string& productBaseCode, const std::u16string& productDataLocation) override;
  std::map<std::u16string, std::pair<std::set<std::u16string>, std::int64_t>>
  getComponentsWithFilesToDelete() const override;
  std::map<std::u16string, std::pair<std::int64_t, std::int64_t>>
  getUpdateSizeForComponentsToExtract() const override;
  install::datamodels::product_update::ProductUpdateMetaData getProductUpdateMetaDataModel()
      const override;
  void initializeProductDataProvider(const std::u16string& productDataLocation) override;
  std::u16string getProductName(const std::u16string& productBaseCode,
                                const std::u16string& productDataLocation) override;
  std::u16string getProductBaseCode(const std::u16string& productName,
                                    const std::u16string& productDataLocation) override;

 private:
  mutable std::vector<std::string> calls_;
};

}  // namespace test_support
