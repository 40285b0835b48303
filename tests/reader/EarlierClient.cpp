// Compiled apart from the exported classes: this file has its own declarations of their virtual
// operations, which must not change. Only types that are passed by value come from the headers.

#include "reader/EarlierClient.h"

#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "install/datamodels/product_update/PkgDataWithFilesToDelete.h"
#include "install/datamodels/product_update/ProductUpdateMetaData.h"
#include "install/update_metadata_parser/UpdatePkgData.h"
#include "install/update_metadata_parser/fwd.h"

namespace test_support {
namespace {

using install::datamodels::product_update::PkgDataWithFilesToDelete;
using install::datamodels::product_update::ProductUpdateMetaData;
using install::update_metadata_parser::UpdateMetaData;
using install::update_metadata_parser::UpdateMetaDataHandler;
using install::update_metadata_parser::UpdatePkgData;

using String = std::u16string;
using Strings = std::vector<String>;
using Keys = std::set<String>;
using KeysByCode = std::map<String, Keys>;
using Sizes = std::map<String, std::pair<std::int64_t, std::int64_t>>;
using Files = std::map<String, std::pair<Keys, std::int64_t>>;
using PkgsToDelete = std::map<String, std::map<String, std::int64_t>>;
using PkgsToExtract = std::map<String, std::vector<UpdatePkgData>>;

class EarlierHandler {
 public:
  virtual ~EarlierHandler() = default;
  virtual void initializeReleaseData() const = 0;
  virtual void initializeBaseRelease() const = 0;
  virtual void initializeTargetRelease() const = 0;
  virtual void setBaseReleaseFamily(const String& family) = 0;
  virtual String getBaseReleaseFamily() const = 0;
  virtual void setTargetReleaseFamily(const String& family) = 0;
  virtual String getTargetReleaseFamily() const = 0;
  virtual void setBaseReleaseVersion(const String& version) const = 0;
  virtual String getBaseReleaseVersion() const = 0;
  virtual void setTargetReleaseVersion(const String& version) const = 0;
  virtual String getTargetReleaseVersion() const = 0;
  virtual void setTargetUpdateLevelForQorv(int level) const = 0;
  virtual int getTargetUpdateLevelForQorv() const = 0;
  virtual void setMetaDataArch(const String& arch) const = 0;
  virtual void setProductDeltaData(const String& name, const Strings& compsToDelete,
                                   const Strings& compsToExtract, const PkgsToDelete& pkgsToDelete,
                                   const PkgsToExtract& pkgsToExtract) const = 0;
  virtual PkgDataWithFilesToDelete createPkgDataWithFilesToDelete(const String& name,
                                                                  std::int64_t size,
                                                                  const Strings& files) const = 0;
  virtual void setComponentDataWithFilesToDelete(
      const String& name, const std::vector<PkgDataWithFilesToDelete>& pkgs) const = 0;
  virtual KeysByCode getComponentsToExtract(const String& location) = 0;
  virtual Keys getComponentsToExtract(const String& baseCode, const String& location) = 0;
  virtual KeysByCode getComponentsToDelete(const String& location) = 0;
  virtual Keys getComponentsToDelete(const String& baseCode, const String& location) = 0;
  virtual Files getComponentsWithFilesToDelete() const = 0;
  virtual Sizes getUpdateSizeForComponentsToExtract() const = 0;
  virtual ProductUpdateMetaData getProductUpdateMetaDataModel() const = 0;
  virtual void initializeProductDataProvider(const String& location) = 0;
  virtual String getProductName(const String& baseCode, const String& location) = 0;
  virtual String getProductBaseCode(const String& name, const String& location) = 0;
};

class EarlierFacade {
 public:
  virtual ~EarlierFacade() = default;
  virtual String getBaseReleaseFamily() const = 0;
  virtual String getTargetReleaseFamily() const = 0;
  virtual String getBaseReleaseVersion() const = 0;
  virtual String getTargetReleaseVersion() const = 0;
  virtual int getTargetUpdateLevelForQorv() const = 0;
  virtual KeysByCode getComponentsToExtract(const String& location) const = 0;
  virtual Keys getComponentsToExtract(const String& baseCode, const String& location) const = 0;
  virtual KeysByCode getComponentsToDelete(const String& location) const = 0;
  virtual Keys getComponentsToDelete(const String& baseCode, const String& location) const = 0;
  virtual Files getComponentsWithFilesToDelete() const = 0;
  virtual Sizes getUpdateSizeForComponentsToExtract() const = 0;
};

class EarlierParser {
 public:
  virtual ~EarlierParser() = default;
  virtual std::shared_ptr<UpdateMetaData> parseUpdateMetaDataJson() = 0;
  virtual std::string readFile(const String& path) = 0;
  virtual std::shared_ptr<UpdateMetaDataHandler> getUpdateMetaDataHandler() const = 0;
};

class EarlierCatalogue {
 public:
  virtual ~EarlierCatalogue() = default;
  virtual String getProductBaseCode(const String& productName) const = 0;
  virtual String getProductName(const String& productBaseCode) const = 0;
};

}  // namespace

// To the sanitizer the objects belong to another class, which is intended.
#define CALLS_ANOTHER_CLASS __attribute__((no_sanitize("vptr")))

CALLS_ANOTHER_CLASS void callHandlerByPlaces(void* updateMetaDataHandler) {
  auto& handler = *static_cast<EarlierHandler*>(updateMetaDataHandler);
  handler.initializeReleaseData();
  handler.initializeBaseRelease();
  handler.initializeTargetRelease();
  handler.setBaseReleaseFamily(u"");
  handler.getBaseReleaseFamily();
  handler.setTargetReleaseFamily(u"");
  handler.getTargetReleaseFamily();
  handler.setBaseReleaseVersion(u"");
  handler.getBaseReleaseVersion();
  handler.setTargetReleaseVersion(u"");
  handler.getTargetReleaseVersion();
  handler.setTargetUpdateLevelForQorv(1);
  handler.getTargetUpdateLevelForQorv();
  handler.setMetaDataArch(u"");
  handler.setProductDeltaData(u"", {}, {}, {}, {});
  handler.createPkgDataWithFilesToDelete(u"", 1, {});
  handler.setComponentDataWithFilesToDelete(u"", {});
  handler.getComponentsToExtract(u"");
  handler.getComponentsToExtract(u"", u"");
  handler.getComponentsToDelete(u"");
  handler.getComponentsToDelete(u"", u"");
  handler.getComponentsWithFilesToDelete();
  handler.getUpdateSizeForComponentsToExtract();
  handler.getProductUpdateMetaDataModel();
  handler.initializeProductDataProvider(u"");
  handler.getProductName(u"", u"");
  handler.getProductBaseCode(u"", u"");
}

CALLS_ANOTHER_CLASS void callFacadeByPlaces(void* updateMetaData) {
  const auto& facade = *static_cast<EarlierFacade*>(updateMetaData);
  facade.getBaseReleaseFamily();
  facade.getTargetReleaseFamily();
  facade.getBaseReleaseVersion();
  facade.getTargetReleaseVersion();
  facade.getTargetUpdateLevelForQorv();
  facade.getComponentsToExtract(u"");
  facade.getComponentsToExtract(u"", u"");
  facade.getComponentsToDelete(u"");
  facade.getComponentsToDelete(u"", u"");
  facade.getComponentsWithFilesToDelete();
  facade.getUpdateSizeForComponentsToExtract();
}

CALLS_ANOTHER_CLASS void callParserByPlaces(void* updateMetaDataJsonParser) {
  auto& parser = *static_cast<EarlierParser*>(updateMetaDataJsonParser);
  parser.parseUpdateMetaDataJson();
  parser.readFile(u"");
  parser.getUpdateMetaDataHandler();
}

CALLS_ANOTHER_CLASS void callCatalogueByPlaces(void* productDataProvider) {
  const auto& catalogue = *static_cast<EarlierCatalogue*>(productDataProvider);
  catalogue.getProductBaseCode(u"");
  catalogue.getProductName(u"");
}

}  // namespace test_support
