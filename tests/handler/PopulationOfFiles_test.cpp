// Filling a handler with files to delete.

#include "install/update_metadata_parser/UpdateMetaDataHandler.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "foundation/core/except.h"
#include "handler/Population.h"
#include "mf/zero/elements/Messages.h"
#include "support/ModelDump.h"
#include "support/SampleStrings.h"

namespace install::update_metadata_parser {
namespace {

using datamodels::product_update::PkgDataWithFilesToDelete;
using foundation::core::except::Exception;
using mf::zero::IncompatibleModels;
using test_support::dump;
using test_support::Population;

TEST_F(Population, MakesAPackageWithFilesThatIsNotAttached) {
  const PkgDataWithFilesToDelete pkg =
      handler.createPkgDataWithFilesToDelete(u"guide", -3, {u"b", u"a", u"b", u""});
  EXPECT_EQ(dump(pkg),
            "package \"guide\": size -3\n"
            "  file \"b\"\n"
            "  file \"a\"\n"
            "  file \"b\"\n"
            "  file \"\"\n");
  EXPECT_FALSE(pkg->getContainer());
  EXPECT_EQ(tree(), "release data: none\n");
}

TEST_F(Population, MakesAPackageWithoutFiles) {
  const PkgDataWithFilesToDelete pkg = handler.createPkgDataWithFilesToDelete(u"guide", 0, {});
  EXPECT_EQ(pkg->getFilesToDelete().size(), 0u);
}

TEST_F(Population, KeepsEveryUnitOfAFile) {
  const std::vector<std::u16string> files = test_support::sampleStrings();
  const PkgDataWithFilesToDelete pkg = handler.createPkgDataWithFilesToDelete(u"guide", 0, files);
  const auto& kept = pkg->getFilesToDelete();
  EXPECT_TRUE(std::vector<std::u16string>(kept.begin(), kept.end()) == files);
}

TEST_F(Population, AddsAComponentWithFilesToDelete) {
  const std::vector<PkgDataWithFilesToDelete> pkgs = {
      handler.createPkgDataWithFilesToDelete(u"b", 1, {u"x"}),
      handler.createPkgDataWithFilesToDelete(u"a", 2, {}),
      handler.createPkgDataWithFilesToDelete(u"b", 3, {u"y"})};
  handler.setComponentDataWithFilesToDelete(u"docs", pkgs);
  handler.setComponentDataWithFilesToDelete(u"docs", {});
  EXPECT_EQ(tree(),
            "release data: none\n"
            "component with files to delete \"docs\"\n"
            "  package \"b\": size 1\n"
            "    file \"x\"\n"
            "  package \"a\": size 2\n"
            "  package \"b\": size 3\n"
            "    file \"y\"\n"
            "component with files to delete \"docs\"\n");
  const auto component = handler.getProductUpdateMetaDataModel()->getCompsWithFilesToDelete()[0];
  EXPECT_EQ(component->getPkgsWithFilesToDelete()[0], pkgs[0]) << "the elements themselves";
  EXPECT_EQ(pkgs[0]->getContainer(), component);
}

TEST_F(Population, SkipsEmptyAndRepeatedHandlesOfPackagesWithFiles) {
  const PkgDataWithFilesToDelete pkg = handler.createPkgDataWithFilesToDelete(u"a", 1, {});
  handler.setComponentDataWithFilesToDelete(u"docs", {PkgDataWithFilesToDelete(), pkg, pkg});
  EXPECT_EQ(tree(),
            "release data: none\n"
            "component with files to delete \"docs\"\n"
            "  package \"a\": size 1\n");
}

TEST_F(Population, LeavesTheRootAloneWhenAPackageIsOfAnotherModel) {
  const UpdateMetaDataHandler other;
  const PkgDataWithFilesToDelete own = handler.createPkgDataWithFilesToDelete(u"own", 1, {});
  const PkgDataWithFilesToDelete foreign = other.createPkgDataWithFilesToDelete(u"foreign", 2, {});
  handler.setComponentDataWithFilesToDelete(u"before", {});
  try {
    handler.setComponentDataWithFilesToDelete(u"docs", {own, foreign});
    FAIL() << "nothing was thrown";
  } catch (const Exception<IncompatibleModels>& error) {
    EXPECT_STREQ(error.what(),
                 "element of another model: "
                 "install::datamodels::product_update::PkgDataWithFilesToDelete");
  }
  EXPECT_EQ(tree(),
            "release data: none\n"
            "component with files to delete \"before\"\n");
  EXPECT_FALSE(own->getContainer()) << "the incomplete component is gone";
  handler.setComponentDataWithFilesToDelete(u"docs", {own});
  EXPECT_TRUE(own->getContainer());
}

}  // namespace
}  // namespace install::update_metadata_parser
