// What the handler leaves behind when any single allocation fails.

#include <algorithm>
#include <cstddef>
#include <memory>
#include <new>
#include <string>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include "install/datamodels/product_update/ReleaseData.h"
#include "install/update_metadata_parser/UpdateMetaData.h"
#include "install/update_metadata_parser/UpdateMetaDataHandler.h"
#include "install/update_metadata_parser/UpdatePkgData.h"
#include "mf/zero/elements/Uuid.h"
#include "support/CatalogueHandler.h"
#include "support/Effort.h"
#include "support/FailingAllocation.h"
#include "support/ModelDump.h"
#include "support/TemporaryFolder.h"

namespace install::update_metadata_parser {
namespace {

using datamodels::product_update::ComponentDeltaData;
using datamodels::product_update::PkgDataWithFilesToDelete;
using datamodels::product_update::ProductDeltaData;
using test_support::CatalogueHandler;
using test_support::dump;
using test_support::failEachAllocation;
using test_support::FailingAllocation;
using test_support::kFullEffort;
using test_support::liveBlocks;

const std::u16string kLong = u"a name that does not fit into the string object itself";

// Many, because most elements and texts fit into memory that is allocated already.
constexpr char16_t kRounds = kFullEffort ? 200 : 100;

std::string treeOf(const UpdateMetaDataHandler& handler) {
  return dump(handler.getProductUpdateMetaDataModel());
}

TEST(MemoryOfTheHandler, IsReleasedWhenTheHandlerCannotBeMade) {
  const std::size_t before = liveBlocks();
  const std::size_t failures = failEachAllocation([] { std::make_shared<UpdateMetaDataHandler>(); },
                                                  [&] { EXPECT_EQ(liveBlocks(), before); });
  EXPECT_GT(failures, 2u);
  EXPECT_EQ(liveBlocks(), before);
}

TEST(MemoryOfTheHandler, IsReleasedWithTheHandler) {
  const std::size_t before = liveBlocks();
  {
    const auto handler = std::make_shared<UpdateMetaDataHandler>();
    const UpdateMetaData facade(handler);
    handler->initializeReleaseData();
    handler->initializeBaseRelease();
    handler->setBaseReleaseFamily(kLong);
    handler->setProductDeltaData(kLong, {kLong}, {kLong}, {{kLong, {{kLong, 1}}}},
                                 {{kLong, {{kLong, 1, 2}}}});
    handler->setComponentDataWithFilesToDelete(
        kLong, {handler->createPkgDataWithFilesToDelete(kLong, 1, {kLong})});
    facade.getComponentsToDelete(u"");
  }
  EXPECT_EQ(liveBlocks(), before);
}

TEST(MemoryOfTheHandler, LeavesTheRootAloneWhenAProductCannotBeAdded) {
  const std::size_t before = liveBlocks();
  {
    const UpdateMetaDataHandler handler;
    handler.setProductDeltaData(u"before", {u"c"}, {}, {{u"c", {{u"p", 1}}}}, {});
    std::string tree = treeOf(handler);
    std::size_t failures = 0;
    for (char16_t count = 0; count < kRounds; ++count) {
      const std::u16string name = kLong + count;
      const UpdateMetaDataHandler::PkgsToDelete pkgsToDelete = {{u"a", {{name, 1}, {u"x", 2}}},
                                                                {name, {{u"y", 3}}}};
      const UpdateMetaDataHandler::PkgsToExtract pkgsToExtract = {
          {name, {{name, 1, 2}, {u"x", 3, 4}, {name, 5, 6}}}};
      const std::vector<std::u16string> components = {u"a", name, u"none", name};
      failures += failEachAllocation(
          [&] {
            handler.setProductDeltaData(name, components, components, pkgsToDelete, pkgsToExtract);
          },
          [&] { EXPECT_EQ(treeOf(handler), tree); });
      EXPECT_NE(treeOf(handler), tree);
      tree = treeOf(handler);
    }
    EXPECT_GT(failures, 5u);
    EXPECT_EQ(handler.getProductUpdateMetaDataModel()->getProductsDeltaData().size(), kRounds + 1);
  }
  EXPECT_EQ(liveBlocks(), before);
}

/// The names of many components and their packages: enough texts that some allocations fail in the
/// middle of a component. Each `round` uses names that are new to the model.
struct ManyComponents {
  static constexpr std::size_t kComponents = 60;
  static constexpr std::size_t kPkgs = 5;

  explicit ManyComponents(std::size_t round) {
    for (std::size_t component = 0; component != kComponents; ++component) {
      names.push_back(kLong + number(round * kComponents + component));
      for (std::size_t pkg = 0; pkg != kPkgs; ++pkg) {
        const std::u16string name = names.back() + number(pkg);
        pkgsToDelete[names.back()].emplace(name, 1);
        pkgsToExtract[names.back()].push_back({name, 1, 2});
      }
    }
  }

