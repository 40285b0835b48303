#include "mf/zero/elements/Model.h"

#include <cstddef>
#include <cstdint>
#include <random>
#include <set>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "install/datamodels/common/Release.h"
#include "install/datamodels/product_update/PkgDeltaData.h"
#include "mf/zero/elements/ModelElement.h"

namespace mf::zero {
namespace {

using install::datamodels::common::Release;
using install::datamodels::product_update::PkgDeltaData;

static_assert(std::is_default_constructible_v<ModelSpec>);
static_assert(std::is_nothrow_copy_constructible_v<Model>);
static_assert(std::is_nothrow_move_constructible_v<Model>);

TEST(ModelHandle, IsEmptyUntilAModelIsCreated) {
  EXPECT_FALSE(Model());
  EXPECT_TRUE(Model::create(ModelSpec()));
}

TEST(ModelHandle, IsHarmlessWhenItIsEmpty) {
  Model empty;
  const Model copy(empty);
  empty = copy;
  empty.addRef();
  empty.removeRef();
  const Model moved(std::move(empty));
  EXPECT_FALSE(moved);
  EXPECT_EQ(copy, moved);
}

TEST(ModelHandle, RefersToTheSameModelAsItsCopies) {
  const Model model = Model::create(ModelSpec());
  Model copy = model;
  EXPECT_EQ(model, copy);
  EXPECT_EQ(&model.impl(), &copy.impl());
  Model& same = copy;
  copy = same;
  EXPECT_EQ(model, copy);
  const Model moved = std::move(copy);
  EXPECT_FALSE(copy);
  EXPECT_EQ(model, moved);
  EXPECT_NE(model, Model::create(ModelSpec()));
}

TEST(ModelHandle, CanBeKeptAliveByAReferenceAddedByHand) {
  Model model = Model::create(ModelSpec());
  model.addRef();
  {
    const Model copy = model;
    copy.removeRef();
  }
  EXPECT_TRUE(PkgDeltaData::create(model, Uuid()));
}

TEST(Model, IsThatOfItsElements) {
  const Model one = Model::create(ModelSpec());
  const Model other = Model::create(ModelSpec());
  EXPECT_EQ(&PkgDeltaData::create(one, Uuid())->model(), &one.impl());
  EXPECT_EQ(&Release::create(other, Uuid())->model(), &other.impl());
}

// Elements are made and destroyed in any order; the others keep their contents.
TEST(Model, KeepsItsElementsApartWhileOthersComeAndGo) {
  struct Kept {
    PkgDeltaData pkg;
    Release release;
    std::int64_t number;
  };
  const Model model = Model::create(ModelSpec());
  std::mt19937 random(20240501);
  std::vector<Kept> kept;
  std::int64_t next = 0;
  for (int step = 0; step < 60000; ++step) {
    if (!kept.empty() && random() % 5 < 2) {
      std::swap(kept[random() % kept.size()], kept.back());
      kept.pop_back();
      continue;
    }
    Kept element{PkgDeltaData::create(model, Uuid()), Release::create(model, Uuid()), next++};
    ASSERT_EQ(element.pkg->getSize(), 0) << "memory that was used before makes no difference";
    ASSERT_EQ(element.pkg->getName(), u"");
    ASSERT_EQ(element.release->getVersion(), u"");
    ASSERT_EQ(element.release->getUpdateLevel(), 0);
    ASSERT_FALSE(element.pkg->getContainer());
    element.pkg->setSize(element.number);
    element.pkg->setName(std::u16string(1, static_cast<char16_t>(element.number)));
    element.release->setVersion(
        std::u16string(static_cast<std::size_t>(element.number % 40), u'v'));
    element.release->setUpdateLevel(static_cast<std::int8_t>(element.number % 100));
    kept.push_back(element);
  }
  std::set<const void*> identities;
  for (const Kept& element : kept) {
    identities.insert(element.pkg.operator->());
    identities.insert(element.release.operator->());
    ASSERT_EQ(element.pkg->getSize(), element.number);
    ASSERT_EQ(element.pkg->getName(), std::u16string(1, static_cast<char16_t>(element.number)));
    ASSERT_EQ(element.release->getVersion().size(), static_cast<std::size_t>(element.number % 40));
    ASSERT_EQ(element.release->getUpdateLevel(), element.number % 100);
  }
  EXPECT_EQ(identities.size(), 2 * kept.size());
}

TEST(Model, IsUsableAfterAllItsElementsAreGone) {
  const Model model = Model::create(ModelSpec());
  for (int round = 0; round < 3; ++round) {
    std::vector<PkgDeltaData> pkgs;
    for (int count = 0; count < 5000; ++count) {
      pkgs.push_back(PkgDeltaData::create(model, Uuid()));
    }
  }
  EXPECT_TRUE(PkgDeltaData::create(model, Uuid()));
}

}  // namespace
}  // namespace mf::zero
