// When and where the handler opens its catalogue, and what it asks there.

#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "install/product_data_provider/ProductDataProvider.h"
#include "install/update_metadata_parser/UpdateMetaDataHandler.h"
#include "support/RecordingHandler.h"
#include "support/TemporaryFolder.h"

namespace install::update_metadata_parser {
namespace {

using datamodels::product_update::ProductDeltaData;
using product_data_provider::ProductDataProvider;
using test_support::RecordingHandler;
using test_support::TemporaryFolder;
using ::testing::ElementsAre;
using ::testing::StrEq;
using ::testing::ThrowsMessage;

// Two catalogues with different answers.
class Catalogue : public ::testing::Test {
 protected:
  static constexpr const char* kHeader = "code\tname\tnumber\tcontrolling\n";

  TemporaryFolder folder;
  std::u16string first =
      folder.writeFile("first/products.tsv", kHeader + std::string("C1\tPress\t1\t\n"));
  std::u16string second =
      folder.writeFile("second/products.tsv", kHeader + std::string("C2\tPress\t2\t\n"
                                                                    "C1\tMill\t3\t\n"));
};

TEST_F(Catalogue, IsOpenedOnceFromTheFirstLocation) {
  UpdateMetaDataHandler handler;
  EXPECT_EQ(handler.getProductName(u"C1", first), u"Press");
  EXPECT_EQ(handler.getProductBaseCode(u"Press", second), u"C1");
  EXPECT_EQ(handler.getProductName(u"C2", second), u"");
  handler.initializeProductDataProvider(second);
  EXPECT_EQ(handler.getProductName(u"C1", u""), u"Press");
}

TEST_F(Catalogue, IsOpenedByWhicheverOperationComesFirst) {
  UpdateMetaDataHandler byCode;
  EXPECT_EQ(byCode.getProductBaseCode(u"Press", second), u"C2");
  EXPECT_EQ(byCode.getProductName(u"C1", first), u"Mill");
  UpdateMetaDataHandler byHand;
  byHand.initializeProductDataProvider(second);
  EXPECT_EQ(byHand.getProductName(u"C1", first), u"Mill");
}

TEST_F(Catalogue, AnswersAnUnknownKeyWithAnEmptyString) {
  UpdateMetaDataHandler handler;
  EXPECT_EQ(handler.getProductName(u"Press", first), u"");
  EXPECT_EQ(handler.getProductBaseCode(u"C1", first), u"");
  EXPECT_EQ(handler.getProductBaseCode(u"", first), u"");
}

TEST_F(Catalogue, IsTriedAgainAfterItFailedToOpen) {
  folder.writeFile("broken/products.tsv", kHeader + std::string("C1\tPress\n"));
  UpdateMetaDataHandler handler;
  for (int attempt = 0; attempt < 2; ++attempt) {
    EXPECT_THAT(
        [&] { handler.getProductName(u"C1", folder.path("broken")); },
        ThrowsMessage<std::runtime_error>(StrEq(folder.nativePath("broken/products.tsv") +
                                                ":2: expected 4 tab-separated fields, found 2")));
  }
  EXPECT_EQ(handler.getProductName(u"C1", first), u"Press") << "no catalogue was open before";
}

TEST_F(Catalogue, IsQueriedThroughTheVirtualOperationsEveryTime) {
  RecordingHandler handler;
  handler.getProductName(u"C1", first);
  handler.getProductName(u"C1", second);
  handler.getProductBaseCode(u"Press", second);
  EXPECT_THAT(
      handler.calls(),
      ElementsAre(
          "getProductName(\"C1\", \"" + folder.nativePath("first/products.tsv") + "\")",
          "initializeProductDataProvider(\"" + folder.nativePath("first/products.tsv") + "\")",
          "getProductName(\"C1\", \"" + folder.nativePath("second/products.tsv") + "\")",
          "initializeProductDataProvider(\"" + folder.nativePath("second/products.tsv") + "\")",
          "getProductBaseCode(\"Press\", \"" + folder.nativePath("second/products.tsv") + "\")",
          "initializeProductDataProvider(\"" + folder.nativePath("second/products.tsv") + "\")"));
}

// A catalogue that returns its question as the answer and reports its destruction.
class EchoingCatalogue : public ProductDataProvider {
 public:
  explicit EchoingCatalogue(ProductDeltaData product, bool& treeExisted)
      : ProductDataProvider(u""), product_(std::move(product)), treeExisted_(treeExisted) {}
  ~EchoingCatalogue() override { treeExisted_ = static_cast<bool>(product_->getContainer()); }

  std::u16string getProductBaseCode(const std::u16string& productName) const override {
    return u"code of " + productName;
  }
  std::u16string getProductName(const std::u16string& productBaseCode) const override {
    return u"name of " + productBaseCode;
  }

 private:
  ProductDeltaData product_;
  bool& treeExisted_;
};

class EchoingHandler : public UpdateMetaDataHandler {
 public:
  explicit EchoingHandler(bool& treeExisted) : treeExisted_(treeExisted) {}

  void initializeProductDataProvider(const std::u16string& productDataLocation) override {
    locations.push_back(productDataLocation);
    if (productDataProvider == nullptr) {
      productDataProvider =
          std::make_shared<EchoingCatalogue>(root->getProductsDeltaData()[0], treeExisted_);
    }
    UpdateMetaDataHandler::initializeProductDataProvider(productDataLocation);
  }

  std::vector<std::u16string> locations;

 private:
  bool& treeExisted_;
};

TEST(InjectedCatalogue, IsQueriedThroughItsVirtualOperationsAndAnswersUnchanged) {
  bool treeExisted = false;
  EchoingHandler handler(treeExisted);
  handler.setProductDeltaData(u"Press", {}, {}, {}, {});
  EXPECT_EQ(handler.getProductName(u"C1", u"here"), u"name of C1");
  EXPECT_EQ(handler.getProductBaseCode(u"Press", u"there"), u"code of Press");
  EXPECT_EQ(handler.locations, (std::vector<std::u16string>{u"here", u"there"}));
}

TEST(InjectedCatalogue, GoesBeforeTheTree) {
  bool treeExisted = false;
  {
    EchoingHandler handler(treeExisted);
    handler.setProductDeltaData(u"Press", {}, {}, {}, {});
    handler.initializeProductDataProvider(u"");
  }
  EXPECT_TRUE(treeExisted);
}

}  // namespace
}  // namespace install::update_metadata_parser