  static std::u16string number(std::size_t value) {
    const std::string digits = ' ' + std::to_string(value);
    return std::u16string(digits.begin(), digits.end());
  }

  std::vector<std::u16string> names;
  UpdateMetaDataHandler::PkgsToDelete pkgsToDelete;
  UpdateMetaDataHandler::PkgsToExtract pkgsToExtract;
};

/// Adds many components to a product, making each allocation fail in turn.
///
/// A product that has a component already gets them one after another, and keeps those that it got
/// before the failure. Any other one gets all or none.
template <class Side>
class AddingComponents : public ::testing::Test {
 protected:
  static std::vector<std::size_t> pkgCountsOf(const ProductDeltaData& product) {
    std::vector<std::size_t> counts;
    for (std::size_t index = 0; index != Side::components(product).size(); ++index) {
      counts.push_back(Side::pkgs(Side::components(product)[index]).size());
    }
    return counts;
  }

  /// Returns how many failures were between the first component and the last.
  std::size_t addToEach(std::vector<std::size_t> before) {
    std::vector<std::size_t> all = before;
    all.resize(before.size() + ManyComponents::kComponents, ManyComponents::kPkgs);
    std::size_t cutOff = 0;
    for (std::size_t nth = 0;; nth += kFullEffort ? 1 : 5) {
      const ManyComponents many(++round);
      const auto product = ProductDeltaData::create(handler.model, mf::zero::Uuid());
      for (std::size_t count = 0; count != before.size(); ++count) {
        Side::components(product).append(
            ComponentDeltaData::create(handler.model, mf::zero::Uuid()));
      }
      bool failed = false;
      try {
        const FailingAllocation failing(nth);
        Side::add(handler, product, many);
      } catch (const std::bad_alloc&) {
        failed = true;
      }
      const std::vector<std::size_t> counts = pkgCountsOf(product);
      EXPECT_TRUE(std::equal(counts.begin(), counts.end(), all.begin())) << nth;
      if (!failed) {
        EXPECT_EQ(counts, all);
        return cutOff;
      }
      if (counts.size() > before.size() && counts.size() < all.size()) {
        ++cutOff;
      }
    }
  }

