#include "mf/zero/fields/OwnedCollection.h"

#include <cstddef>
#include <new>
#include <string>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include "foundation/core/except.h"
#include "install/datamodels/product_update/ComponentDeltaData.h"
#include "install/datamodels/product_update/PkgDeltaData.h"
#include "mf/zero/elements/Messages.h"
#include "mf/zero/elements/Placeholders.h"
#include "mf/zero/fields/ReferenceCollection.h"
#include "model/mf/zero/fields/OwnedList.h"
#include "support/LifetimeProbe.h"

namespace mf::zero {
namespace {

using install::datamodels::product_update::ComponentDeltaData;
using install::datamodels::product_update::PkgDeltaData;
using test_support::elementsOf;
using test_support::LifetimeProbe;
using test_support::makePkg;
using test_support::OwnedList;
using Pkgs = OwnedCollection<PkgDeltaData>;

static_assert(std::is_base_of_v<ReferenceCollection, AbstractOwnedCollection>);
static_assert(std::is_base_of_v<AbstractOwnedCollection, Pkgs>);
static_assert(!std::is_copy_constructible_v<Pkgs> && !std::is_copy_assignable_v<Pkgs>);

TEST_F(OwnedList, IsEmptyInANewElement) {
  EXPECT_EQ(list().size(), 0u);
  EXPECT_TRUE(list().empty());
}

TEST_F(OwnedList, KeepsTheOrderOfAppending) {
  const std::vector<PkgDeltaData> pkgs = {make(u"b"), make(u"a"), make(u"c")};
  for (const PkgDeltaData& pkg : pkgs) {
    list().append(pkg);
  }
  EXPECT_EQ(elements(), pkgs);
  EXPECT_FALSE(list().empty());
}

TEST_F(OwnedList, KeepsTwoElementsOfOneName) {
  const std::vector<PkgDeltaData> pkgs = {make(u"same"), make(u"same")};
  list().append(pkgs[0]);
  list().append(pkgs[1]);
  EXPECT_EQ(elements(), pkgs);
}

TEST_F(OwnedList, IgnoresAnEmptyHandle) {
  list().append(PkgDeltaData());
  EXPECT_EQ(list().size(), 0u);
  const PkgDeltaData pkg = make();
  list().append(pkg);
  list().append(PkgDeltaData());
  EXPECT_EQ(elements(), std::vector<PkgDeltaData>{pkg});
}

TEST_F(OwnedList, AppendsAnElementOnce) {
  const PkgDeltaData first = make(u"first");
  const PkgDeltaData second = make(u"second");
  list().append(first);
  list().append(first);
  list().append(second);
  list().append(first);
  EXPECT_EQ(elements(), (std::vector<PkgDeltaData>{first, second}));
}

TEST_F(OwnedList, HoldsExactlyOneReference) {
  PkgDeltaData pkg = make();
  const LifetimeProbe element(pkg);
  list().append(pkg);
  list().append(pkg);
  pkg = PkgDeltaData();
  EXPECT_TRUE(element.alive());
  component = ComponentDeltaData();
  EXPECT_FALSE(element.alive());
}

TEST_F(OwnedList, ReturnsNewReferencesAndKeepsItsOwn) {
  list().append(make(u"kept"));
  { const PkgDeltaData handedOut = component->getPkgsToDelete()[0]; }
  EXPECT_EQ(component->getPkgsToDelete()[0]->getName(), u"kept");
  const PkgDeltaData handedOut = component->getPkgsToDelete()[0];
  component = ComponentDeltaData();
  EXPECT_EQ(handedOut->getName(), u"kept");
}

TEST_F(OwnedList, ReadsAnElementInPlace) {
  const PkgDeltaData pkg = make(u"in place");
  list().append(pkg);
  EXPECT_EQ(&component->getPkgsToDelete().readAt(0), pkg.operator->());
}

TEST_F(OwnedList, LinksAnElementToItsOwnerAndField) {
  const PkgDeltaData toDelete = make();
  const PkgDeltaData toExtract = make();
  component->getPkgsToDeleteMutable().append(toDelete);
  component->getPkgsToExtractMutable().append(toExtract);
  EXPECT_EQ(toDelete->getContainer(), component);
  EXPECT_EQ(toExtract->getContainer(), component);
  EXPECT_EQ(toDelete->getContainerProperty()->name, std::u16string_view(u"pkgsToDelete"));
  EXPECT_EQ(toExtract->getContainerProperty()->name, std::u16string_view(u"pkgsToExtract"));
}

TEST_F(OwnedList, DoesNotLinkAPlaceholder) {
  const PkgDeltaData placeholder = make();
  Placeholders::make(placeholder, [] { return ModelElement(); });
  list().append(placeholder);
  EXPECT_EQ(list().size(), 1u);
  EXPECT_FALSE(placeholder->getContainer());
  list().append(placeholder);
  EXPECT_EQ(list().size(), 1u) << "it is not appended twice either";
}

TEST_F(OwnedList, AcceptsAnElementThatAnotherListHolds) {
  const ComponentDeltaData other = ComponentDeltaData::create(model, Uuid());
  const PkgDeltaData pkg = make();
  other->getPkgsToDeleteMutable().append(pkg);
  list().append(pkg);
  list().append(pkg);
  EXPECT_EQ(elements(), std::vector<PkgDeltaData>{pkg});
  EXPECT_EQ(elementsOf(other->getPkgsToDelete()), std::vector<PkgDeltaData>{pkg});
  EXPECT_EQ(pkg->getContainer(), component)
      << "the list that an element was last appended to contains it";
}

TEST_F(OwnedList, AcceptsAnElementThatAListOfTheSameOwnerHolds) {
  const PkgDeltaData pkg = make();
  component->getPkgsToExtractMutable().append(pkg);
  list().append(pkg);
  EXPECT_EQ(elements(), std::vector<PkgDeltaData>{pkg});
  EXPECT_EQ(elementsOf(component->getPkgsToExtract()), std::vector<PkgDeltaData>{pkg});
}

TEST_F(OwnedList, AcceptsAnElementWhoseContainerIsGone) {
  const PkgDeltaData pkg = make();
  ComponentDeltaData::create(model, Uuid())->getPkgsToDeleteMutable().append(pkg);
  ASSERT_FALSE(pkg->getContainer());
  list().append(pkg);
  EXPECT_EQ(elements(), std::vector<PkgDeltaData>{pkg});
  EXPECT_EQ(pkg->getContainer(), component);
}

TEST_F(OwnedList, LeavesTheLinkAloneWhenAFormerContainerGoes) {
  const PkgDeltaData pkg = make();
  {
    const ComponentDeltaData former = ComponentDeltaData::create(model, Uuid());
    former->getPkgsToDeleteMutable().append(pkg);
    list().append(pkg);
  }
  EXPECT_EQ(pkg->getContainer(), component);
}

TEST_F(OwnedList, RejectsAnElementOfAnotherModelBeforeAnythingChanges) {
  const PkgDeltaData own = make(u"own");
  list().append(own);
  const Model otherModel = Model::create(ModelSpec());
  const ComponentDeltaData otherComponent = ComponentDeltaData::create(otherModel, Uuid());
  const PkgDeltaData foreign = makePkg(otherModel, u"foreign");
  otherComponent->getPkgsToDeleteMutable().append(foreign);
  try {
    list().append(foreign);
    FAIL() << "nothing was thrown";
  } catch (const foundation::core::except::Exception<IncompatibleModels>& error) {
    EXPECT_EQ(error.message().typeName, u"install::datamodels::product_update::PkgDeltaData");
  }
  EXPECT_EQ(elements(), std::vector<PkgDeltaData>{own});
  EXPECT_EQ(foreign->getContainer(), otherComponent);
  otherComponent->getPkgsToDeleteMutable().append(foreign);
  EXPECT_EQ(elementsOf(otherComponent->getPkgsToDelete()), std::vector<PkgDeltaData>{foreign});
}

TEST_F(OwnedList, ReportsWhetherAnElementBelongsToItsModel) {
  EXPECT_NO_THROW(list().checkCompatibleModel(make()));
  EXPECT_THROW(list().checkCompatibleModel(makePkg(Model::create(ModelSpec()))),
               foundation::core::except::Exception<IncompatibleModels>);
}

TEST_F(OwnedList, AcceptsAHundredThousandElements) {
  constexpr std::size_t kMany = 100000;
  for (std::size_t count = 0; count < kMany; ++count) {
    list().append(make());
  }
  ASSERT_EQ(list().size(), kMany);
  EXPECT_NE(list()[0], list()[kMany - 1]);
}

TEST_F(OwnedList, HoldsElementsInReusedMemory) {
  std::vector<PkgDeltaData> gone;
  for (int count = 0; count < 10; ++count) {
    gone.push_back(make(u"gone"));
  }
  gone.clear();
  std::vector<PkgDeltaData> pkgs;
  for (int count = 0; count < 20; ++count) {
    pkgs.push_back(make());
    list().append(pkgs.back());
  }
  EXPECT_EQ(elements(), pkgs);
}

TEST_F(OwnedList, ReservesStepwiseWithoutCopyingTheListEachTime) {
  constexpr std::size_t kMany = 100000;
  for (std::size_t count = 0; count < kMany; ++count) {
    list().reserve(list().size() + 1);
    list().append(make());
  }
  EXPECT_EQ(list().size(), kMany);
}

TEST_F(OwnedList, RejectsReservingMoreThanItCanCount) {
  const std::vector<PkgDeltaData> pkgs = {make(u"after"), make(u"before")};
  list().append(pkgs[1]);
  list().append(pkgs[0]);
  EXPECT_THROW(list().reserve((std::size_t{1} << 31) + 1), std::bad_alloc);
  EXPECT_EQ(elements(), (std::vector<PkgDeltaData>{pkgs[1], pkgs[0]}));
}

TEST_F(OwnedList, IsReadByIndexWhileItGrows) {
  list().append(make(u"first"));
  std::vector<std::u16string> names;
  for (std::size_t index = 0; index < list().size(); ++index) {
    const PkgDeltaData::Impl& pkg = list().readAt(index);
    if (index < 1000) {
      list().append(make(u"another"));
    }
    names.push_back(pkg.getName());
  }
  std::vector<std::u16string> expected(1001, u"another");
  expected[0] = u"first";
  EXPECT_EQ(names, expected);
}

// -------------------------------------------------------------------------------------------------
// A list that is declared to allow duplicates

/// An element with such a list.
class Shelf : public ElementHandle<Shelf> {
 public:
  class Impl;
};

class Shelf::Impl final : public ElementImpl {
 public:
  static const ElementClass kClass;

