#include "install/datamodels/product_update/ComponentDataWithFilesToDelete.h"

#include <string>

#include <gtest/gtest.h>

#include "support/ModelDump.h"
#include "support/SampleStrings.h"

namespace install::datamodels::product_update {
namespace {

class ComponentWithFiles : public ::testing::Test {
 protected:
  PkgDataWithFilesToDelete makePkg(const std::u16string& name) const {
    PkgDataWithFilesToDelete pkg = PkgDataWithFilesToDelete::create(model, mf::zero::Uuid());
    pkg->setName(name);
    return pkg;
  }

  mf::zero::Model model = mf::zero::Model::create(mf::zero::ModelSpec());
  ComponentDataWithFilesToDelete component =
      ComponentDataWithFilesToDelete::create(model, mf::zero::Uuid());
};

TEST_F(ComponentWithFiles, ReadsAsUnsetWhenItIsNew) {
  EXPECT_EQ(test_support::dump(component), "component with files to delete \"\"\n");
}

TEST_F(ComponentWithFiles, KeepsEveryUnitOfItsName) {
  for (const std::u16string& text : test_support::sampleStrings()) {
    component->setName(text);
    EXPECT_TRUE(component->getName() == text);
    EXPECT_TRUE(component->name().view() == text);
  }
}

TEST_F(ComponentWithFiles, KeepsItsPackagesInOrder) {
  component->setName(u"docs");
  const PkgDataWithFilesToDelete pkg = makePkg(u"b");
  component->getPkgsWithFilesToDeleteMutable().append(pkg);
  component->getPkgsWithFilesToDeleteMutable().append(makePkg(u"a"));
  component->getPkgsWithFilesToDeleteMutable().append(pkg);
  component->getPkgsWithFilesToDeleteMutable().append(makePkg(u"b"));
  EXPECT_EQ(test_support::dump(component),
            "component with files to delete \"docs\"\n"
            "  package \"b\": size 0\n"
            "  package \"a\": size 0\n"
            "  package \"b\": size 0\n")
      << "a package is added once, another of the same name again";
  EXPECT_EQ(&component->getPkgsWithFilesToDeleteMutable(), &component->getPkgsWithFilesToDelete());
}

}  // namespace
}  // namespace install::datamodels::product_update
