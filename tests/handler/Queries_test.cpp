#include "install/update_metadata_parser/UpdateMetaDataHandler.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "handler/QuerySide.h"
#include "support/CatalogueHandler.h"
#include "support/ModelDump.h"

namespace install::update_metadata_parser {
namespace {

using test_support::addProductToDelete;
using test_support::addProductToExtract;
using test_support::CatalogueHandler;
using test_support::Components;
using test_support::dump;
using test_support::kDelete;
using test_support::kExtract;
using test_support::Keys;
using test_support::KeysByCode;
using test_support::Side;

using LookUps = std::vector<std::vector<std::u16string>>;

class ComponentQuery : public ::testing::TestWithParam<Side> {
 protected:
  void addProduct(const std::u16string& name, const Components& components) {
    GetParam().addProduct(handler, name, components);
  }
  void addProductOfOtherSide(const std::u16string& name, const Components& components) {
    (GetParam().addProduct == addProductToDelete ? addProductToExtract : addProductToDelete)(
        handler, name, components);
  }
  KeysByCode byCode(const std::u16string& location = u"there") {
    return (handler.*GetParam().byCode)(location);
  }
  Keys ofCode(const std::u16string& code, const std::u16string& location = u"there") {
    return (handler.*GetParam().ofCode)(code, location);
  }

