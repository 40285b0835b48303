#include "install/update_metadata_parser/UpdateMetaDataHandler.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include "foundation/core/except.h"
#include "handler/Population.h"
#include "install/update_metadata_parser/UpdatePkgData.h"
#include "mf/zero/elements/Messages.h"
#include "support/ModelDump.h"
#include "support/SampleStrings.h"

namespace install::update_metadata_parser {
namespace {

using datamodels::product_update::ComponentDeltaData;
using datamodels::product_update::PkgDeltaData;
using datamodels::product_update::ProductDeltaData;
using foundation::core::except::Exception;
using mf::zero::IncompatibleModels;
using test_support::dump;
using test_support::Population;

constexpr std::int64_t kLargest = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t kSmallest = std::numeric_limits<std::int64_t>::min();

static_assert(std::is_aggregate_v<UpdatePkgData>);
static_assert(std::is_same_v<decltype(UpdatePkgData::size), std::int64_t>);
static_assert(std::is_same_v<decltype(UpdatePkgData::uncompressedBytes), std::int64_t>);
static_assert(sizeof(long) != 8 || std::is_same_v<std::int64_t, long>,
              "the binary interface says long where that has 64 bits");

TEST(PackageRecord, HasItsThreeFieldsInOrder) {
  const UpdatePkgData pkg{u"name", 1, 2};
  EXPECT_EQ(pkg.name, u"name");
  EXPECT_EQ(pkg.size, 1);
  EXPECT_EQ(pkg.uncompressedBytes, 2);
}

TEST_F(Population, AddsAProductWithItsComponentsAndTheirPackages) {
  handler.setProductDeltaData(u"Press", {u"core", u"docs"}, {u"docs", u"core"},
                              {{u"core", {{u"old", 10}}}, {u"docs", {{u"guide", 5}}}},
                              {{u"core", {{u"new", 20, 40}}}, {u"docs", {{u"guide", 6, 7}}}});
  EXPECT_EQ(tree(),
            "release data: none\n"
            "product \"Press\"\n"
            "  component to delete \"core\"\n"
            "    package to delete \"old\": size 10, unpacked 0\n"
            "  component to delete \"docs\"\n"
            "    package to delete \"guide\": size 5, unpacked 0\n"
            "  component to extract \"docs\"\n"
            "    package to extract \"guide\": size 6, unpacked 7\n"
            "  component to extract \"core\"\n"
            "    package to extract \"new\": size 20, unpacked 40\n");
}

TEST_F(Population, AddsAProductWithNothingInIt) {
  handler.setProductDeltaData(u"", {}, {}, {{u"core", {{u"old", 1}}}}, {{u"core", {{u"new"}}}});
  EXPECT_EQ(tree(), "release data: none\nproduct \"\"\n");
}

TEST_F(Population, KeepsProductsInCallOrderEvenWithEqualNames) {
  handler.setProductDeltaData(u"b", {u"1"}, {}, {}, {});
  handler.setProductDeltaData(u"a", {}, {}, {}, {});
  handler.setProductDeltaData(u"b", {u"2"}, {}, {}, {});
  EXPECT_EQ(tree(),
            "release data: none\n"
            "product \"b\"\n"
            "  component to delete \"1\"\n"
            "product \"a\"\n"
            "product \"b\"\n"
            "  component to delete \"2\"\n");
}

TEST_F(Population, AddsAComponentWithoutPackagesWhenTheTableDoesNotContainIt) {
  handler.setProductDeltaData(u"Press", {u"core", u"gone"}, {u"gone", u"CORE"},
                              {{u"core", {}}, {u"core ", {{u"old", 1}}}},
                              {{u"core", {{u"new", 1, 2}}}});
  EXPECT_EQ(tree(),
            "release data: none\n"
            "product \"Press\"\n"
            "  component to delete \"core\"\n"
            "  component to delete \"gone\"\n"
            "  component to extract \"gone\"\n"
            "  component to extract \"CORE\"\n");
}

TEST_F(Population, AddsAComponentForEachNameEvenIfRepeated) {
  handler.setProductDeltaData(u"Press", {u"b", u"a", u"b"}, {u"b", u"b"}, {{u"b", {{u"old", 1}}}},
                              {{u"b", {{u"new", 2, 3}}}});
  EXPECT_EQ(tree(),
            "release data: none\n"
            "product \"Press\"\n"
            "  component to delete \"b\"\n"
            "    package to delete \"old\": size 1, unpacked 0\n"
            "  component to delete \"a\"\n"
            "  component to delete \"b\"\n"
            "    package to delete \"old\": size 1, unpacked 0\n"
            "  component to extract \"b\"\n"
            "    package to extract \"new\": size 2, unpacked 3\n"
            "  component to extract \"b\"\n"
            "    package to extract \"new\": size 2, unpacked 3\n");
  const ProductDeltaData product =
      handler.getProductUpdateMetaDataModel()->getProductsDeltaData()[0];
  EXPECT_NE(product->getCompsToDelete()[0], product->getCompsToDelete()[2]);
  EXPECT_NE(product->getCompsToDelete()[0]->getPkgsToDelete()[0],
            product->getCompsToDelete()[2]->getPkgsToDelete()[0]);
}

TEST_F(Population, OrdersPackagesToDeleteByNameAndKeepsPackagesToExtractAsGiven) {
  handler.setProductDeltaData(
      u"Press", {u"c"}, {u"c"},
      {{u"c", {{u"b", 2}, {u"a", 1}, {u"\uE000", 4}, {u"\U0001F600", 3}}}},
      {{u"c", {{u"b", 2, 20}, {u"a", 1, 10}, {u"b", 3, 30}, {u"b", 2, 20}}}});
  EXPECT_EQ(tree(),
            "release data: none\n"
            "product \"Press\"\n"
            "  component to delete \"c\"\n"
            "    package to delete \"a\": size 1, unpacked 0\n"
            "    package to delete \"b\": size 2, unpacked 0\n"
            "    package to delete \"\\uD83D\\uDE00\": size 3, unpacked 0\n"
            "    package to delete \"\\uE000\": size 4, unpacked 0\n"
            "  component to extract \"c\"\n"
            "    package to extract \"b\": size 2, unpacked 20\n"
            "    package to extract \"a\": size 1, unpacked 10\n"
            "    package to extract \"b\": size 3, unpacked 30\n"
            "    package to extract \"b\": size 2, unpacked 20\n");
}

TEST_F(Population, KeepsNamesAndSizesUnchanged) {
  for (const std::u16string& text : test_support::sampleStrings()) {
    handler.setProductDeltaData(text, {text}, {text}, {{text, {{text, kSmallest}}}},
                                {{text, {{text, kLargest, kSmallest}}}});
    const auto products = [&]() -> const auto& {
      return handler.getProductUpdateMetaDataModel()->getProductsDeltaData();
    };
    const ProductDeltaData product = products()[products().size() - 1];
    const ComponentDeltaData toDelete = product->getCompsToDelete()[0];
    const ComponentDeltaData toExtract = product->getCompsToExtract()[0];
    const PkgDeltaData deleted = toDelete->getPkgsToDelete()[0];
    const PkgDeltaData extracted = toExtract->getPkgsToExtract()[0];
    EXPECT_TRUE(product->getName() == text);
    EXPECT_TRUE(toDelete->getName() == text);
    EXPECT_TRUE(toExtract->getName() == text);
    EXPECT_TRUE(deleted->getName() == text);
    EXPECT_TRUE(extracted->getName() == text);
    EXPECT_EQ(deleted->getSize(), kSmallest);
    EXPECT_EQ(extracted->getSize(), kLargest);
    EXPECT_EQ(extracted->getUncompressedBytes(), kSmallest);
  }
}

TEST_F(Population, AttachesEveryElementToItsParent) {
  handler.setProductDeltaData(u"Press", {u"c"}, {u"c"}, {{u"c", {{u"old", 1}}}},
                              {{u"c", {{u"new", 1, 2}}}});
  const auto root = handler.getProductUpdateMetaDataModel();
  const ProductDeltaData product = root->getProductsDeltaData()[0];
  const ComponentDeltaData toDelete = product->getCompsToDelete()[0];
  const ComponentDeltaData toExtract = product->getCompsToExtract()[0];
  EXPECT_EQ(product->getContainer(), root);
  EXPECT_EQ(toDelete->getContainer(), product);
  EXPECT_EQ(toExtract->getContainer(), product);
  EXPECT_EQ(toDelete->getPkgsToDelete()[0]->getContainer(), toDelete);
  EXPECT_EQ(toExtract->getPkgsToExtract()[0]->getContainer(), toExtract);
}

TEST_F(Population, MakesAPackageToDeleteThatIsNotAttached) {
  const PkgDeltaData pkg = handler.initializePkgDataForDelete(u"old", -10);
  EXPECT_EQ(dump(pkg), "package \"old\": size -10, unpacked 0\n");
  EXPECT_FALSE(pkg->getContainer());
  EXPECT_EQ(tree(), "release data: none\n");
}

TEST_F(Population, MakesAPackageToExtractThatIsNotAttached) {
  const PkgDeltaData pkg = handler.initializePkgDataForExtract({u"new", -1, -2});
  EXPECT_EQ(dump(pkg), "package \"new\": size -1, unpacked -2\n");
  EXPECT_FALSE(pkg->getContainer());
  EXPECT_EQ(tree(), "release data: none\n");
}

TEST_F(Population, FillsOneComponentFromEachTable) {
  const ComponentDeltaData component = makeComponent();
  handler.setPkgsToDelete(u"core", component, {{u"core", {{u"b", 2}, {u"a", 1}}}});
  handler.setPkgsToExtract(u"core", component, {{u"core", {{u"b", 2, 3}, {u"a", 4, 5}}}});
  handler.setPkgsToDelete(u"unknown", component, {{u"core", {{u"c", 2}}}});
  handler.setPkgsToExtract(u"unknown", component, {{u"core", {{u"c", 2, 3}}}});
  EXPECT_EQ(dump(component),
            "component \"\"\n"
            "  package to delete \"a\": size 1, unpacked 0\n"
            "  package to delete \"b\": size 2, unpacked 0\n"
            "  package to extract \"b\": size 2, unpacked 3\n"
            "  package to extract \"a\": size 4, unpacked 5\n");
}

TEST_F(Population, FillsOneProductFromEachTable) {
  const ProductDeltaData product = ProductDeltaData::create(handler.model, mf::zero::Uuid());
  handler.setCompsToDelete(product, {u"b", u"a"}, {{u"a", {{u"old", 1}}}});
  handler.setCompsToExtract(product, {u"b"}, {{u"b", {{u"new", 1, 2}}}});
  handler.setCompsToDelete(product, {u"c"}, {});
  EXPECT_EQ(dump(product),
            "product \"\"\n"
            "  component to delete \"b\"\n"
            "  component to delete \"a\"\n"
            "    package to delete \"old\": size 1, unpacked 0\n"
            "  component to delete \"c\"\n"
            "  component to extract \"b\"\n"
            "    package to extract \"new\": size 1, unpacked 2\n");
  EXPECT_EQ(tree(), "release data: none\n");
}

TEST_F(Population, AddsPackagesOneByOneAsQuicklyAsAllAtOnce) {
  constexpr std::size_t kMany = 100000;
  const ComponentDeltaData component = makeComponent();
  const UpdateMetaDataHandler::PkgsToExtract one = {{u"core", {{u"new", 1, 2}}}};
  for (std::size_t count = 0; count < kMany; ++count) {
    handler.setPkgsToExtract(u"core", component, one);
  }
  EXPECT_EQ(component->getPkgsToExtract().size(), kMany);
}

TEST_F(Population, AcceptsAHundredThousandPackagesInOneComponent) {
  const UpdateMetaDataHandler::PkgsToExtract pkgs = {
      {u"core", std::vector<UpdatePkgData>(100000, {u"new", 1, 2})}};
  handler.setProductDeltaData(u"Press", {}, {u"core"}, {}, pkgs);
  EXPECT_EQ(handler.getProductUpdateMetaDataModel()
                ->getProductsDeltaData()[0]
                ->getCompsToExtract()[0]
                ->getPkgsToExtract()
                .size(),
            100000u);
}

TEST_F(Population, LeavesTheRootAloneWhenAnInnerOperationIsGivenAForeignElement) {
  const UpdateMetaDataHandler other;
  const auto foreignRoot = other.getProductUpdateMetaDataModel();
  other.setProductDeltaData(u"Press", {u"core"}, {}, {}, {});
  const ComponentDeltaData foreign = foreignRoot->getProductsDeltaData()[0]->getCompsToDelete()[0];
  EXPECT_THROW(handler.setPkgsToDelete(u"core", foreign, {{u"core", {{u"old", 1}}}}),
               Exception<IncompatibleModels>);
  EXPECT_EQ(foreign->getPkgsToDelete().size(), 0u);
}

}  // namespace
}  // namespace install::update_metadata_parser
