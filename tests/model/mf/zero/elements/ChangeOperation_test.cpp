#include "mf/zero/elements/ChangeOperation.h"

#include <string_view>

#include <gtest/gtest.h>

#include "install/datamodels/product_update/ComponentDeltaData.h"
#include "install/datamodels/product_update/PkgDeltaData.h"
#include "mf/zero/fields/OwnedCollection.h"

namespace mf::zero {
namespace {

using install::datamodels::product_update::ComponentDeltaData;
using install::datamodels::product_update::PkgDeltaData;

class Change : public ::testing::Test {
 protected:
  Model model = Model::create(ModelSpec());
  ComponentDeltaData former = ComponentDeltaData::create(model, Uuid());
  ComponentDeltaData next = ComponentDeltaData::create(model, Uuid());
  PkgDeltaData pkg = PkgDeltaData::create(model, Uuid());  // goes before its containers
};

TEST_F(Change, TakesTheLinkBackThatIsNotCommitted) {
  {
    ChangeOperation change(*pkg.operator->());
    change.link(*former.operator->(), 1);
    change.markAttached();
    EXPECT_EQ(pkg->getContainer(), former);
    EXPECT_EQ(pkg->getContainerProperty()->name, std::u16string_view(u"pkgsToExtract"));
  }
  EXPECT_FALSE(pkg->getContainer());
  EXPECT_EQ(pkg->getContainerProperty(), nullptr);
}

TEST_F(Change, GivesBackTheFormerContainer) {
  former->getPkgsToExtractMutable().append(pkg);
  {
    ChangeOperation change(*pkg.operator->());
    change.link(*next.operator->(), 0);
    EXPECT_EQ(pkg->getContainer(), next);
  }
  EXPECT_EQ(pkg->getContainer(), former);
  EXPECT_EQ(pkg->getContainerProperty()->name, std::u16string_view(u"pkgsToExtract"));
}

TEST_F(Change, StaysOnceItIsCommitted) {
  former->getPkgsToExtractMutable().append(pkg);
  {
    ChangeOperation change(*pkg.operator->());
    change.link(*next.operator->(), 0);
    change.markAttached();
    change.commit();
  }
  EXPECT_EQ(pkg->getContainer(), next);
  EXPECT_EQ(pkg->getContainerProperty()->name, std::u16string_view(u"pkgsToDelete"));
}

}  // namespace
}  // namespace mf::zero
