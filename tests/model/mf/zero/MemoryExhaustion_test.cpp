// What the model framework leaves behind when memory runs out, and what it releases at its end.

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "install/datamodels/common/Release.h"
#include "install/datamodels/product_update/ComponentDeltaData.h"
#include "install/datamodels/product_update/PkgDataWithFilesToDelete.h"
#include "install/datamodels/product_update/PkgDeltaData.h"
#include "mf/zero/elements/Placeholders.h"
#include "mf/zero/text/StringPool.h"
#include "support/FailingAllocation.h"
#include "support/ModelDump.h"

namespace mf::zero {
namespace {

using install::datamodels::common::Release;
using install::datamodels::product_update::ComponentDeltaData;
using install::datamodels::product_update::PkgDataWithFilesToDelete;
using install::datamodels::product_update::PkgDeltaData;
using test_support::allocations;
using test_support::dump;
using test_support::failEachAllocation;
using test_support::liveBlocks;

constexpr const char16_t* kLongText = u"a text that does not fit into the string object itself";

std::vector<PkgDeltaData> elementsOf(const OwnedCollection<PkgDeltaData>& list) {
  std::vector<PkgDeltaData> elements;
  for (std::size_t index = 0; index < list.size(); ++index) {
    elements.push_back(list[index]);
  }
  return elements;
}

class MemoryOfAModel : public ::testing::Test {
 protected:
  PkgDeltaData makePkg() const { return PkgDeltaData::create(model, Uuid()); }

  // Makes a package that is not adjacent to the previous one, so that their list needs an array.
  PkgDeltaData makePkgApart() {
    between.push_back(makePkg());
    return makePkg();
  }

