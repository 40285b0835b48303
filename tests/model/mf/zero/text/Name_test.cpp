#include "mf/zero/text/Name.h"

#include <string>

#include <gtest/gtest.h>

#include "install/datamodels/product_update/ComponentDeltaData.h"
#include "install/datamodels/product_update/PkgDeltaData.h"
#include "mf/zero/text/StringPool.h"
#include "support/SampleStrings.h"

namespace mf::zero {
namespace {

using install::datamodels::product_update::ComponentDeltaData;
using install::datamodels::product_update::PkgDeltaData;

TEST(Name, ReadsAsTheEmptyStringWhileItIsUnset) {
  EXPECT_EQ(Name().view(), u"");
  EXPECT_EQ(Name().identity(), nullptr);
}

TEST(Name, ReadsAsTheStoredString) {
  StringPool pool;
  for (const std::u16string& text : test_support::sampleStrings()) {
    const InternedString& stored = pool.intern(text);
    EXPECT_EQ(Name(stored).view(), text);
    EXPECT_EQ(Name(stored).identity(), &stored);
  }
}

TEST(Name, IsOneObjectForEqualNamesOfOneModel) {
  const Model model = Model::create(ModelSpec());
  const PkgDeltaData pkg = PkgDeltaData::create(model, Uuid());
  const ComponentDeltaData component = ComponentDeltaData::create(model, Uuid());
  for (const std::u16string& text : test_support::sampleStrings()) {
    pkg->setName(text);
    component->setName(text);
    EXPECT_EQ(pkg->name().identity(), component->name().identity());
  }
  pkg->setName(u"one");
  component->setName(u"other");
  EXPECT_NE(pkg->name().identity(), component->name().identity());
}

TEST(Name, IsUnsetByTheEmptyString) {
  const PkgDeltaData pkg = PkgDeltaData::create(Model::create(ModelSpec()), Uuid());
  pkg->setName(u"something");
  pkg->setName(u"");
  EXPECT_EQ(pkg->name().identity(), nullptr);
  EXPECT_EQ(pkg->getName(), u"");
}

}  // namespace
}  // namespace mf::zero
