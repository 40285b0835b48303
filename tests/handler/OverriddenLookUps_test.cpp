// Queries whose look-ups a derived handler answers: they may throw, and they may change the model.

#include <map>
#include <set>
#include <stdexcept>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "handler/QuerySide.h"
#include "install/update_metadata_parser/UpdateMetaDataHandler.h"
#include "support/ModelDump.h"
#include "support/RecordingHandler.h"
#include "support/TemporaryFolder.h"

namespace install::update_metadata_parser {
namespace {

using test_support::dump;
using test_support::kDelete;
using test_support::kExtract;
using test_support::Keys;
using test_support::KeysByCode;
using test_support::Side;
using ::testing::ElementsAre;
using ::testing::StrEq;
using ::testing::ThrowsMessage;

class OverriddenLookUp : public ::testing::TestWithParam<Side> {};

INSTANTIATE_TEST_SUITE_P(Packages, OverriddenLookUp, ::testing::Values(kDelete, kExtract),
                         [](const auto& side) { return side.param.name; });

// A handler whose catalogue fails at look-up number n.
class FailingHandler : public UpdateMetaDataHandler {
 public:
  std::u16string getProductName(const std::u16string&, const std::u16string&) override {
    return answer(u"P");
  }
  std::u16string getProductBaseCode(const std::u16string& productName,
                                    const std::u16string&) override {
    return answer(productName);
  }
  int answersLeft = 0;

 private:
  std::u16string answer(const std::u16string& text) {
    if (answersLeft-- == 0) {
      throw std::runtime_error("no answer");
    }
    return text;
  }
};

TEST_P(OverriddenLookUp, LetsTheCataloguesExceptionPassAndLeavesTheModelAlone) {
  FailingHandler failing;
  GetParam().addProduct(failing, u"P", {{u"b", {u"1"}}, {u"a", {u"1"}}});
  GetParam().addProduct(failing, u"Q", {{u"b", {u"2"}}});
  const std::string before = dump(failing.getProductUpdateMetaDataModel());
  for (int answers = 0; answers < 2; ++answers) {
    failing.answersLeft = answers;
    EXPECT_THAT([&] { (failing.*GetParam().byCode)(u""); },
                ThrowsMessage<std::runtime_error>(StrEq("no answer")));
    failing.answersLeft = answers;
    EXPECT_THAT([&] { (failing.*GetParam().ofCode)(u"", u""); },
                ThrowsMessage<std::runtime_error>(StrEq("no answer")));
  }
  EXPECT_EQ(dump(failing.getProductUpdateMetaDataModel()), before);
  failing.answersLeft = 2;
  EXPECT_EQ((failing.*GetParam().byCode)(u""),
            (KeysByCode{{u"P", {u"a_1", u"b_1"}}, {u"Q", {u"b_2"}}}));
}

// A handler whose look-ups add products to the model while a query walks it.
class GrowingHandler : public UpdateMetaDataHandler {
 public:
  std::u16string getProductName(const std::u16string& productBaseCode,
                                const std::u16string&) override {
    grow();
    return productBaseCode;
  }
  std::u16string getProductBaseCode(const std::u16string& productName,
                                    const std::u16string&) override {
    grow();
    return productName;
  }
  int lookUps = 0;
  int productsToAdd = 0;

 private:
  void grow() {
    ++lookUps;
    for (int count = 0; count < 10 && productsToAdd > 0; ++count, --productsToAdd) {
      const std::u16string name(1, static_cast<char16_t>(u'a' + productsToAdd % 26));
      setProductDeltaData(u"P", {name}, {name}, {{name, {{name, 1}}}}, {{name, {{name, 1, 2}}}});
    }
  }
};

TEST_P(OverriddenLookUp, VisitsAProductThatAVirtualCallAppends) {
  GrowingHandler growing;
  GetParam().addProduct(growing, u"P", {{u"first", {u"1"}}});
  growing.productsToAdd = 1000;
  Keys expected = {u"first_1"};
  for (char16_t letter = u'a'; letter <= u'z'; ++letter) {
    expected.insert({letter, u'_', letter});
  }
  EXPECT_EQ((growing.*GetParam().ofCode)(u"P", u""), expected);
  EXPECT_EQ(growing.lookUps, 1001);
  growing.productsToAdd = 1000;
  growing.lookUps = 0;
  EXPECT_EQ((growing.*GetParam().byCode)(u""), (KeysByCode{{u"P", {u"first_1"}}}));
  EXPECT_EQ(growing.lookUps, 2001);
}

// A handler whose look-ups add a component to the product in question.
class FillingHandler : public UpdateMetaDataHandler {
 public:
  std::u16string getProductName(const std::u16string&, const std::u16string&) override {
    const auto& products = root->getProductsDeltaData();
    setCompsToDelete(products[0], {u"late"}, {{u"late", {{u"x", 1}}}});
    setCompsToExtract(products[0], {u"late"}, {{u"late", {{u"x", 1, 2}}}});
    return u"P";
  }
};

TEST_P(OverriddenLookUp, SeesWhatTheLookUpAddsToTheProduct) {
  FillingHandler filling;
  GetParam().addProduct(filling, u"P", {{u"core", {u"bin"}}});
  EXPECT_EQ((filling.*GetParam().ofCode)(u"", u""), (Keys{u"core_bin", u"late_x"}));
}

TEST_P(OverriddenLookUp, AsksTheProductCatalogueThroughTheHandlersOwnOperations) {
  test_support::TemporaryFolder folder;
  folder.writeFile("products.tsv",
                   "code\tname\tnumber\tcontrolling\n"
                   "C1\tPress\t1\t\n"
                   "C1\tOld Press\t1\t\n"
                   "C2\tMill\t2\t\n");
  test_support::RecordingHandler recording;
  GetParam().addProduct(recording, u"Old Press", {{u"core", {u"old"}}});
  GetParam().addProduct(recording, u"Press", {{u"core", {u"new"}}});
  GetParam().addProduct(recording, u"Mill", {{u"core", {u"mill"}}});
  recording.takeCalls();
  const std::u16string location = folder.path();
  EXPECT_EQ((recording.*GetParam().byCode)(location),
            (KeysByCode{{u"C1", {u"core_old"}}, {u"C2", {u"core_mill"}}}));
  // The catalogue is open, so a location that cannot be opened is ignored.
  EXPECT_EQ((recording.*GetParam().ofCode)(u"C1", u"elsewhere"), Keys{u"core_new"});
  const std::string query = std::string("getComponents") + GetParam().name;
  const std::string opening = "initializeProductDataProvider(\"" + folder.nativePath() + "\")";
  const std::string notOpening = "initializeProductDataProvider(\"elsewhere\")";
  const std::string ask = "getProductName(\"C1\", \"elsewhere\")";
  EXPECT_THAT(recording.calls(),
              ElementsAre(query + "(\"" + folder.nativePath() + "\")",
                          "getProductBaseCode(\"Old Press\", \"" + folder.nativePath() + "\")",
                          opening, "getProductBaseCode(\"Press\", \"" + folder.nativePath() + "\")",
                          opening, "getProductBaseCode(\"Mill\", \"" + folder.nativePath() + "\")",
                          opening, query + "(\"C1\", \"elsewhere\")", ask, notOpening, ask,
                          notOpening, ask, notOpening));
}

}  // namespace
}  // namespace install::update_metadata_parser