  Model model = Model::create(ModelSpec());
  std::vector<PkgDeltaData> between;
};

TEST(MemoryOfModels, IsReleasedWithTheLastHandleAndTheLastElement) {
  const std::size_t before = liveBlocks();
  {
    PkgDeltaData last;
    {
      const Model model = Model::create(ModelSpec());
      const ComponentDeltaData component = ComponentDeltaData::create(model, Uuid());
      for (int count = 0; count < 3000; ++count) {
        last = PkgDeltaData::create(model, Uuid());
        last->setName(kLongText + std::u16string(1, static_cast<char16_t>(count)));
        component->getPkgsToDeleteMutable().append(last);
        Release::create(model, Uuid())->setVersion(kLongText);
      }
      const PkgDeltaData placeholder = PkgDeltaData::create(model, Uuid());
      Placeholders::make(placeholder, [last] { return last; });
      component->getPkgsToDeleteMutable().append(placeholder);
    }
    EXPECT_GT(liveBlocks(), before) << "an element keeps its model";
    EXPECT_EQ(last->getName().substr(0, 6), u"a text");
  }
  EXPECT_EQ(liveBlocks(), before);
}

TEST(MemoryOfModels, IsReleasedHoweverTheElementsOfAListAreLaidOut) {
  const std::size_t before = liveBlocks();
  for (const bool backwards : {false, true}) {
    const Model model = Model::create(ModelSpec());
    const ComponentDeltaData component = ComponentDeltaData::create(model, Uuid());
    std::vector<PkgDeltaData> pkgs;
    for (int count = 0; count < 20; ++count) {
      pkgs.push_back(PkgDeltaData::create(model, Uuid()));
    }
    if (backwards) {
      std::reverse(pkgs.begin(), pkgs.end());
    }
    for (const PkgDeltaData& pkg : pkgs) {
      component->getPkgsToDeleteMutable().append(pkg);
    }
  }
  EXPECT_EQ(liveBlocks(), before);
}

TEST(MemoryOfModels, IsReleasedWhenTheModelItselfCannotBeMade) {
  const std::size_t before = liveBlocks();
  const std::size_t failures = failEachAllocation([] { Model::create(ModelSpec()); },
                                                  [&] { EXPECT_EQ(liveBlocks(), before); });
  EXPECT_GT(failures, 0u);
  EXPECT_EQ(liveBlocks(), before);
}

TEST_F(MemoryOfAModel, IsEnoughForTheNextElementAfterOneCouldNotBeMade) {
  std::vector<PkgDeltaData> kept;
  std::vector<Release> releases;
  for (int count = 0; count < 4000; ++count) {
    kept.emplace_back();
    releases.emplace_back();
    failEachAllocation([&] { kept.back() = makePkg(); }, [&] { EXPECT_FALSE(kept.back()); });
    failEachAllocation([&] { releases.back() = Release::create(model, Uuid()); },
                       [&] { EXPECT_FALSE(releases.back()); });
    kept.back()->setSize(count);
    releases.back()->setUpdateLevel(static_cast<std::int8_t>(count % 100));
  }
  for (int count = 0; count < 4000; ++count) {
    ASSERT_EQ(kept[static_cast<std::size_t>(count)]->getSize(), count);
    ASSERT_EQ(releases[static_cast<std::size_t>(count)]->getUpdateLevel(), count % 100);
  }
}

TEST_F(MemoryOfAModel, IsNotNeededForAListInTheOrderOfCreation) {
  const ComponentDeltaData component = ComponentDeltaData::create(model, Uuid());
  auto& list = component->getPkgsToDeleteMutable();
  std::vector<PkgDeltaData> pkgs;
  for (int count = 0; count < 1000; ++count) {
    pkgs.push_back(makePkg());
  }
  const std::size_t before = allocations();
  list.reserve(pkgs.size());
  for (const PkgDeltaData& pkg : pkgs) {
    list.append(pkg);
  }
  EXPECT_EQ(allocations(), before);
  EXPECT_EQ(elementsOf(list), pkgs);
}

TEST_F(MemoryOfAModel, IsAllocatedOnceForAListWhoseSizeIsReserved) {
  const ComponentDeltaData component = ComponentDeltaData::create(model, Uuid());
  auto& list = component->getPkgsToDeleteMutable();
  list.append(makePkg());
  list.append(makePkgApart());
  std::vector<PkgDeltaData> pkgs;
  for (int count = 0; count < 1000; ++count) {
    pkgs.push_back(makePkg());
  }
  const std::size_t before = allocations();
  list.reserve(list.size() + pkgs.size());
  for (const PkgDeltaData& pkg : pkgs) {
    list.append(pkg);
  }
  EXPECT_EQ(allocations(), before + 1);
}

TEST_F(MemoryOfAModel, LeavesAListAsItWasWhenAnElementCannotBeAppended) {
  const ComponentDeltaData component = ComponentDeltaData::create(model, Uuid());
  auto& list = component->getPkgsToDeleteMutable();
  std::size_t failures = 0;
  for (int count = 0; count < 20; ++count) {
    const std::vector<PkgDeltaData> before = elementsOf(list);
    const PkgDeltaData pkg = makePkgApart();
    failures += failEachAllocation([&] { list.append(pkg); },
                                   [&] {
                                     EXPECT_EQ(elementsOf(list), before);
                                     EXPECT_FALSE(pkg->getContainer());
                                   });
    std::vector<PkgDeltaData> after = before;
    after.push_back(pkg);
    EXPECT_EQ(elementsOf(list), after);
    EXPECT_EQ(pkg->getContainer(), component);
  }
  EXPECT_GT(failures, 2u) << "the list has grown more than once";
}

TEST_F(MemoryOfAModel, LeavesAnElementInItsFormerContainerWhenItCannotBeAppended) {
  const ComponentDeltaData former = ComponentDeltaData::create(model, Uuid());
  const ComponentDeltaData next = ComponentDeltaData::create(model, Uuid());
  next->getPkgsToDeleteMutable().append(makePkg());
  const PkgDeltaData pkg = makePkgApart();
  former->getPkgsToExtractMutable().append(pkg);
  const std::size_t failures = failEachAllocation(
      [&] { next->getPkgsToDeleteMutable().append(pkg); },
      [&] {
        EXPECT_EQ(pkg->getContainer(), former);
        EXPECT_EQ(pkg->getContainerProperty()->name, std::u16string_view(u"pkgsToExtract"));
        EXPECT_EQ(next->getPkgsToDelete().size(), 1u);
      });
  EXPECT_GT(failures, 0u);
  EXPECT_EQ(pkg->getContainer(), next);
}

TEST_F(MemoryOfAModel, LeavesNamesAsTheyWereWhenANewOneCannotBeStored) {
  const PkgDeltaData pkg = makePkg();
  pkg->setName(u"former");
  std::size_t failures = 0;
  for (int count = 0; count < 200; ++count) {
    const std::u16string former = pkg->getName();
    const std::u16string next = kLongText + std::u16string(1, static_cast<char16_t>(count));
    failures +=
        failEachAllocation([&] { pkg->setName(next); }, [&] { EXPECT_EQ(pkg->getName(), former); });
    EXPECT_EQ(pkg->getName(), next);
  }
  EXPECT_GT(failures, 2u);
}

TEST(MemoryOfAStringPool, KeepsEveryStringWhenAnotherCannotBeStored) {
  const std::size_t before = liveBlocks();
  {
    StringPool pool;
    std::vector<std::u16string> texts;
    std::vector<const InternedString*> stored;
    // Large strings get their own blocks.
    for (std::size_t count = 0; count < 300; ++count) {
      texts.emplace_back(count % 50 == 0 ? 200000 + count : count, u'x');
    }
    for (const std::u16string& text : texts) {
      stored.push_back(nullptr);
      failEachAllocation([&] { stored.back() = &pool.intern(text); },
                         [&] { EXPECT_EQ(stored.back(), nullptr); });
    }
    for (std::size_t index = 0; index < texts.size(); ++index) {
      ASSERT_TRUE(stored[index]->view() == texts[index]);
      ASSERT_EQ(&pool.intern(texts[index]), stored[index]);
    }
  }
  EXPECT_EQ(liveBlocks(), before);
}

TEST_F(MemoryOfAModel, LeavesASequenceAsItWasWhenAStringCannotBeAppended) {
  const PkgDataWithFilesToDelete pkg = PkgDataWithFilesToDelete::create(model, Uuid());
  const std::u16string text = kLongText;
  std::size_t failures = 0;
  for (int count = 0; count < 200; ++count) {
    const std::string before = dump(pkg);
    failures += failEachAllocation([&] { pkg->getFilesToDeleteMutable().push_back(text); },
                                   [&] { EXPECT_EQ(dump(pkg), before); });
  }
  EXPECT_GT(failures, 3u);
  EXPECT_EQ(pkg->getFilesToDelete().size(), 200u);
}

TEST_F(MemoryOfAModel, LeavesAPlainFieldAsItWasWhenItCannotBeSet) {
  const Release release = Release::create(model, Uuid());
  release->setReleaseFamily(u"family");
  release->setVersion(u"version");
  const std::u16string text = kLongText;
  EXPECT_GT(failEachAllocation([&] { release->setReleaseFamily(text); },
                               [&] { EXPECT_EQ(release->getReleaseFamily(), u"family"); }),
            0u);
  EXPECT_GT(failEachAllocation([&] { release->setVersion(text); },
                               [&] { EXPECT_EQ(release->getVersion(), u"version"); }),
            0u);
  EXPECT_EQ(release->getVersion(), text);
}

TEST_F(MemoryOfAModel, LeavesAPlaceholderInItsPlaceWhenItCannotBeResolved) {
  const ComponentDeltaData component = ComponentDeltaData::create(model, Uuid());
  const PkgDeltaData real = makePkg();
  const PkgDeltaData placeholder = makePkg();
  Placeholders::make(placeholder, [real, text = std::u16string(kLongText)] { return real; });
  component->getPkgsToDeleteMutable().append(placeholder);
  const std::size_t failures =
      failEachAllocation([&] { EXPECT_EQ(component->getPkgsToDelete()[0], real); },
                         [&] { EXPECT_FALSE(real->getContainer()); });
  EXPECT_GT(failures, 0u);
  EXPECT_EQ(real->getContainer(), component);
}

}  // namespace
}  // namespace mf::zero
