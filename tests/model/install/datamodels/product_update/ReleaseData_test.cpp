#include "install/datamodels/product_update/ReleaseData.h"

#include <string>

#include <gtest/gtest.h>

#include "support/SampleStrings.h"

namespace install::datamodels::product_update {
namespace {

using common::Release;

class ReleaseDataFields : public ::testing::Test {
 protected:
  Release makeRelease() const { return Release::create(model, mf::zero::Uuid()); }

  mf::zero::Model model = mf::zero::Model::create(mf::zero::ModelSpec());
  ReleaseData releaseData = ReleaseData::create(model, mf::zero::Uuid());
};

TEST_F(ReleaseDataFields, AreUnsetInANewElement) {
  EXPECT_FALSE(releaseData->getBaseRelease());
  EXPECT_FALSE(releaseData->getTargetRelease());
  EXPECT_EQ(releaseData->getMetaDataArch(), u"");
}

TEST_F(ReleaseDataFields, KeepTheTwoReleasesApart) {
  const Release base = makeRelease();
  const Release target = makeRelease();
  releaseData->setBaseRelease(base);
  EXPECT_FALSE(releaseData->getTargetRelease());
  releaseData->setTargetRelease(target);
  EXPECT_EQ(releaseData->getBaseRelease(), base);
  EXPECT_EQ(releaseData->getTargetRelease(), target);
}

TEST_F(ReleaseDataFields, LeaveTheCallersHandleValid) {
  const Release base = makeRelease();
  releaseData->setBaseRelease(base);
  base->setVersion(u"1.0");
  EXPECT_EQ(releaseData->getBaseRelease()->getVersion(), u"1.0");
  releaseData->setBaseRelease(makeRelease());
  EXPECT_EQ(base->getVersion(), u"1.0");
}

TEST_F(ReleaseDataFields, KeepEveryUnitOfTheArchitecture) {
  for (const std::u16string& text : test_support::sampleStrings()) {
    releaseData->setMetaDataArch(text);
    EXPECT_TRUE(releaseData->getMetaDataArch() == text);
  }
}

}  // namespace
}  // namespace install::datamodels::product_update