  CatalogueHandler handler;
};

INSTANTIATE_TEST_SUITE_P(Packages, ComponentQuery, ::testing::Values(kDelete, kExtract),
                         [](const auto& side) { return side.param.name; });

TEST_P(ComponentQuery, AnswersAnEmptyModelWithoutTheCatalogue) {
  EXPECT_EQ(byCode(), KeysByCode());
  EXPECT_EQ(ofCode(u"C"), Keys());
  EXPECT_EQ(handler.lookUps, LookUps());
}

TEST_P(ComponentQuery, JoinsComponentAndPackageByOneUnderscore) {
  using namespace std::string_literals;
  handler.codesByName = {{u"P", u"C"}};
  addProduct(u"P", {{u"core", {u"bin"}},
                    {u"x", {u""}},
                    {u"", {u"y", u""}},
                    {u" c ", {u" p "}},
                    {u"N\0"s, {u"\0M"s}},
                    {u"_", {u"_"}}});
  EXPECT_EQ(
      byCode(),
      (KeysByCode{{u"C", {u"core_bin", u"x_", u"_y", u"_", u" c _ p ", u"N\0_\0M"s, u"___"}}}));
}

TEST_P(ComponentQuery, CountsAKeyOnceHoweverItsNamesAreSplit) {
  handler.codesByName = {{u"P", u"C"}};
  handler.namesByCode = {{u"C", u"P"}};
  addProduct(u"P", {{u"a_b", {u"c"}}, {u"a", {u"b_c", u"b"}}, {u"", {u"a_b_c"}}, {u"a_b", {u"c"}}});
  EXPECT_EQ(byCode(), (KeysByCode{{u"C", {u"a_b_c", u"a_b", u"_a_b_c"}}}));
  EXPECT_EQ(ofCode(u"C"), (Keys{u"a_b_c", u"a_b", u"_a_b_c"}));
}

TEST_P(ComponentQuery, OrdersKeysByTheirUnitsEvenAcrossComponents) {
  handler.codesByName = {{u"P", u"C"}};
  // '^' sorts before the underscore, '`' after it; surrogates sort before U+E000.
  addProduct(u"P", {{u"a", {u"b_z", u"~"}},
                    {u"a_b", {u"a", u""}},
                    {u"a`", {u"0"}},
                    {u"a^", {u"1"}},
                    {u"\uE000", {u"2"}},
                    {u"\U0001F600", {u"3"}}});
  const KeysByCode answer = byCode();
  ASSERT_EQ(answer.count(u"C"), 1u);
  const std::vector<std::u16string> inOrder(answer.at(u"C").begin(), answer.at(u"C").end());
  EXPECT_EQ(inOrder, (std::vector<std::u16string>{u"a^_1", u"a_b_", u"a_b_a", u"a_b_z", u"a_~",
                                                  u"a`_0", u"\U0001F600_3", u"\uE000_2"}));
}

TEST_P(ComponentQuery, ReadsItsOwnSideOnly) {
  handler.codesByName = {{u"P", u"C"}};
  handler.namesByCode = {{u"C", u"P"}};
  addProductOfOtherSide(u"P", {{u"core", {u"other"}}});
  EXPECT_EQ(byCode(), KeysByCode());
  EXPECT_EQ(ofCode(u"C"), Keys());
  addProduct(u"P", {{u"core", {u"own"}}});
  EXPECT_EQ(byCode(), (KeysByCode{{u"C", {u"core_own"}}}));
  EXPECT_EQ(ofCode(u"C"), Keys{u"core_own"});
}

TEST_P(ComponentQuery, NeedsNoReleases) {
  addProduct(u"", {{u"core", {u"bin"}}});
  EXPECT_FALSE(handler.getProductUpdateMetaDataModel()->getReleaseData());
  EXPECT_EQ(byCode(), (KeysByCode{{u"", {u"core_bin"}}}));
}

TEST_P(ComponentQuery, ReturnsANewAnswerEachTimeAndLeavesTheModelAlone) {
  handler.codesByName = {{u"P", u"C"}};
  handler.namesByCode = {{u"C", u"P"}};
  addProduct(u"P", {{u"b", {u"1"}}, {u"a", {u"2"}}, {u"b", {u"1"}}});
  const std::string before = dump(handler.getProductUpdateMetaDataModel());
  KeysByCode first = byCode();
  first[u"C"].clear();
  EXPECT_EQ(byCode(), (KeysByCode{{u"C", {u"a_2", u"b_1"}}}));
  EXPECT_EQ(ofCode(u"C"), ofCode(u"C"));
  EXPECT_EQ(dump(handler.getProductUpdateMetaDataModel()), before);
}

class SingleArgumentQuery : public ComponentQuery {};

INSTANTIATE_TEST_SUITE_P(Packages, SingleArgumentQuery, ::testing::Values(kDelete, kExtract),
                         [](const auto& side) { return side.param.name; });

TEST_P(SingleArgumentQuery, LooksUpEachProductThatHasPackagesOnce) {
  handler.codesByName = {{u"A", u"C2"}, {u"B", u"C1"}, {u"Empty", u"C3"}};
  addProduct(u"Empty", {});
  addProduct(u"A", {{u"core", {u"bin"}}});
  addProduct(u"Empty", {{u"core", {}}, {u"docs", {}}});
  addProduct(u"B", {{u"docs", {}}, {u"core", {u"lib", u"bin"}}});
  addProductOfOtherSide(u"A", {{u"core", {u"bin"}}});
  EXPECT_EQ(byCode(u"the location"),
            (KeysByCode{{u"C1", {u"core_bin", u"core_lib"}}, {u"C2", {u"core_bin"}}}));
  EXPECT_EQ(handler.lookUps,
            (LookUps{{u"code of", u"A", u"the location"}, {u"code of", u"B", u"the location"}}));
}

TEST_P(SingleArgumentQuery, LeavesOutTheLaterOfTwoProductsWithOneBaseCode) {
  handler.codesByName = {{u"A", u"C"}, {u"B", u"C"}, {u"Z", u"D"}};
  addProduct(u"Z", {{u"core", {u"z"}}});
  addProduct(u"B", {{u"core", {u"b"}}});
  addProduct(u"A", {{u"core", {u"a"}}});
  addProduct(u"B", {{u"core", {u"b2"}}});
  EXPECT_EQ(byCode(), (KeysByCode{{u"C", {u"core_b"}}, {u"D", {u"core_z"}}}));
  EXPECT_EQ(handler.lookUps, (LookUps{{u"code of", u"Z", u"there"},
                                      {u"code of", u"B", u"there"},
                                      {u"code of", u"A", u"there"},
                                      {u"code of", u"B", u"there"}}))
      << "a product is looked up before it is left out";
}

TEST_P(SingleArgumentQuery, GivesTheCodeToTheFirstProductThatHasPackages) {
  handler.codesByName = {{u"A", u"C"}, {u"B", u"C"}};
  addProduct(u"A", {{u"core", {}}});
  addProduct(u"B", {{u"core", {u"b"}}});
  EXPECT_EQ(byCode(), (KeysByCode{{u"C", {u"core_b"}}}));
}

TEST_P(SingleArgumentQuery, TreatsAnEmptyCodeAsACode) {
  handler.codesByName = {{u"Known", u"C"}};
  addProduct(u"Unknown", {{u"core", {u"u"}}});
  addProduct(u"Known", {{u"core", {u"k"}}});
  addProduct(u"Unknown too", {{u"core", {u"t"}}});
  EXPECT_EQ(byCode(), (KeysByCode{{u"", {u"core_u"}}, {u"C", {u"core_k"}}}));
}

TEST_P(SingleArgumentQuery, KeepsEveryUnitOfACode) {
  using namespace std::string_literals;
  handler.codesByName = {{u"A", u"C"}, {u"B", u"C\0"s}, {u"D", u"\uE000"}, {u"E", u"\U0001F600"}};
  for (const char16_t* name : {u"A", u"B", u"D", u"E"}) {
    addProduct(name, {{u"core", {name}}});
  }
  const KeysByCode answer = byCode();
  std::vector<std::u16string> codes;
  for (const auto& [code, keys] : answer) {
    codes.push_back(code);
    EXPECT_EQ(keys.size(), 1u);
  }
  EXPECT_EQ(codes, (std::vector<std::u16string>{u"C", u"C\0"s, u"\U0001F600", u"\uE000"}));
}

class TwoArgumentQuery : public ComponentQuery {};

INSTANTIATE_TEST_SUITE_P(Packages, TwoArgumentQuery, ::testing::Values(kDelete, kExtract),
                         [](const auto& side) { return side.param.name; });

TEST_P(TwoArgumentQuery, AsksForTheNameOnceForEachProductOfTheModel) {
  handler.namesByCode = {{u"C", u"A"}};
  addProduct(u"Empty", {});
  addProduct(u"A", {{u"core", {u"bin"}}});
  addProductOfOtherSide(u"B", {{u"core", {u"bin"}}});
  EXPECT_EQ(ofCode(u"C", u"the location"), Keys{u"core_bin"});
  EXPECT_EQ(handler.lookUps, LookUps(3, {u"name of", u"C", u"the location"}));
}

TEST_P(TwoArgumentQuery, UnitesAllProductsOfTheName) {
  handler.namesByCode = {{u"C", u"A"}};
  handler.codesByName = {{u"A", u"C"}, {u"Other name of C", u"C"}};
  addProduct(u"A", {{u"core", {u"2", u"1"}}});
  addProduct(u"Other name of C", {{u"core", {u"other"}}});
  addProduct(u"A", {{u"docs", {u"3"}}, {u"core", {u"1", u"0"}}});
  addProduct(u"A", {});
  EXPECT_EQ(ofCode(u"C"), (Keys{u"core_0", u"core_1", u"core_2", u"docs_3"}));
}

TEST_P(TwoArgumentQuery, ComparesNamesUnitByUnitAndByLength) {
  using namespace std::string_literals;
  handler.namesByCode = {{u"C", u"Press\0"s}};
  for (const std::u16string& name :
       {u"Press"s, u"press\0"s, u"Press\0\0"s, u" Press\0"s, u"Pres"s, u""s}) {
    addProduct(name, {{u"core", {u"wrong"}}});
  }
  EXPECT_EQ(ofCode(u"C"), Keys());
  addProduct(u"Press\0"s, {{u"core", {u"right"}}});
  EXPECT_EQ(ofCode(u"C"), Keys{u"core_right"});
}

TEST_P(TwoArgumentQuery, TreatsAnEmptyNameAsAName) {
  addProduct(u"A", {{u"core", {u"a"}}});
  EXPECT_EQ(ofCode(u"unknown"), Keys());
  addProduct(u"", {{u"core", {u"nameless"}}});
  EXPECT_EQ(ofCode(u"unknown"), Keys{u"core_nameless"});
}

}  // namespace
}  // namespace install::update_metadata_parser
