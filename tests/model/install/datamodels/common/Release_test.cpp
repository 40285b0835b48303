#include "install/datamodels/common/Release.h"

#include <cstdint>
#include <limits>
#include <string>
#include <type_traits>

#include <gtest/gtest.h>

#include "support/SampleStrings.h"

namespace install::datamodels::common {
namespace {

static_assert(std::is_same_v<decltype(&Release::Impl::getUpdateLevel),
                             std::int8_t (Release::Impl::*)() const noexcept>);
static_assert(std::is_same_v<decltype(&Release::Impl::getVersion),
                             std::u16string (Release::Impl::*)() const>);

Release makeRelease() {
  return Release::create(mf::zero::Model::create(mf::zero::ModelSpec()), mf::zero::Uuid());
}

TEST(Release, ReadsAsUnsetWhenItIsNew) {
  const Release release = makeRelease();
  EXPECT_EQ(release->getReleaseFamily(), u"");
  EXPECT_EQ(release->getVersion(), u"");
  EXPECT_EQ(release->getUpdateLevel(), 0);
}

TEST(Release, KeepsEveryUnitOfFamilyAndVersion) {
  const Release release = makeRelease();
  for (const std::u16string& text : test_support::sampleStrings()) {
    release->setReleaseFamily(text);
    EXPECT_TRUE(release->getReleaseFamily() == text);
    release->setVersion(text + u"!");
    EXPECT_TRUE(release->getVersion() == text + u"!");
    EXPECT_TRUE(release->getReleaseFamily() == text);
  }
}

TEST(Release, HandsOutACopyOfItsStrings) {
  const Release release = makeRelease();
  release->setVersion(u"1.0");
  std::u16string version = release->getVersion();
  version += u" changed";
  EXPECT_EQ(release->getVersion(), u"1.0");
}

TEST(Release, KeepsEveryUpdateLevelOfASignedByte) {
  const Release release = makeRelease();
  for (int level = std::numeric_limits<std::int8_t>::min();
       level <= std::numeric_limits<std::int8_t>::max(); ++level) {
    release->setUpdateLevel(static_cast<std::int8_t>(level));
    EXPECT_EQ(release->getUpdateLevel(), level);
  }
}

}  // namespace
}  // namespace install::datamodels::common
