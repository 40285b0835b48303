#include "mf/zero/elements/Placeholders.h"

#include <cstddef>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "foundation/core/except.h"
#include "install/datamodels/product_update/ComponentDeltaData.h"
#include "install/datamodels/product_update/PkgDeltaData.h"
#include "mf/zero/elements/Messages.h"
#include "mf/zero/fields/OwnedCollection.h"

namespace mf::zero {
namespace {

using foundation::core::except::Exception;
using install::datamodels::product_update::ComponentDeltaData;
using install::datamodels::product_update::PkgDeltaData;
using ::testing::ElementsAre;
using ::testing::StrEq;
using ::testing::ThrowsMessage;

class Placeholder : public ::testing::Test {
 protected:
  PkgDeltaData make(const std::u16string& name = u"") const {
    PkgDeltaData pkg = PkgDeltaData::create(model, Uuid());
    pkg->setName(name);
    return pkg;
  }

  // Appends a placeholder to the list of packages to delete.
  PkgDeltaData appendPlaceholder(const Placeholders::Resolver& resolver) const {
    PkgDeltaData placeholder = make(u"placeholder");
    Placeholders::make(placeholder, resolver);
    list().append(placeholder);
    return placeholder;
  }

  OwnedCollection<PkgDeltaData>& list() const { return component->getPkgsToDeleteMutable(); }

