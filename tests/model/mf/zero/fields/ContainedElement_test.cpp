#include "mf/zero/fields/ContainedElement.h"

#include <string_view>

#include <gtest/gtest.h>

#include "foundation/core/except.h"
#include "install/datamodels/common/Release.h"
#include "install/datamodels/product_update/ReleaseData.h"
#include "mf/zero/elements/Messages.h"
#include "support/LifetimeProbe.h"

namespace mf::zero {
namespace {

using install::datamodels::common::Release;
using install::datamodels::product_update::ReleaseData;
using test_support::LifetimeProbe;

class ContainedField : public ::testing::Test {
 protected:
  Release make() const { return Release::create(model, Uuid()); }

  Model model = Model::create(ModelSpec());
  ReleaseData owner = ReleaseData::create(model, Uuid());
};

TEST_F(ContainedField, IsEmptyUntilItIsSet) {
  EXPECT_FALSE(owner->getBaseRelease());
}

TEST_F(ContainedField, HoldsTheElementItself) {
  const Release release = make();
  owner->setBaseRelease(release);
  EXPECT_EQ(owner->getBaseRelease(), release);
  EXPECT_FALSE(owner->getTargetRelease());
}

TEST_F(ContainedField, HoldsItsOwnReference) {
  Release release = make();
  const LifetimeProbe element(release);
  owner->setBaseRelease(release);
  release = Release();
  EXPECT_TRUE(element.alive());
  { const Release handedOut = owner->getBaseRelease(); }
  EXPECT_TRUE(element.alive());
  owner = ReleaseData();
  EXPECT_FALSE(element.alive());
}

TEST_F(ContainedField, LinksTheElementToItsOwnerAndField) {
  const Release release = make();
  owner->setTargetRelease(release);
  EXPECT_EQ(release->getContainer(), owner);
  EXPECT_EQ(release->getContainerProperty()->name, std::u16string_view(u"targetRelease"));
}

TEST_F(ContainedField, ReleasesItsElementForANewOne) {
  const Release former = make();
  Release dropped = make();
  const LifetimeProbe element(dropped);
  owner->setBaseRelease(dropped);
  dropped = Release();
  owner->setBaseRelease(former);
  EXPECT_FALSE(element.alive());
  const Release release = make();
  owner->setBaseRelease(release);
  EXPECT_EQ(owner->getBaseRelease(), release);
  EXPECT_FALSE(former->getContainer());
  EXPECT_EQ(release->getContainer(), owner);
}

TEST_F(ContainedField, IsClearedByAnEmptyHandle) {
  const Release release = make();
  owner->setBaseRelease(release);
  owner->setBaseRelease(Release());
  EXPECT_FALSE(owner->getBaseRelease());
  EXPECT_FALSE(release->getContainer());
  owner->setBaseRelease(Release());
  EXPECT_FALSE(owner->getBaseRelease());
}

TEST_F(ContainedField, KeepsAnElementThatIsSetAgain) {
  Release release = make();
  const LifetimeProbe element(release);
  owner->setBaseRelease(release);
  owner->setBaseRelease(release);
  owner->setBaseRelease(owner->getBaseRelease());
  EXPECT_EQ(owner->getBaseRelease(), release);
  EXPECT_EQ(release->getContainer(), owner);
  release = Release();
  EXPECT_TRUE(element.alive());
  owner->setBaseRelease(Release());
  EXPECT_FALSE(element.alive());
}

TEST_F(ContainedField, RejectsAnElementOfAnotherModelBeforeAnythingChanges) {
  const Release release = make();
  owner->setBaseRelease(release);
  const Release foreign = Release::create(Model::create(ModelSpec()), Uuid());
  try {
    owner->setBaseRelease(foreign);
    FAIL() << "nothing was thrown";
  } catch (const foundation::core::except::Exception<IncompatibleModels>& error) {
    EXPECT_EQ(error.message().typeName, u"install::datamodels::common::Release");
  }
  EXPECT_EQ(owner->getBaseRelease(), release);
  EXPECT_EQ(release->getContainer(), owner);
  EXPECT_FALSE(foreign->getContainer());
}

TEST_F(ContainedField, AcceptsAnElementThatAnotherOwnerHolds) {
  const Release release = make();
  ReleaseData former = ReleaseData::create(model, Uuid());
  former->setBaseRelease(release);
  owner->setBaseRelease(release);
  EXPECT_EQ(release->getContainer(), owner);
  former->setBaseRelease(Release());
  EXPECT_EQ(release->getContainer(), owner) << "the former owner no longer matters";
  former->setBaseRelease(release);
  owner->setBaseRelease(release);
  former = ReleaseData();
  EXPECT_EQ(release->getContainer(), owner);
}

TEST_F(ContainedField, LeavesALinkMadeByAnotherFieldOfItsOwner) {
  const Release release = make();
  owner->setBaseRelease(release);
  owner->setTargetRelease(release);
  owner->setBaseRelease(make());
  EXPECT_EQ(owner->getTargetRelease(), release);
  EXPECT_EQ(release->getContainer(), owner);
  owner = ReleaseData();
  EXPECT_FALSE(release->getContainer());
}

}  // namespace
}  // namespace mf::zero
