#include "install/update_metadata_parser/UpdateMetaDataHandler.h"

#include <cstdint>
#include <limits>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "install/update_metadata_parser/UpdatePkgData.h"
#include "support/CatalogueHandler.h"

namespace install::update_metadata_parser {
namespace {

using datamodels::product_update::PkgDataWithFilesToDelete;
using test_support::CatalogueHandler;

using Keys = std::set<std::u16string>;
using Sizes = std::map<std::u16string, std::pair<std::int64_t, std::int64_t>>;
using Files = std::map<std::u16string, std::pair<Keys, std::int64_t>>;

class SizesAndFiles : public ::testing::Test {
 protected:
  PkgDataWithFilesToDelete pkg(const std::u16string& name, std::int64_t size,
                               const std::vector<std::u16string>& files) const {
    return handler.createPkgDataWithFilesToDelete(name, size, files);
  }

  CatalogueHandler handler;
};

TEST_F(SizesAndFiles, AreEmptyForAnEmptyModel) {
  EXPECT_EQ(handler.getUpdateSizeForComponentsToExtract(), Sizes());
  EXPECT_EQ(handler.getComponentsWithFilesToDelete(), Files());
}

TEST_F(SizesAndFiles, NeedNoCatalogue) {
  handler.setProductDeltaData(u"P", {}, {u"core"}, {}, {{u"core", {{u"bin", 1, 2}}}});
  handler.setComponentDataWithFilesToDelete(u"core", {pkg(u"bin", 1, {})});
  handler.getUpdateSizeForComponentsToExtract();
  handler.getComponentsWithFilesToDelete();
  EXPECT_EQ(handler.lookUps.size(), 0u);
}

TEST_F(SizesAndFiles, CoverThePackagesToExtractOfAllProducts) {
  constexpr std::int64_t kMost = std::numeric_limits<std::int64_t>::max();
  constexpr std::int64_t kLeast = std::numeric_limits<std::int64_t>::min();
  handler.setProductDeltaData(
      u"P", {u"core", u"gone"}, {u"core", u"docs", u"x"},
      {{u"gone", {{u"old", 9}}}, {u"core", {{u"old", 9}}}},
      {{u"core", {{u"bin", 1, 2}, {u"lib", kMost, kLeast}}}, {u"x", {{u"", -1, 0}}}});
  handler.setProductDeltaData(u"Q", {}, {u"extra"}, {}, {{u"extra", {{u"p", 5, 6}}}});
  EXPECT_EQ(handler.getUpdateSizeForComponentsToExtract(), (Sizes{{u"core_bin", {1, 2}},
                                                                  {u"core_lib", {kMost, kLeast}},
                                                                  {u"extra_p", {5, 6}},
                                                                  {u"x_", {-1, 0}}}));
}

TEST_F(SizesAndFiles, KeepTheNumbersOfTheFirstPackageWithAKey) {
  handler.setProductDeltaData(u"Z", {}, {u"a_b", u"core"}, {},
                              {{u"a_b", {{u"c", 1, 2}, {u"c", 3, 4}}}, {u"core", {{u"p", 5, 6}}}});
  handler.setProductDeltaData(u"A", {}, {u"core", u"a"}, {},
                              {{u"core", {{u"p", 7, 8}}}, {u"a", {{u"b_c", 9, 10}}}});
  EXPECT_EQ(handler.getUpdateSizeForComponentsToExtract(),
            (Sizes{{u"a_b_c", {1, 2}}, {u"core_p", {5, 6}}}));
}

TEST_F(SizesAndFiles, KeepTheFirstOfTwoPackagesWhoseComponentsAreInAnotherOrderByName) {
  handler.setProductDeltaData(u"P", {}, {u"a_b", u"a"}, {},
                              {{u"a_b", {{u"c", 1, 2}}}, {u"a", {{u"b_c", 9, 10}}}});
  handler.setComponentDataWithFilesToDelete(u"a_b", {pkg(u"c", 3, {})});
  handler.setComponentDataWithFilesToDelete(u"a", {pkg(u"b_c", 4, {u"dropped"})});
  EXPECT_EQ(handler.getUpdateSizeForComponentsToExtract(), (Sizes{{u"a_b_c", {1, 2}}}));
  EXPECT_EQ(handler.getComponentsWithFilesToDelete(), (Files{{u"a_b_c", {{}, 3}}}));
}

TEST_F(SizesAndFiles, ListTheFilesOfEachPackageOnceAndInOrder) {
  handler.setComponentDataWithFilesToDelete(
      u"docs", {pkg(u"guide", 7, {u"b", u"\uE000", u"a/x", u"b", u"", u"\U0001F600", u"a"}),
                pkg(u"empty", -7, {})});
  handler.setComponentDataWithFilesToDelete(u"nothing", {});
  const Files answer = handler.getComponentsWithFilesToDelete();
  EXPECT_EQ(answer,
            (Files{{u"docs_empty", {{}, -7}},
                   {u"docs_guide", {{u"", u"a", u"a/x", u"b", u"\U0001F600", u"\uE000"}, 7}}}));
  const Keys& files = answer.at(u"docs_guide").first;
  EXPECT_EQ(std::vector<std::u16string>(files.begin(), files.end()),
            (std::vector<std::u16string>{u"", u"a", u"a/x", u"b", u"\U0001F600", u"\uE000"}));
}

TEST_F(SizesAndFiles, KeepTheFilesOfTheFirstPackageWithAKey) {
  handler.setComponentDataWithFilesToDelete(u"b",
                                            {pkg(u"p", 1, {u"first"}), pkg(u"p", 2, {u"second"})});
  handler.setComponentDataWithFilesToDelete(u"a_b", {pkg(u"c", 3, {})});
  handler.setComponentDataWithFilesToDelete(
      u"a", {pkg(u"b_c", 4, {u"dropped"}), pkg(u"q", 5, {u"kept"})});
  handler.setComponentDataWithFilesToDelete(u"b", {pkg(u"p", 6, {u"third"})});
  EXPECT_EQ(handler.getComponentsWithFilesToDelete(),
            (Files{{u"a_b_c", {{}, 3}}, {u"a_q", {{u"kept"}, 5}}, {u"b_p", {{u"first"}, 1}}}));
}

TEST_F(SizesAndFiles, AcceptAHundredThousandFilesOfOnePackage) {
  const std::vector<std::u16string> files(100000, u"the/same/path");
  handler.setComponentDataWithFilesToDelete(u"docs", {pkg(u"guide", 1, files)});
  EXPECT_EQ(handler.getComponentsWithFilesToDelete(),
            (Files{{u"docs_guide", {{u"the/same/path"}, 1}}}));
}

}  // namespace
}  // namespace install::update_metadata_parser
