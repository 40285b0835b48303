// Programs that were compiled earlier still call the operations that they mean.

#include "reader/EarlierClient.h"

#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "install/product_data_provider/ProductDataProvider.h"
#include "install/update_metadata_parser/UpdateMetaData.h"
#include "install/update_metadata_parser/UpdateMetaDataHandler.h"
#include "install/update_metadata_parser/UpdateMetaDataJsonParser.h"

namespace install::update_metadata_parser {
namespace {

using datamodels::product_update::PkgDataWithFilesToDelete;
using datamodels::product_update::ProductUpdateMetaData;
using product_data_provider::ProductDataProvider;

using String = std::u16string;
using Strings = std::vector<String>;
using Keys = std::set<String>;
using KeysByCode = std::map<String, Keys>;
using Sizes = std::map<String, std::pair<std::int64_t, std::int64_t>>;
using Files = std::map<String, std::pair<Keys, std::int64_t>>;
using Log = std::vector<std::string>;

// Overrides an operation to log its name and its number of arguments and to return an empty value.
#define NOTES(RESULT, NAME, ARGUMENTS, COUNT, QUALIFIER) \
  RESULT NAME ARGUMENTS QUALIFIER override {             \
    log.push_back(#NAME "/" #COUNT);                     \
    return RESULT();                                     \
  }

class NotingHandler : public UpdateMetaDataHandler {
 public:
  mutable Log log;

  NOTES(void, initializeReleaseData, (), 0, const)
  NOTES(void, initializeBaseRelease, (), 0, const)
  NOTES(void, initializeTargetRelease, (), 0, const)
  NOTES(void, setBaseReleaseFamily, (const String&), 1, )
  NOTES(String, getBaseReleaseFamily, (), 0, const)
  NOTES(void, setTargetReleaseFamily, (const String&), 1, )
  NOTES(String, getTargetReleaseFamily, (), 0, const)
  NOTES(void, setBaseReleaseVersion, (const String&), 1, const)
  NOTES(String, getBaseReleaseVersion, (), 0, const)
  NOTES(void, setTargetReleaseVersion, (const String&), 1, const)
  NOTES(String, getTargetReleaseVersion, (), 0, const)
  NOTES(void, setTargetUpdateLevelForQorv, (int), 1, const)
  NOTES(int, getTargetUpdateLevelForQorv, (), 0, const)
  NOTES(void, setMetaDataArch, (const String&), 1, const)
  NOTES(void, setProductDeltaData,
        (const String&, const Strings&, const Strings&, const PkgsToDelete&, const PkgsToExtract&),
        5, const)
  NOTES(PkgDataWithFilesToDelete, createPkgDataWithFilesToDelete,
        (const String&, std::int64_t, const Strings&), 3, const)
  NOTES(void, setComponentDataWithFilesToDelete,
        (const String&, const std::vector<PkgDataWithFilesToDelete>&), 2, const)
  NOTES(KeysByCode, getComponentsToExtract, (const String&), 1, )
  NOTES(Keys, getComponentsToExtract, (const String&, const String&), 2, )
  NOTES(KeysByCode, getComponentsToDelete, (const String&), 1, )
  NOTES(Keys, getComponentsToDelete, (const String&, const String&), 2, )
  NOTES(Files, getComponentsWithFilesToDelete, (), 0, const)
  NOTES(Sizes, getUpdateSizeForComponentsToExtract, (), 0, const)
  NOTES(ProductUpdateMetaData, getProductUpdateMetaDataModel, (), 0, const)
  NOTES(void, initializeProductDataProvider, (const String&), 1, )
  NOTES(String, getProductName, (const String&, const String&), 2, )
  NOTES(String, getProductBaseCode, (const String&, const String&), 2, )
};

const Log kQueries = {
    "getComponentsToExtract/1",         "getComponentsToExtract/2",
    "getComponentsToDelete/1",          "getComponentsToDelete/2",
    "getComponentsWithFilesToDelete/0", "getUpdateSizeForComponentsToExtract/0",
};

TEST(EarlierClient, CallsTheOperationsOfAHandlerThatItMeans) {
  NotingHandler handler;
  test_support::callHandlerByPlaces(static_cast<UpdateMetaDataHandler*>(&handler));
  Log expected = {"initializeReleaseData/0",
                  "initializeBaseRelease/0",
                  "initializeTargetRelease/0",
                  "setBaseReleaseFamily/1",
                  "getBaseReleaseFamily/0",
                  "setTargetReleaseFamily/1",
                  "getTargetReleaseFamily/0",
                  "setBaseReleaseVersion/1",
                  "getBaseReleaseVersion/0",
                  "setTargetReleaseVersion/1",
                  "getTargetReleaseVersion/0",
                  "setTargetUpdateLevelForQorv/1",
                  "getTargetUpdateLevelForQorv/0",
                  "setMetaDataArch/1",
                  "setProductDeltaData/5",
                  "createPkgDataWithFilesToDelete/3",
                  "setComponentDataWithFilesToDelete/2"};
  expected.insert(expected.end(), kQueries.begin(), kQueries.end());
  const Log others = {"getProductUpdateMetaDataModel/0", "initializeProductDataProvider/1",
                      "getProductName/2", "getProductBaseCode/2"};
  expected.insert(expected.end(), others.begin(), others.end());
  EXPECT_EQ(handler.log, expected);
}

TEST(EarlierClient, CallsTheOperationsOfAFacadeThatItMeans) {
  const auto handler = std::make_shared<NotingHandler>();
  UpdateMetaData facade(handler);
  test_support::callFacadeByPlaces(&facade);
  Log expected = {"getBaseReleaseFamily/0", "getTargetReleaseFamily/0", "getBaseReleaseVersion/0",
                  "getTargetReleaseVersion/0", "getTargetUpdateLevelForQorv/0"};
  expected.insert(expected.end(), kQueries.begin(), kQueries.end());
  EXPECT_EQ(handler->log, expected);
}

class NotingParser : public UpdateMetaDataJsonParser {
 public:
  using UpdateMetaDataJsonParser::UpdateMetaDataJsonParser;

  mutable Log log;

  NOTES(std::shared_ptr<UpdateMetaData>, parseUpdateMetaDataJson, (), 0, )
  NOTES(std::string, readFile, (const String&), 1, )
  NOTES(std::shared_ptr<UpdateMetaDataHandler>, getUpdateMetaDataHandler, (), 0, const)
};

TEST(EarlierClient, CallsTheOperationsOfAParserThatItMeans) {
  NotingParser parser(u"");
  test_support::callParserByPlaces(static_cast<UpdateMetaDataJsonParser*>(&parser));
  EXPECT_EQ(parser.log,
            Log({"parseUpdateMetaDataJson/0", "readFile/1", "getUpdateMetaDataHandler/0"}));
}

class NotingCatalogue : public ProductDataProvider {
 public:
  using ProductDataProvider::ProductDataProvider;

  mutable Log log;

  NOTES(String, getProductBaseCode, (const String&), 1, const)
  NOTES(String, getProductName, (const String&), 1, const)
};

TEST(EarlierClient, CallsTheOperationsOfACatalogueThatItMeans) {
  NotingCatalogue catalogue(u"");
  test_support::callCatalogueByPlaces(static_cast<ProductDataProvider*>(&catalogue));
  EXPECT_EQ(catalogue.log, Log({"getProductBaseCode/1", "getProductName/1"}));
}

}  // namespace
}  // namespace install::update_metadata_parser
