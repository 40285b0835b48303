#include "install/datamodels/product_update/ComponentDeltaData.h"

#include <string>

#include <gtest/gtest.h>

#include "support/ModelDump.h"
#include "support/SampleStrings.h"

namespace install::datamodels::product_update {
namespace {

class Component : public ::testing::Test {
 protected:
  PkgDeltaData makePkg(const std::u16string& name) const {
    PkgDeltaData pkg = PkgDeltaData::create(model, mf::zero::Uuid());
    pkg->setName(name);
    return pkg;
  }

  mf::zero::Model model = mf::zero::Model::create(mf::zero::ModelSpec());
  ComponentDeltaData component = ComponentDeltaData::create(model, mf::zero::Uuid());
};

TEST_F(Component, ReadsAsUnsetWhenItIsNew) {
  EXPECT_EQ(test_support::dump(component), "component \"\"\n");
}

TEST_F(Component, KeepsEveryUnitOfItsName) {
  for (const std::u16string& text : test_support::sampleStrings()) {
    component->setName(text);
    EXPECT_TRUE(component->getName() == text);
    EXPECT_TRUE(component->name().view() == text);
  }
}

TEST_F(Component, KeepsItsTwoListsApart) {
  component->setName(u"core");
  component->getPkgsToDeleteMutable().append(makePkg(u"old"));
  component->getPkgsToExtractMutable().append(makePkg(u"new"));
  component->getPkgsToExtractMutable().append(makePkg(u"more"));
  EXPECT_EQ(test_support::dump(component),
            "component \"core\"\n"
            "  package to delete \"old\": size 0, unpacked 0\n"
            "  package to extract \"new\": size 0, unpacked 0\n"
            "  package to extract \"more\": size 0, unpacked 0\n");
  EXPECT_EQ(&component->getPkgsToDeleteMutable(), &component->getPkgsToDelete());
  EXPECT_EQ(&component->getPkgsToExtractMutable(), &component->getPkgsToExtract());
}

TEST_F(Component, ContainsAPackageOncePerList) {
  const PkgDeltaData pkg = makePkg(u"p");
  for (int count = 0; count < 2; ++count) {
    component->getPkgsToDeleteMutable().append(pkg);
    component->getPkgsToExtractMutable().append(pkg);
  }
  EXPECT_EQ(component->getPkgsToDelete().size(), 1u);
  EXPECT_EQ(component->getPkgsToExtract().size(), 1u);
}

}  // namespace
}  // namespace install::datamodels::product_update