  Model model = Model::create(ModelSpec());
  ComponentDeltaData component = ComponentDeltaData::create(model, Uuid());
};

TEST_F(Placeholder, IsNotWhatCreateMakes) {
  EXPECT_FALSE(make()->isProxy());
  EXPECT_FALSE(component->isProxy());
}

TEST_F(Placeholder, ReportsThatItIsOne) {
  const PkgDeltaData placeholder = make();
  Placeholders::make(placeholder, [] { return ModelElement(); });
  EXPECT_TRUE(placeholder->isProxy());
}

TEST_F(Placeholder, GivesWayToItsElementWhenItIsRead) {
  const PkgDeltaData real = make(u"real");
  int resolved = 0;
  list().append(make(u"before"));
  const PkgDeltaData placeholder = appendPlaceholder([&] {
    ++resolved;
    return real;
  });
  list().append(make(u"after"));
  EXPECT_EQ(resolved, 0) << "not read yet";
  const OwnedCollection<PkgDeltaData>& read = component->getPkgsToDelete();
  EXPECT_EQ(read[1], real);
  EXPECT_EQ(read.readAt(1).getName(), u"real");
  EXPECT_EQ(read[1], real);
  EXPECT_EQ(resolved, 1) << "the element has replaced it";
  EXPECT_EQ(read.size(), 3u);
  EXPECT_EQ(real->getContainer(), component);
  EXPECT_FALSE(placeholder->getContainer());
}

TEST_F(Placeholder, MakesNoDifferenceToTheElementsAroundIt) {
  const PkgDeltaData real = make(u"real");
  std::vector<PkgDeltaData> expected;
  for (int count = 0; count < 20; ++count) {
    if (count == 10) {
      appendPlaceholder([&] { return real; });
      expected.push_back(real);
    }
    expected.push_back(make());
    list().append(expected.back());
  }
  for (std::size_t index = 0; index < expected.size(); ++index) {
    EXPECT_EQ(list()[index], expected[index]);
  }
}

TEST_F(Placeholder, IsAlsoResolvedByReadingInPlace) {
  const PkgDeltaData real = make(u"real");
  appendPlaceholder([&] { return real; });
  EXPECT_EQ(&component->getPkgsToDelete().readAt(0), real.operator->());
}

TEST_F(Placeholder, IsFreedWithItsResolverOnceItIsResolved) {
  const auto token = std::make_shared<int>();
  appendPlaceholder([token, real = make()] { return real; });
  EXPECT_EQ(token.use_count(), 2);
  EXPECT_TRUE(list()[0]);
  EXPECT_EQ(token.use_count(), 1);
}

TEST_F(Placeholder, IsFreedWithItsResolverWhenItIsNeverRead) {
  const auto token = std::make_shared<int>();
  appendPlaceholder([token, real = make()] { return real; });
  component = ComponentDeltaData();
  EXPECT_EQ(token.use_count(), 1);
}

TEST_F(Placeholder, MayHoldTheLastReferenceToAnother) {
  const auto token = std::make_shared<int>();
  PkgDeltaData inner = make();
  Placeholders::make(inner, [token] { return ModelElement(); });
  PkgDeltaData outer = make();
  Placeholders::make(outer, [inner] { return inner; });
  inner = PkgDeltaData();
  EXPECT_EQ(token.use_count(), 2);
  outer = PkgDeltaData();
  EXPECT_EQ(token.use_count(), 1);
}

// The place that a child reports while its owner is destroyed, asked when a placeholder in one of
// the owner's lists is dropped.
struct PlaceOfChild {
  bool hasContainer;
  bool hasProperty;
};

class DyingOwner : public Placeholder {
 protected:
  // Destroys the component, which has a child in one list and a placeholder in the other. The
  // placeholder's resolver asks the child for its place when it is destroyed.
  std::vector<PlaceOfChild> placesWhileTheOwnerIsDestroyed(
      OwnedCollection<PkgDeltaData>& ofChild, OwnedCollection<PkgDeltaData>& ofPlaceholder) {
    std::vector<PlaceOfChild> places;
    const PkgDeltaData child = make(u"child");
    ofChild.append(child);
    std::shared_ptr<void> asksOnDestruction(nullptr, [&places, child](void*) {
      places.push_back({bool(child->getContainer()), child->getContainerProperty() != nullptr});
    });
    PkgDeltaData placeholder = make(u"placeholder");
    Placeholders::make(
        placeholder, [asksOnDestruction = std::move(asksOnDestruction)] { return ModelElement(); });
    ofPlaceholder.append(placeholder);
    placeholder = PkgDeltaData();
    component = ComponentDeltaData();
    EXPECT_FALSE(child->getContainer());
    return places;
  }
};

MATCHER(IsNowhere, "") {
  return !arg.hasContainer && !arg.hasProperty;
}

TEST_F(DyingOwner, IsNotTheContainerOfAChildInAListNotYetDestroyed) {
  EXPECT_THAT(placesWhileTheOwnerIsDestroyed(component->getPkgsToDeleteMutable(),
                                             component->getPkgsToExtractMutable()),
              ElementsAre(IsNowhere()));
}

TEST_F(DyingOwner, IsNotTheContainerOfAChildInAListAlreadyDestroyed) {
  EXPECT_THAT(placesWhileTheOwnerIsDestroyed(component->getPkgsToExtractMutable(),
                                             component->getPkgsToDeleteMutable()),
              ElementsAre(IsNowhere()));
}

TEST_F(DyingOwner, IsNotTheContainerOfAChildInTheSameList) {
  EXPECT_THAT(placesWhileTheOwnerIsDestroyed(list(), list()), ElementsAre(IsNowhere()));
}

TEST_F(DyingOwner, IsNotAContainerWhenItIsAPlaceholderWithChildren) {
  std::vector<bool> hadContainer;
  const PkgDeltaData child = make(u"child");
  list().append(child);
  std::shared_ptr<void> asksOnDestruction(
      nullptr, [&](void*) { hadContainer.push_back(bool(child->getContainer())); });
  Placeholders::make(component,
                     [asksOnDestruction = std::move(asksOnDestruction)] { return ModelElement(); });
  component = ComponentDeltaData();
  EXPECT_THAT(hadContainer, ElementsAre(false));
}

TEST_F(Placeholder, IsReplacedOnlyByItsList) {
  const PkgDeltaData real = make();
  const PkgDeltaData placeholder = appendPlaceholder([&] { return real; });
  EXPECT_EQ(list().resolveProxy(placeholder), real);
  EXPECT_EQ(list().resolveProxy(real), real)
      << "an element that is not a placeholder is returned as it is";
  EXPECT_FALSE(real->getContainer()) << "resolving alone changes no list";
}

TEST_F(Placeholder, MayAppendToItsListWhileItIsResolved) {
  const PkgDeltaData real = make(u"real");
  appendPlaceholder([&] {
    for (int count = 0; count < 100; ++count) {
      list().append(make(u"appended"));
    }
    return real;
  });
  EXPECT_EQ(component->getPkgsToDelete()[0], real);
  EXPECT_EQ(list().size(), 101u);
}

TEST_F(Placeholder, MayResolveToAnElementOfTheSameListThatIsNoLongerAPlaceholder) {
  const PkgDeltaData real = make(u"real");
  appendPlaceholder([&] { return real; });
  appendPlaceholder([&] { return component->getPkgsToDelete()[0]; });
  EXPECT_EQ(component->getPkgsToDelete()[1], real);
}

TEST_F(Placeholder, LetsTheExceptionOfItsResolverPassAndStays) {
  bool fails = true;
  const PkgDeltaData real = make();
  const PkgDeltaData placeholder = appendPlaceholder([&]() -> ModelElement {
    if (fails) {
      throw std::runtime_error("not loaded");
    }
    return real;
  });
  EXPECT_THAT([&] { static_cast<void>(component->getPkgsToDelete()[0]); },
              ThrowsMessage<std::runtime_error>(StrEq("not loaded")));
  EXPECT_TRUE(placeholder->isProxy());
  fails = false;
  EXPECT_EQ(component->getPkgsToDelete()[0], real);
}

TEST_F(Placeholder, RejectsItself) {
  PkgDeltaData self;
  const PkgDeltaData placeholder = appendPlaceholder([&] { return self; });
  self = placeholder;
  EXPECT_THROW(list()[0], Exception<CannotCastIncompatibleTypes>);
  EXPECT_EQ(list().size(), 1u);
}

TEST_F(Placeholder, RejectsAnElementOfAnotherModel) {
  const PkgDeltaData placeholder =
      appendPlaceholder([] { return PkgDeltaData::create(Model::create(ModelSpec()), Uuid()); });
  EXPECT_THROW(list()[0], Exception<IncompatibleModels>);
  EXPECT_TRUE(placeholder->isProxy());
}

}  // namespace
}  // namespace mf::zero