  Impl() noexcept : pkgs(*this, 0) {}

  OwnedCollection<PkgDeltaData> pkgs;
};

const ContainedProperty kPkgsOfAShelf = {u"pkgs", &PkgDeltaData::Impl::kClass,
                                         Duplicates::kAdmitted};

const ElementClass Shelf::Impl::kClass = {u"Shelf", PkgDeltaData::Impl::kClass.number + 10,
                                          sizeof(Shelf::Impl), &destroyElementImpl<Shelf::Impl>,
                                          &kPkgsOfAShelf};

TEST_F(OwnedList, AppendsAnElementTwiceIfDeclaredToAllowDuplicates) {
  const PkgDeltaData pkg = make();
  Shelf shelf = Shelf::create(model, Uuid());
  shelf->pkgs.append(pkg);
  shelf->pkgs.append(pkg);
  EXPECT_EQ(elementsOf(shelf->pkgs), (std::vector<PkgDeltaData>{pkg, pkg}));
  EXPECT_EQ(pkg->getContainer(), shelf);
  shelf = Shelf();
  EXPECT_FALSE(pkg->getContainer());
}

TEST_F(OwnedList, EndsTheProgramIfItIsNoPartOfItsOwner) {
  const Shelf other = Shelf::create(model, Uuid());
  EXPECT_DEATH(new (static_cast<void*>(&other->pkgs))
                   OwnedCollection<PkgDeltaData>(*component.operator->(), 0),
               "");
}

}  // namespace
}  // namespace mf::zero
