#include "install/update_metadata_parser/UpdateMetaDataHandler.h"

#include <memory>
#include <string>
#include <type_traits>

#include <gtest/gtest.h>

#include "install/datamodels/product_update/ReleaseData.h"
#include "support/ModelDump.h"
#include "support/SampleStrings.h"

namespace install::update_metadata_parser {
namespace {

using datamodels::product_update::ProductDeltaData;
using datamodels::product_update::ProductUpdateMetaData;
using test_support::dump;

static_assert(std::is_default_constructible_v<UpdateMetaDataHandler>);
static_assert(std::has_virtual_destructor_v<UpdateMetaDataHandler>);
static_assert(!std::is_copy_constructible_v<UpdateMetaDataHandler>);
static_assert(!std::is_copy_assignable_v<UpdateMetaDataHandler>);
static_assert(!std::is_final_v<UpdateMetaDataHandler>);

std::shared_ptr<UpdateMetaDataHandler> makeInitialized() {
  const auto handler = std::make_shared<UpdateMetaDataHandler>();
  handler->initializeReleaseData();
  handler->initializeBaseRelease();
  handler->initializeTargetRelease();
  return handler;
}

TEST(Handler, StartsWithARootAndNothingElse) {
  const UpdateMetaDataHandler handler;
  const ProductUpdateMetaData root = handler.getProductUpdateMetaDataModel();
  ASSERT_TRUE(root);
  EXPECT_EQ(dump(root), "release data: none\n");
  EXPECT_FALSE(root->getContainer());
}

TEST(Handler, HandsOutTheTreeItselfNotACopy) {
  const UpdateMetaDataHandler handler;
  const ProductUpdateMetaData root = handler.getProductUpdateMetaDataModel();
  EXPECT_EQ(root, handler.getProductUpdateMetaDataModel());
  handler.setProductDeltaData(u"Press", {}, {}, {}, {});
  EXPECT_EQ(dump(root), "release data: none\nproduct \"Press\"\n");
}

TEST(Handler, LeavesTheTreeToTheHoldersOfTheRoot) {
  ProductUpdateMetaData root;
  {
    const auto handler = makeInitialized();
    handler->setBaseReleaseVersion(u"1.0");
    handler->setProductDeltaData(u"Press", {u"core"}, {}, {}, {});
    root = handler->getProductUpdateMetaDataModel();
  }
  EXPECT_EQ(dump(root),
            "release data\n"
            "  architecture \"\"\n"
            "  base release: family \"\", version \"1.0\", level 0\n"
            "  target release: family \"\", version \"\", level 0\n"
            "product \"Press\"\n"
            "  component to delete \"core\"\n");
}

TEST(Handler, HasItsOwnModel) {
  const UpdateMetaDataHandler one;
  const UpdateMetaDataHandler other;
  const ProductUpdateMetaData rootOfOne = one.getProductUpdateMetaDataModel();
  const ProductUpdateMetaData rootOfOther = other.getProductUpdateMetaDataModel();
  EXPECT_NE(rootOfOne, rootOfOther);
  EXPECT_NE(&rootOfOne->model(), &rootOfOther->model());
  one.setProductDeltaData(u"Press", {u"core"}, {u"docs"}, {{u"core", {{u"old", 1}}}}, {});
  const ProductDeltaData product = rootOfOne->getProductsDeltaData()[0];
  EXPECT_EQ(&product->model(), &rootOfOne->model());
  EXPECT_EQ(&product->getCompsToDelete()[0]->model(), &rootOfOne->model());
  EXPECT_EQ(&product->getCompsToDelete()[0]->getPkgsToDelete()[0]->model(), &rootOfOne->model());
  EXPECT_EQ(dump(rootOfOther), "release data: none\n");
}

TEST(Handler, MakesNoPlaceholders) {
  const auto handler = makeInitialized();
  handler->setProductDeltaData(u"Press", {u"core"}, {}, {{u"core", {{u"old", 1}}}}, {});
  const ProductUpdateMetaData root = handler->getProductUpdateMetaDataModel();
  const ProductDeltaData product = root->getProductsDeltaData()[0];
  EXPECT_FALSE(root->isProxy());
  EXPECT_FALSE(root->getReleaseData()->isProxy());
  EXPECT_FALSE(root->getReleaseData()->getBaseRelease()->isProxy());
  EXPECT_FALSE(product->isProxy());
  EXPECT_FALSE(product->getCompsToDelete()[0]->isProxy());
  EXPECT_FALSE(product->getCompsToDelete()[0]->getPkgsToDelete()[0]->isProxy());
  EXPECT_FALSE(handler->createPkgDataWithFilesToDelete(u"p", 0, {})->isProxy());
}

TEST(Releases, AreMadeOneByOneWithAllFieldsUnset) {
  const UpdateMetaDataHandler handler;
  const ProductUpdateMetaData root = handler.getProductUpdateMetaDataModel();
  handler.initializeReleaseData();
  EXPECT_EQ(dump(root),
            "release data\n"
            "  architecture \"\"\n"
            "  base release: none\n"
            "  target release: none\n");
  handler.initializeBaseRelease();
  EXPECT_EQ(dump(root),
            "release data\n"
            "  architecture \"\"\n"
            "  base release: family \"\", version \"\", level 0\n"
            "  target release: none\n");
  handler.initializeTargetRelease();
  EXPECT_EQ(dump(root),
            "release data\n"
            "  architecture \"\"\n"
            "  base release: family \"\", version \"\", level 0\n"
            "  target release: family \"\", version \"\", level 0\n");
}

TEST(Releases, ReadAsUnsetOnceTheyAreInitialized) {
  const auto handler = makeInitialized();
  EXPECT_EQ(handler->getBaseReleaseFamily(), u"");
  EXPECT_EQ(handler->getBaseReleaseVersion(), u"");
  EXPECT_EQ(handler->getTargetReleaseFamily(), u"");
  EXPECT_EQ(handler->getTargetReleaseVersion(), u"");
  EXPECT_EQ(handler->getTargetUpdateLevelForQorv(), 0);
}

TEST(Releases, KeepWhatEachSetterIsGivenInItsOwnField) {
  const auto handler = makeInitialized();
  handler->setBaseReleaseFamily(u"base family");
  handler->setTargetReleaseFamily(u"target family");
  handler->setBaseReleaseVersion(u"base version");
  handler->setTargetReleaseVersion(u"target version");
  handler->setTargetUpdateLevelForQorv(5);
  handler->setMetaDataArch(u"arch");
  EXPECT_EQ(dump(handler->getProductUpdateMetaDataModel()),
            "release data\n"
            "  architecture \"arch\"\n"
            "  base release: family \"base family\", version \"base version\", level 0\n"
            "  target release: family \"target family\", version \"target version\", level 5\n");
  EXPECT_EQ(handler->getBaseReleaseFamily(), u"base family");
  EXPECT_EQ(handler->getTargetReleaseFamily(), u"target family");
  EXPECT_EQ(handler->getBaseReleaseVersion(), u"base version");
  EXPECT_EQ(handler->getTargetReleaseVersion(), u"target version");
  EXPECT_EQ(handler->getTargetUpdateLevelForQorv(), 5);
}

TEST(Releases, ReplaceAnEarlierValueByALaterOne) {
  const auto handler = makeInitialized();
  for (const char16_t* value : {u"first", u"second"}) {
    handler->setBaseReleaseFamily(value);
    handler->setTargetReleaseFamily(value);
    handler->setBaseReleaseVersion(value);
    handler->setTargetReleaseVersion(value);
    handler->setMetaDataArch(value);
  }
  EXPECT_EQ(dump(handler->getProductUpdateMetaDataModel()),
            "release data\n"
            "  architecture \"second\"\n"
            "  base release: family \"second\", version \"second\", level 0\n"
            "  target release: family \"second\", version \"second\", level 0\n");
}

TEST(Releases, KeepEveryUnitOfAString) {
  const auto handler = makeInitialized();
  const auto releaseData = handler->getProductUpdateMetaDataModel()->getReleaseData();
  for (const std::u16string& text : test_support::sampleStrings()) {
    handler->setBaseReleaseFamily(text);
    handler->setTargetReleaseFamily(text);
    handler->setBaseReleaseVersion(text);
    handler->setTargetReleaseVersion(text);
    handler->setMetaDataArch(text);
    EXPECT_TRUE(handler->getBaseReleaseFamily() == text);
    EXPECT_TRUE(handler->getTargetReleaseFamily() == text);
    EXPECT_TRUE(handler->getBaseReleaseVersion() == text);
    EXPECT_TRUE(handler->getTargetReleaseVersion() == text);
    EXPECT_TRUE(releaseData->getMetaDataArch() == text);
  }
}

TEST(Releases, AreReplacedByASecondInitialization) {
  const auto handler = makeInitialized();
  handler->setBaseReleaseVersion(u"1.0");
  handler->setTargetReleaseVersion(u"1.1");
  handler->setMetaDataArch(u"arch");
  const auto former = handler->getProductUpdateMetaDataModel()->getReleaseData();
  const auto formerBase = former->getBaseRelease();

  handler->initializeBaseRelease();
  EXPECT_EQ(dump(handler->getProductUpdateMetaDataModel()),
            "release data\n"
            "  architecture \"arch\"\n"
            "  base release: family \"\", version \"\", level 0\n"
            "  target release: family \"\", version \"1.1\", level 0\n");
  EXPECT_EQ(formerBase->getVersion(), u"1.0") << "its holders can still read it";
  EXPECT_FALSE(formerBase->getContainer());

  handler->initializeTargetRelease();
  EXPECT_EQ(handler->getTargetReleaseVersion(), u"");

  handler->initializeReleaseData();
  EXPECT_EQ(dump(handler->getProductUpdateMetaDataModel()),
            "release data\n"
            "  architecture \"\"\n"
            "  base release: none\n"
            "  target release: none\n");
  EXPECT_EQ(former->getMetaDataArch(), u"arch");
  EXPECT_FALSE(former->getContainer());
}

struct Level {
  const char* name;
  int given;
  int readBack;
};

class TargetUpdateLevel : public ::testing::TestWithParam<Level> {};

TEST_P(TargetUpdateLevel, KeepsOnlyTheLowEightBitsAsASignedByte) {
  const auto handler = makeInitialized();
  handler->setTargetUpdateLevelForQorv(GetParam().given);
  EXPECT_EQ(handler->getTargetUpdateLevelForQorv(), GetParam().readBack);
}

constexpr Level kLevels[] = {
    {"Zero", 0, 0},
    {"One", 1, 1},
    {"MinusOne", -1, -1},
    {"LargestByte", 127, 127},
    {"OneAboveTheLargestByte", 128, -128},
    {"SmallestByte", -128, -128},
    {"OneBelowTheSmallestByte", -129, 127},
    {"TwoHundred", 200, -56},
    {"AllBitsOfAByte", 255, -1},
    {"OneAboveAllBitsOfAByte", 256, 0},
    {"ThreeHundred", 300, 44},
    {"MinusTwoHundredFiftySix", -256, 0},
    {"LargestInt", 2147483647, -1},
    {"SmallestInt", -2147483647 - 1, 0},
};

INSTANTIATE_TEST_SUITE_P(Int, TargetUpdateLevel, ::testing::ValuesIn(kLevels),
                         [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace install::update_metadata_parser
