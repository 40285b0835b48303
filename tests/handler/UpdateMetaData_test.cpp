#include "install/update_metadata_parser/UpdateMetaData.h"

#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "install/update_metadata_parser/UpdateMetaDataHandler.h"
#include "support/CatalogueHandler.h"
#include "support/RecordingHandler.h"
#include "support/TemporaryFolder.h"

namespace install::update_metadata_parser {
namespace {

using test_support::CatalogueHandler;
using test_support::RecordingHandler;
using ::testing::ElementsAre;
using ::testing::StrEq;
using ::testing::ThrowsMessage;

using Keys = std::set<std::u16string>;
using KeysByCode = std::map<std::u16string, Keys>;
using Sizes = std::map<std::u16string, std::pair<std::int64_t, std::int64_t>>;
using Files = std::map<std::u16string, std::pair<Keys, std::int64_t>>;

static_assert(!std::is_default_constructible_v<UpdateMetaData>);
static_assert(
    std::is_constructible_v<UpdateMetaData, const std::shared_ptr<UpdateMetaDataHandler>&>);
static_assert(
    !std::is_convertible_v<const std::shared_ptr<UpdateMetaDataHandler>&, UpdateMetaData>);
static_assert(
    !std::is_constructible_v<UpdateMetaData, const std::shared_ptr<const UpdateMetaDataHandler>&>);
static_assert(std::is_copy_constructible_v<UpdateMetaData>);
static_assert(std::is_copy_assignable_v<UpdateMetaData>);
static_assert(std::has_virtual_destructor_v<UpdateMetaData>);
static_assert(!std::is_final_v<UpdateMetaData>);
static_assert(sizeof(UpdateMetaData) == sizeof(void*) + sizeof(std::shared_ptr<void>),
              "one field and the table of virtual operations");

// A handler with answers that the real one would not give. It records its calls.
class AnsweringHandler : public UpdateMetaDataHandler {
 public:
  using Calls = std::vector<std::vector<std::u16string>>;

  explicit AnsweringHandler(bool* destroyed = nullptr) : destroyed_(destroyed) {}
  ~AnsweringHandler() override {
    if (destroyed_ != nullptr) {
      *destroyed_ = true;
    }
  }

  Calls takeCalls() { return std::exchange(calls_, {}); }

  std::u16string getBaseReleaseFamily() const override {
    return answer(u"getBaseReleaseFamily", {}, u"base family");
  }
  std::u16string getTargetReleaseFamily() const override {
    return answer(u"getTargetReleaseFamily", {}, u"target family");
  }
  std::u16string getBaseReleaseVersion() const override {
    return answer(u"getBaseReleaseVersion", {}, u"base version");
  }
  std::u16string getTargetReleaseVersion() const override {
    return answer(u"getTargetReleaseVersion", {}, u"target version");
  }
  int getTargetUpdateLevelForQorv() const override {
    return answer(u"getTargetUpdateLevelForQorv", {}, -100000);
  }
  KeysByCode getComponentsToExtract(const std::u16string& productDataLocation) override {
    return answer(u"getComponentsToExtract", {productDataLocation},
                  KeysByCode{{u"extract", {u"1"}}, {u"empty", {}}});
  }
  Keys getComponentsToExtract(const std::u16string& productBaseCode,
                              const std::u16string& productDataLocation) override {
    return answer(u"getComponentsToExtract", {productBaseCode, productDataLocation}, Keys{u"2"});
  }
  KeysByCode getComponentsToDelete(const std::u16string& productDataLocation) override {
    return answer(u"getComponentsToDelete", {productDataLocation}, KeysByCode{{u"delete", {u"3"}}});
  }
  Keys getComponentsToDelete(const std::u16string& productBaseCode,
                             const std::u16string& productDataLocation) override {
    return answer(u"getComponentsToDelete", {productBaseCode, productDataLocation}, Keys{u"4"});
  }
  Files getComponentsWithFilesToDelete() const override {
    return answer(u"getComponentsWithFilesToDelete", {}, Files{{u"5", {{u"file"}, -5}}});
  }
  Sizes getUpdateSizeForComponentsToExtract() const override {
    return answer(u"getUpdateSizeForComponentsToExtract", {}, Sizes{{u"6", {-6, -7}}});
  }

 private:
  template <class T>
  T answer(const std::u16string& operation, std::vector<std::u16string> arguments,
           const T& value) const {
    arguments.insert(arguments.begin(), operation);
    calls_.push_back(std::move(arguments));
    return value;
  }
  std::u16string answer(const std::u16string& operation, std::vector<std::u16string> arguments,
                        const char16_t* value) const {
    return answer(operation, std::move(arguments), std::u16string(value));
  }

  bool* destroyed_;
  mutable Calls calls_;
};

class Facade : public ::testing::Test {
 protected:
  using Calls = AnsweringHandler::Calls;

