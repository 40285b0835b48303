// What rows leave behind when memory runs out.

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "install/datamodels/product_update/ComponentDeltaData.h"
#include "install/datamodels/product_update/PkgDeltaData.h"
#include "mf/zero/fields/RowStore.h"
#include "support/FailingAllocation.h"

namespace mf::zero {
namespace {

using install::datamodels::product_update::ComponentDeltaData;
using install::datamodels::product_update::PkgDeltaData;
using test_support::failEachAllocation;
using test_support::liveBlocks;

constexpr const char16_t* kLongName = u"a text that does not fit into the string object itself";

class RowsInAModel : public ::testing::Test {
 protected:
  struct Pkg {
    std::u16string name;
    std::int64_t size;
  };

  void fill(const ComponentDeltaData& component, const std::vector<Pkg>& pkgs) const {
    RowStore& store = RowStore::of(model);
    RowStore::refer(component->getPkgsToDeleteMutable(),
                    store.packages(component->name(), ComponentDeltaData::Impl::kPkgsToDelete,
                                   store.beginRound(), pkgs, [](const Pkg& pkg) {
                                     return RowStore::NewPackage{pkg.name, pkg.size, 0};
                                   }));
  }

  static std::vector<Pkg> makePkgs(int count) {
    std::vector<Pkg> pkgs;
    for (int number = 0; number < count; ++number) {
      pkgs.push_back({kLongName + std::u16string(1, static_cast<char16_t>(number + 1)), number});
    }
    return pkgs;
  }

  PkgDeltaData makePkg() const { return PkgDeltaData::create(model, Uuid()); }

  Model model = Model::create(ModelSpec());
};

TEST_F(RowsInAModel, AreAllOrNoneWhenMemoryRunsOut) {
  const std::vector<Pkg> pkgs = makePkgs(40);
  std::size_t failures = 0;
  for (int count = 0; count < 60; ++count) {
    const ComponentDeltaData component = ComponentDeltaData::create(model, Uuid());
    component->setName(std::u16string(1, static_cast<char16_t>(count + 1)));
    failures += failEachAllocation([&] { fill(component, pkgs); },
                                   [&] { EXPECT_TRUE(component->getPkgsToDelete().empty()); });
    EXPECT_EQ(component->getPkgsToDelete().size(), 40u);
    EXPECT_EQ(component->getPkgsToDelete()[39]->getName(), pkgs.back().name);
  }
  EXPECT_GT(failures, 60u);
}

TEST_F(RowsInAModel, StayRowsUntilAllTheirElementsCanBeMade) {
  const std::size_t before = liveBlocks();
  // Elements that are not adjacent, so that making them needs an array that grows, and more than a
  // slab.
  const std::vector<Pkg> pkgs = makePkgs(2000);
  std::vector<PkgDeltaData> kept;
  std::vector<PkgDeltaData> gaps;
  for (int count = 0; count < 100; ++count) {
    kept.push_back(makePkg());
    gaps.push_back(makePkg());
  }
  gaps.clear();
  const ComponentDeltaData component = ComponentDeltaData::create(model, Uuid());
  fill(component, pkgs);
  const PkgDeltaData added = makePkg();
  const std::size_t failures =
      failEachAllocation([&] { component->getPkgsToDeleteMutable().append(added); },
                         [&] {
                           EXPECT_NE(RowStore::rowsOf(component->getPkgsToDelete()), nullptr);
                           EXPECT_EQ(component->getPkgsToDelete().size(), 2000u);
                           EXPECT_FALSE(added->getContainer());
                         });
  EXPECT_GT(failures, 3u);
  ASSERT_EQ(component->getPkgsToDelete().size(), 2001u);
  EXPECT_EQ(component->getPkgsToDelete()[1999]->getName(), pkgs.back().name);
  EXPECT_EQ(component->getPkgsToDelete()[2000], added);
  EXPECT_GT(liveBlocks(), before);
}

}  // namespace
}  // namespace mf::zero
