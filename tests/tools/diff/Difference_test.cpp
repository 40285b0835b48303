#include "diff/Difference.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "output/Text.h"
#include "support/PlainContents.h"
#include "support/PlainDocument.h"

namespace update_metadata_tool::diff {
namespace {

using summary::ByteSum;
using summary::Contents;
using test_support::contentsOf;
using test_support::PlainDocument;

std::string textOf(const std::optional<ByteSum>& sum) {
  return sum ? std::to_string(sum->value().value()) : "-";
}

// "name fetch>fetch" for every product or component that changed.
template <class Item>
std::vector<std::string> changesOf(const std::vector<Item>& items) {
  std::vector<std::string> texts;
  for (const Item& item : items) {
    const auto fetch = [](const std::optional<summary::Totals>& side) {
      return side ? std::optional(side->bytesToFetch) : std::nullopt;
    };
    texts.push_back(output::toUtf8(item.name) + ' ' + textOf(fetch(item.before)) + '>' +
                    textOf(fetch(item.after)));
  }
  return texts;
}

std::string textOf(const std::optional<PackageSizes>& sizes) {
  return sizes ? std::to_string(sizes->size) + '/' + std::to_string(sizes->uncompressedBytes) : "-";
}

std::vector<std::string> changesOf(const std::vector<PackageChange>& packages) {
  std::vector<std::string> texts;
  for (const PackageChange& package : packages) {
    texts.push_back(output::toUtf8(package.key) + ' ' + textOf(package.before) + '>' +
                    textOf(package.after));
  }
  return texts;
}

using Texts = std::vector<std::string>;

PlainDocument makeBase() {
  PlainDocument document;
  document.components["core"] = {{{"old", {5, 0}}}, {{"engine", {100, 200}}, {"fonts", {10, 20}}}};
  document.components["view"] = {{}, {{"show", {7, 8}}}};
  document.products["Editor"] = {{"core"}, {"core"}};
  document.products["Viewer"] = {{}, {"view"}};
  document.componentsWithFiles["core"]["manual"] = {50, {"a", "b"}};
  return document;
}

// The difference between makeBase() and a changed copy.
Difference differenceOf(const std::function<void(PlainDocument&)>& change) {
  PlainDocument after = makeBase();
  change(after);
  return compare(contentsOf(makeBase()), contentsOf(after));
}

TEST(Difference, IsEmptyIfNothingDiffers) {
  EXPECT_TRUE(differenceOf([](PlainDocument&) {}).isEmpty());
}

TEST(Difference, IgnoresOrderRepetitionAndWhatNoProductNames) {
  const Difference difference = differenceOf([](PlainDocument& after) {
    after.products["Editor"].toExtract = {"core", "core"};
    after.componentsWithFiles["core"]["manual"].files = {"b", "a", "b"};
    after.components["unused"] = {{}, {{"package", {1, 2}}}};
    after.products["Nothing"] = {};
  });
  EXPECT_TRUE(difference.isEmpty());
}

TEST(Difference, ContainsAPackageWithAnotherSizeAndWhatContainsIt) {
  const Difference difference = differenceOf(
      [](PlainDocument& after) { after.components["core"].toExtract["engine"].size = 130; });
  EXPECT_EQ(changesOf(difference.packagesToExtract), Texts{"core_engine 100/200>130/200"});
  EXPECT_EQ(changesOf(difference.components), Texts{"core 110>140"});
  EXPECT_EQ(changesOf(difference.products), Texts{"Editor 110>140"});
  EXPECT_TRUE(difference.packagesToDelete.empty());
  EXPECT_TRUE(difference.products[0].componentsToExtract.isEmpty());
  EXPECT_EQ(difference.totals.before.bytesToFetch, ByteSum(117));
  EXPECT_EQ(difference.totals.after.bytesToFetch, ByteSum(147));
}

TEST(Difference, IsFoundEvenIfAllSumsAreEqual) {
  const Difference difference = differenceOf([](PlainDocument& after) {
    std::swap(after.components["core"].toExtract["engine"],
              after.components["core"].toExtract["fonts"]);
  });
  EXPECT_EQ(changesOf(difference.components), Texts{"core 110>110"});
  EXPECT_EQ(changesOf(difference.products), Texts{"Editor 110>110"});
}

TEST(Difference, InPackagesToDeleteDoesNotAffectAProductThatOnlyExtracts) {
  const Difference difference = differenceOf([](PlainDocument& after) {
    after.components["view"].toDelete["show"].size = 3;
    after.products["Editor"].toDelete = {"core", "view"};
  });
  EXPECT_EQ(changesOf(difference.packagesToDelete), Texts{"view_show ->3/0"});
  EXPECT_EQ(changesOf(difference.components), Texts{"view 7>7"});
  EXPECT_EQ(changesOf(difference.products), Texts{"Editor 110>110"});
  EXPECT_EQ(difference.products[0].componentsToDelete.added, std::vector<std::u16string>{u"view"});
}

TEST(Difference, ListsAdditionsAndRemovalsLargestFirst) {
  const Difference difference = differenceOf([](PlainDocument& after) {
    after.components["draw"] = {{}, {{"canvas", {60, 1}}}};
    after.products["Draw"] = {{}, {"draw"}};
    after.products.erase("Viewer");
    after.products["Editor"].toExtract = {"draw"};
  });
  EXPECT_EQ(changesOf(difference.products), (Texts{"Draw ->60", "Editor 110>60", "Viewer 7>-"}));
  EXPECT_EQ(changesOf(difference.components), (Texts{"core 110>0", "draw ->60", "view 7>-"}));
  EXPECT_EQ(changesOf(difference.packagesToExtract),
            (Texts{"core_engine 100/200>-", "draw_canvas ->60/1", "core_fonts 10/20>-",
                   "view_show 7/8>-"}));
  EXPECT_EQ(changeOf(difference.products[0]), Change::kAdded);
  EXPECT_EQ(changeOf(difference.products[1]), Change::kChanged);
  EXPECT_EQ(changeOf(difference.products[2]), Change::kRemoved);
}

TEST(Difference, OrdersEqualChangesByName) {
  const Difference difference = differenceOf([](PlainDocument& after) {
    after.components["view"].toExtract = {
        {"show", {7, 8}}, {"z", {1, 0}}, {"a", {-1, 0}}, {"m", {1, 0}}, {"b", {1, 1}}};
  });
  EXPECT_EQ(changesOf(difference.packagesToExtract),
            (Texts{"view_b ->1/1", "view_a ->-1/0", "view_m ->1/0", "view_z ->1/0"}));
}

TEST(Difference, ListsFilesByPackage) {
  const Difference difference = differenceOf([](PlainDocument& after) {
    after.componentsWithFiles["core"]["manual"] = {51, {"b", "c", "d"}};
    after.componentsWithFiles["view"]["tips"] = {1, {}};
  });
  ASSERT_EQ(difference.packagesWithFiles.size(), 2U);
  const FilesChange& manual = difference.packagesWithFiles[0];
  EXPECT_EQ(manual.key, u"core_manual");
  EXPECT_EQ(manual.before, 50);
  EXPECT_EQ(manual.after, 51);
  EXPECT_EQ(manual.files.added, (std::vector<std::u16string>{u"c", u"d"}));
  EXPECT_EQ(manual.files.removed, std::vector<std::u16string>{u"a"});
  EXPECT_EQ(difference.packagesWithFiles[1].key, u"view_tips");
  EXPECT_EQ(difference.packagesWithFiles[1].component, u"view");
  EXPECT_FALSE(difference.packagesWithFiles[1].isKeyShared);
  EXPECT_EQ(changeOf(difference.packagesWithFiles[1]), Change::kAdded);
  EXPECT_EQ(difference.filesToDelete.before, 2U);
  EXPECT_EQ(difference.filesToDelete.after, 3U);
  EXPECT_TRUE(difference.products.empty());
}

// The chosen products decide which of the packages with one key counts.
TEST(Difference, ListsTheFilesOfEveryComponentWithTheKey) {
  PlainDocument document;
  document.componentsWithFiles["a"]["b_c"] = {1, {"x"}};
  document.componentsWithFiles["a_b"]["c"] = {2, {"y"}};
  const Contents before = contentsOf(document);
  document.componentsWithFiles["a_b"]["c"] = {2, {"z"}};
  const Difference difference = compare(before, contentsOf(document));
  ASSERT_EQ(difference.packagesWithFiles.size(), 1U);
  const FilesChange& change = difference.packagesWithFiles[0];
  EXPECT_EQ(change.key, u"a_b_c");
  EXPECT_EQ(change.component, u"a_b");
  EXPECT_TRUE(change.isKeyShared);
  EXPECT_EQ(changeOf(change), Change::kChanged);
  EXPECT_EQ(change.files.added, std::vector<std::u16string>{u"z"});
  EXPECT_EQ(change.files.removed, std::vector<std::u16string>{u"y"});
  EXPECT_EQ(difference.filesToDelete.before, 1U);
  EXPECT_EQ(difference.filesToDelete.after, 1U);
}

TEST(Difference, ShowsThatAnotherComponentHasTheFilesOfAKey) {
  PlainDocument before;
  before.componentsWithFiles["a"]["b_c"] = {1, {"x"}};
  PlainDocument after;
  after.componentsWithFiles["a_b"]["c"] = {1, {"x"}};
  const Difference difference = compare(contentsOf(before), contentsOf(after));
  ASSERT_EQ(difference.packagesWithFiles.size(), 2U);
  EXPECT_EQ(difference.packagesWithFiles[0].component, u"a");
  EXPECT_EQ(changeOf(difference.packagesWithFiles[0]), Change::kRemoved);
  EXPECT_EQ(difference.packagesWithFiles[1].component, u"a_b");
  EXPECT_EQ(changeOf(difference.packagesWithFiles[1]), Change::kAdded);
  for (const FilesChange& change : difference.packagesWithFiles) {
    EXPECT_EQ(change.key, u"a_b_c");
    EXPECT_TRUE(change.isKeyShared);
  }
}

TEST(Difference, OfTheReleasesNamesTheField) {
  Contents before;
  Contents after;
  after.base = {u"F", u"1"};
  after.target = {u"G", u"2"};
  after.targetUpdateLevel = -56;
  after.architecture = u"arm64";
  const Difference difference = compare(before, after);
  std::vector<std::tuple<std::string, std::u16string, std::u16string>> changes;
  for (const ReleaseChange& change : difference.releases) {
    changes.emplace_back(change.field, change.before, change.after);
  }
  const decltype(changes) expected = {
      {"base.family", u"", u"F"},           {"base.version", u"", u"1"},
      {"target.family", u"", u"G"},         {"target.version", u"", u"2"},
      {"target.updateLevel", u"0", u"-56"}, {"arch", u"", u"arm64"}};
  EXPECT_EQ(changes, expected);
  EXPECT_FALSE(difference.isEmpty());
}

TEST(Difference, ComparesProductsOfOneNameInTheirOrder) {
  Contents before;
  before.components = {{u"c", {}, {}}, {u"d", {}, {}}};
  before.products = {{u"P", std::nullopt, {}, {0}}, {u"P", std::nullopt, {}, {1}}};
  Contents after = before;
  EXPECT_TRUE(compare(before, after).isEmpty());
  after.products[1].componentsToExtract = {0, 1};
  const Difference difference = compare(before, after);
  ASSERT_EQ(difference.products.size(), 1U);
  EXPECT_EQ(difference.products[0].componentsToExtract.added, std::vector<std::u16string>{u"c"});
}

// Each product is compared with the changes of its own components only. Comparing it with all
// changes would take minutes.
TEST(Difference, OfManyProductsListsEachByItsOwnComponents) {
  constexpr std::size_t kProducts = 40'000;
  const auto makeContents = [](std::int64_t oddSize) {
    Contents contents;
    for (std::size_t number = 0; number != kProducts; ++number) {
      const std::u16string name = output::toUtf16(std::to_string(number));
      const bool isOdd = number % 2 != 0;
      contents.packagesToExtract.push_back({name + u"_p", isOdd ? oddSize : 1, 1});
      contents.components.push_back({name, {}, {number}});
      // Products are not in the order of their components.
      contents.products.push_back({u"P" + name, std::nullopt, {}, {kProducts - 1 - number}});
    }
    return contents;
  };
  const Contents before = makeContents(1);
  const Contents after = makeContents(2);
  const Difference difference = compare(before, after);
  std::vector<std::u16string> products;
  for (const ProductChange& product : difference.products) {
    products.push_back(product.name);
  }
  std::vector<std::u16string> expected;
  for (std::size_t number = 0; number != kProducts; number += 2) {
    expected.push_back(u"P" + output::toUtf16(std::to_string(number)));
  }
  std::sort(expected.begin(), expected.end());
  EXPECT_EQ(products, expected);
  EXPECT_EQ(difference.components.size(), kProducts / 2);
}

}  // namespace
}  // namespace update_metadata_tool::diff