  std::shared_ptr<AnsweringHandler> handler = std::make_shared<AnsweringHandler>();
  const UpdateMetaData facade{handler};
};

TEST_F(Facade, AsksTheHandlerOnceForEachReleaseField) {
  EXPECT_EQ(facade.getBaseReleaseFamily(), u"base family");
  EXPECT_EQ(handler->takeCalls(), (Calls{{u"getBaseReleaseFamily"}}));
  EXPECT_EQ(facade.getTargetReleaseFamily(), u"target family");
  EXPECT_EQ(handler->takeCalls(), (Calls{{u"getTargetReleaseFamily"}}));
  EXPECT_EQ(facade.getBaseReleaseVersion(), u"base version");
  EXPECT_EQ(handler->takeCalls(), (Calls{{u"getBaseReleaseVersion"}}));
  EXPECT_EQ(facade.getTargetReleaseVersion(), u"target version");
  EXPECT_EQ(handler->takeCalls(), (Calls{{u"getTargetReleaseVersion"}}));
  EXPECT_EQ(facade.getTargetUpdateLevelForQorv(), -100000) << "no matter what a level can be";
  EXPECT_EQ(handler->takeCalls(), (Calls{{u"getTargetUpdateLevelForQorv"}}));
}

TEST_F(Facade, AsksTheHandlerOnceForEachQueryWithTheSameArguments) {
  EXPECT_EQ(facade.getComponentsToExtract(u"there"),
            (KeysByCode{{u"extract", {u"1"}}, {u"empty", {}}}));
  EXPECT_EQ(handler->takeCalls(), (Calls{{u"getComponentsToExtract", u"there"}}));
  EXPECT_EQ(facade.getComponentsToExtract(u"C", u"there"), Keys{u"2"});
  EXPECT_EQ(handler->takeCalls(), (Calls{{u"getComponentsToExtract", u"C", u"there"}}));
  EXPECT_EQ(facade.getComponentsToDelete(u"there"), (KeysByCode{{u"delete", {u"3"}}}));
  EXPECT_EQ(handler->takeCalls(), (Calls{{u"getComponentsToDelete", u"there"}}));
  EXPECT_EQ(facade.getComponentsToDelete(u"C", u"there"), Keys{u"4"});
  EXPECT_EQ(handler->takeCalls(), (Calls{{u"getComponentsToDelete", u"C", u"there"}}));
  EXPECT_EQ(facade.getComponentsWithFilesToDelete(), (Files{{u"5", {{u"file"}, -5}}}));
  EXPECT_EQ(handler->takeCalls(), (Calls{{u"getComponentsWithFilesToDelete"}}));
  EXPECT_EQ(facade.getUpdateSizeForComponentsToExtract(), (Sizes{{u"6", {-6, -7}}}));
  EXPECT_EQ(handler->takeCalls(), (Calls{{u"getUpdateSizeForComponentsToExtract"}}));
}

TEST_F(Facade, KeepsNoAnswer) {
  for (int round = 0; round < 2; ++round) {
    facade.getComponentsToDelete(u"there");
    facade.getBaseReleaseFamily();
  }
  EXPECT_EQ(handler->takeCalls(), (Calls{{u"getComponentsToDelete", u"there"},
                                         {u"getBaseReleaseFamily"},
                                         {u"getComponentsToDelete", u"there"},
                                         {u"getBaseReleaseFamily"}}));
}

TEST(FacadeOwnership, HoldsOneReferenceAndDropsIt) {
  const std::shared_ptr<UpdateMetaDataHandler> handler = std::make_shared<AnsweringHandler>();
  {
    const UpdateMetaData first(handler);
    EXPECT_EQ(handler.use_count(), 2);
    UpdateMetaData second(handler);
    const UpdateMetaData copy(first);
    EXPECT_EQ(handler.use_count(), 4);
    second = copy;
    EXPECT_EQ(handler.use_count(), 4);
    const UpdateMetaData moved(std::move(second));
    EXPECT_EQ(handler.use_count(), 5) << "moving copies: no facade is ever without its handler";
    EXPECT_EQ(second.getBaseReleaseFamily(), u"base family");
  }
  EXPECT_EQ(handler.use_count(), 1);
}

TEST(FacadeOwnership, DestroysTheHandlerWithTheLastFacade) {
  bool destroyed = false;
  auto handler = std::make_shared<AnsweringHandler>(&destroyed);
  auto first = std::make_unique<UpdateMetaData>(handler);
  auto second = std::make_unique<UpdateMetaData>(*first);
  handler.reset();
  first.reset();
  EXPECT_FALSE(destroyed);
  EXPECT_EQ(second->getTargetReleaseVersion(), u"target version");
  second.reset();
  EXPECT_TRUE(destroyed);
}

TEST(FacadeOwnership, ReleasesItsHandlerWhenItIsAssignedAnother) {
  bool destroyed = false;
  UpdateMetaData facade(std::make_shared<AnsweringHandler>(&destroyed));
  facade = UpdateMetaData(std::make_shared<AnsweringHandler>());
  EXPECT_TRUE(destroyed);
}

TEST(FacadeOnAModel, AnswersFromTheHandlersModel) {
  const auto handler = std::make_shared<CatalogueHandler>();
  handler->namesByCode = {{u"C", u"P"}};
  handler->codesByName = {{u"P", u"C"}};
  handler->initializeReleaseData();
  handler->initializeBaseRelease();
  handler->initializeTargetRelease();
  const UpdateMetaData facade(handler);
  const UpdateMetaData other(handler);
  handler->setBaseReleaseFamily(u"Orchard");
  handler->setBaseReleaseVersion(u"1.0");
  handler->setTargetReleaseFamily(u"Grove");
  handler->setTargetReleaseVersion(u"1.1");
  handler->setTargetUpdateLevelForQorv(200);
  handler->setProductDeltaData(u"P", {u"core"}, {u"docs"}, {{u"core", {{u"old", 1}}}},
                               {{u"docs", {{u"new", 2, 3}}}});
  handler->setComponentDataWithFilesToDelete(
      u"lib", {handler->createPkgDataWithFilesToDelete(u"p", 4, {u"f"})});
  for (const UpdateMetaData& queried : {facade, other}) {
    EXPECT_EQ(queried.getBaseReleaseFamily(), u"Orchard");
    EXPECT_EQ(queried.getBaseReleaseVersion(), u"1.0");
    EXPECT_EQ(queried.getTargetReleaseFamily(), u"Grove");
    EXPECT_EQ(queried.getTargetReleaseVersion(), u"1.1");
    EXPECT_EQ(queried.getTargetUpdateLevelForQorv(), -56);
    EXPECT_EQ(queried.getComponentsToDelete(u""), (KeysByCode{{u"C", {u"core_old"}}}));
    EXPECT_EQ(queried.getComponentsToDelete(u"C", u""), Keys{u"core_old"});
    EXPECT_EQ(queried.getComponentsToExtract(u""), (KeysByCode{{u"C", {u"docs_new"}}}));
    EXPECT_EQ(queried.getComponentsToExtract(u"C", u""), Keys{u"docs_new"});
    EXPECT_EQ(queried.getUpdateSizeForComponentsToExtract(), (Sizes{{u"docs_new", {2, 3}}}));
    EXPECT_EQ(queried.getComponentsWithFilesToDelete(), (Files{{u"lib_p", {{u"f"}, 4}}}));
  }
}

TEST(FacadeOnAModel, SharesOneCatalogueWithTheOthersOfItsHandler) {
  test_support::TemporaryFolder folder;
  folder.writeFile("first/products.tsv", "header\nC1\tP\t1\t\n");
  folder.writeFile("second/products.tsv", "header\nC2\tP\t2\t\n");
  const auto handler = std::make_shared<UpdateMetaDataHandler>();
  handler->setProductDeltaData(u"P", {u"core"}, {}, {{u"core", {{u"old", 1}}}}, {});
  const UpdateMetaData first(handler);
  const UpdateMetaData second(handler);
  EXPECT_EQ(first.getComponentsToDelete(folder.path("first")),
            (KeysByCode{{u"C1", {u"core_old"}}}));
  EXPECT_EQ(second.getComponentsToDelete(folder.path("second")),
            (KeysByCode{{u"C1", {u"core_old"}}}));
}

TEST(FacadeOnAModel, LetsEveryExceptionPassUnchanged) {
  class Failing : public UpdateMetaDataHandler {
    std::u16string getBaseReleaseFamily() const override { throw std::out_of_range("family"); }
    std::u16string getProductBaseCode(const std::u16string&, const std::u16string&) override {
      throw std::runtime_error("code");
    }
  };
  const auto handler = std::make_shared<Failing>();
  handler->setProductDeltaData(u"P", {u"core"}, {}, {{u"core", {{u"old", 1}}}}, {});
  const UpdateMetaData facade(handler);
  EXPECT_THAT([&] { facade.getBaseReleaseFamily(); },
              ThrowsMessage<std::out_of_range>(StrEq("family")));
  EXPECT_THAT([&] { facade.getComponentsToDelete(u""); },
              ThrowsMessage<std::runtime_error>(StrEq("code")));
}

TEST(FacadeOnAModel, CallsTheHandlersVirtualOperations) {
  const auto handler = std::make_shared<RecordingHandler>();
  const UpdateMetaData facade(handler);
  facade.getComponentsToExtract(u"C", u"there");
  facade.getComponentsWithFilesToDelete();
  EXPECT_THAT(handler->calls(), ElementsAre("getComponentsToExtract(\"C\", \"there\")",
                                            "getComponentsWithFilesToDelete()"));
}

}  // namespace
}  // namespace install::update_metadata_parser