  CatalogueHandler handler;
  std::size_t round = 0;
};

struct DeleteSide {
  static auto& components(const ProductDeltaData& product) {
    return product->getCompsToDeleteMutable();
  }
  static auto& pkgs(const ComponentDeltaData& component) {
    return component->getPkgsToDeleteMutable();
  }
  static void add(const CatalogueHandler& handler, const ProductDeltaData& product,
                  const ManyComponents& many) {
    handler.setCompsToDelete(product, many.names, many.pkgsToDelete);
  }
};

struct ExtractSide {
  static auto& components(const ProductDeltaData& product) {
    return product->getCompsToExtractMutable();
  }
  static auto& pkgs(const ComponentDeltaData& component) {
    return component->getPkgsToExtractMutable();
  }
  static void add(const CatalogueHandler& handler, const ProductDeltaData& product,
                  const ManyComponents& many) {
    handler.setCompsToExtract(product, many.names, many.pkgsToExtract);
  }
};

struct SideNames {
  template <class Side>
  static std::string GetName(int) {
    return std::is_same_v<Side, DeleteSide> ? "ToDelete" : "ToExtract";
  }
};

using Sides = ::testing::Types<DeleteSide, ExtractSide>;
TYPED_TEST_SUITE(AddingComponents, Sides, SideNames);

TYPED_TEST(AddingComponents, GivesAProductAllOrNoneWhenMemoryRunsOut) {
  EXPECT_EQ(this->addToEach({}), 0u);
}

TYPED_TEST(AddingComponents, GivesAProductThatHasOneOnlyWholeOnesWhenMemoryRunsOut) {
  EXPECT_GT(this->addToEach({0}), 5u);
}

TEST(MemoryOfTheHandler, LeavesTheRootAloneWhenAComponentWithFilesCannotBeAdded) {
  const std::size_t before = liveBlocks();
  {
    const UpdateMetaDataHandler handler;
    std::size_t failures = 0;
    for (char16_t count = 0; count < kRounds; ++count) {
      const std::string tree = treeOf(handler);
      const std::u16string name = kLong + count;
      const std::vector<std::u16string> files(3, name);
      std::vector<PkgDataWithFilesToDelete> pkgs(2);
      for (PkgDataWithFilesToDelete& pkg : pkgs) {
        failures += failEachAllocation(
            [&] { pkg = handler.createPkgDataWithFilesToDelete(name, 1, files); },
            [&] { EXPECT_FALSE(pkg); });
      }
      failures += failEachAllocation([&] { handler.setComponentDataWithFilesToDelete(name, pkgs); },
                                     [&] {
                                       EXPECT_EQ(treeOf(handler), tree);
                                       EXPECT_FALSE(pkgs[0]->getContainer());
                                       EXPECT_FALSE(pkgs[1]->getContainer());
                                     });
      EXPECT_NE(treeOf(handler), tree);
    }
    EXPECT_GT(failures, 5u);
  }
  EXPECT_EQ(liveBlocks(), before);
}

TEST(MemoryOfTheHandler, LeavesTheReleasesAsTheyWereWhenNewOnesCannotBeMade) {
  for (int round = 0; round < 3; ++round) {
    const UpdateMetaDataHandler handler;
    std::string tree = treeOf(handler);
    const auto unchanged = [&] { EXPECT_EQ(treeOf(handler), tree); };
    failEachAllocation([&] { handler.initializeReleaseData(); }, unchanged);
    tree = treeOf(handler);
    failEachAllocation([&] { handler.initializeBaseRelease(); }, unchanged);
    tree = treeOf(handler);
    failEachAllocation([&] { handler.initializeTargetRelease(); }, unchanged);
    tree = treeOf(handler);
    EXPECT_GT(failEachAllocation([&] { handler.setBaseReleaseVersion(kLong); }, unchanged), 0u);
    tree = treeOf(handler);
    EXPECT_GT(failEachAllocation([&] { handler.setMetaDataArch(kLong); }, unchanged), 0u);
  }
}

// A handler that answers its own look-ups.
class EchoingHandler : public UpdateMetaDataHandler {
 public:
  std::u16string getProductName(const std::u16string& productBaseCode,
                                const std::u16string&) override {
    return productBaseCode;
  }
  std::u16string getProductBaseCode(const std::u16string& productName,
                                    const std::u16string&) override {
    return productName;
  }
};

template <class Query>
void failEachAllocationOf(const UpdateMetaDataHandler& handler, Query query) {
  const std::string tree = treeOf(handler);
  const auto answer = query();
  const std::size_t before = liveBlocks();
  const std::size_t failures = failEachAllocation([&] { EXPECT_EQ(query(), answer); },
                                                  [&] { EXPECT_EQ(liveBlocks(), before); });
  EXPECT_GT(failures, 3u);
  EXPECT_EQ(treeOf(handler), tree);
}

TEST(MemoryOfAQuery, IsReleasedWhenItCannotBeAnswered) {
  EchoingHandler handler;
  for (int count = 0; count < 3; ++count) {
    const std::vector<std::u16string> names = {u"b", u"a", kLong, u"b"};
    handler.setProductDeltaData(kLong, names, names,
                                {{u"b", {{u"y", 1}, {u"x", 2}}}, {u"a", {{kLong, 3}}}},
                                {{u"b", {{u"y", 1, 2}, {u"x", 3, 4}}}, {u"a", {{kLong, 5, 6}}}});
    handler.setComponentDataWithFilesToDelete(
        u"b", {handler.createPkgDataWithFilesToDelete(kLong, 1, {u"f", kLong}),
               handler.createPkgDataWithFilesToDelete(u"a", 1, {u"f", u"e"})});
  }
  failEachAllocationOf(handler, [&] { return handler.getComponentsToDelete(kLong); });
  failEachAllocationOf(handler, [&] { return handler.getComponentsToDelete(kLong, kLong); });
  failEachAllocationOf(handler, [&] { return handler.getComponentsToExtract(kLong); });
  failEachAllocationOf(handler, [&] { return handler.getComponentsToExtract(kLong, kLong); });
  failEachAllocationOf(handler, [&] { return handler.getUpdateSizeForComponentsToExtract(); });
  failEachAllocationOf(handler, [&] { return handler.getComponentsWithFilesToDelete(); });
}

TEST(MemoryOfTheCatalogue, IsReleasedWhenItCannotBeOpenedAndOpeningIsTriedAgain) {
  test_support::TemporaryFolder folder;
  folder.writeFile("first/products.tsv", "header\nC1\tPress\t1\t\n");
  folder.writeFile("second/products.tsv", "header\nC2\tPress\t1\t\n");
  const std::u16string first = folder.path("first");
  const std::u16string second = folder.path("second");
  const std::size_t before = liveBlocks();
  std::size_t failures = 0;
  for (bool opened = false; !opened; ++failures) {
    UpdateMetaDataHandler handler;
    try {
      const test_support::FailingAllocation failing(failures);
      handler.initializeProductDataProvider(first);
      opened = !failing.reached();
    } catch (const std::bad_alloc&) {
      EXPECT_EQ(handler.getProductBaseCode(u"Press", second), u"C2")
          << "no catalogue was open before";
    }
  }
  EXPECT_GT(failures, 5u);
  EXPECT_EQ(liveBlocks(), before);
}

}  // namespace
}  // namespace install::update_metadata_parser
