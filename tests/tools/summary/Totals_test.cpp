#include "summary/Totals.h"

#include <cstdint>
#include <limits>
#include <map>
#include <optional>
#include <ostream>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "Text.h"
#include "summary/Document.h"
#include "support/PlainDocument.h"
#include "support/TemporaryFolder.h"

namespace update_metadata_tool {

static std::ostream& operator<<(std::ostream& out, const ByteSum& sum) {
  const std::optional<std::int64_t> value = sum.value();
  return value ? out << *value : out << "(too large)";
}

static bool operator==(const Totals& left, const Totals& right) {
  return left.components == right.components && left.packagesToDelete == right.packagesToDelete &&
         left.packagesToExtract == right.packagesToExtract &&
         left.bytesToFetch == right.bytesToFetch && left.bytesUnpacked == right.bytesUnpacked &&
         left.bytesDeleted == right.bytesDeleted;
}

static std::ostream& operator<<(std::ostream& out, const Totals& totals) {
  return out << totals.components << " components, " << totals.packagesToDelete << " to delete, "
             << totals.packagesToExtract << " to extract, fetch " << totals.bytesToFetch
             << ", unpacked " << totals.bytesUnpacked << ", deleted " << totals.bytesDeleted;
}

namespace {

using test_support::PlainDocument;
using test_support::TemporaryFolder;

Contents contentsOf(const PlainDocument& document) {
  const TemporaryFolder folder;
  return Document({folder.writeFile("update.json", document.json()), std::nullopt})
      .gatherContents();
}

// --- single properties ----------------------------------------------------------------------

TEST(TotalsOfADocument, CountWhatTwoProductsShareOnce) {
  PlainDocument document;
  document.components["core"] = {{{"old", {5, 0}}}, {{"engine", {10, 20}}}};
  document.components["view"] = {{{"old", {1, 0}}}, {{"show", {7, 8}}}};
  document.products["Editor"] = {{"core"}, {"core"}};
  document.products["Viewer"] = {{"core", "view"}, {"core", "core", "view"}};
  const Contents contents = contentsOf(document);
  Tally tally(contents);
  const Totals editor{1, 1, 1, ByteSum(10), ByteSum(20), ByteSum(5)};
  const Totals both{2, 2, 2, ByteSum(17), ByteSum(28), ByteSum(6)};
  EXPECT_EQ(tally.totalsOfProduct(0), editor);
  EXPECT_EQ(tally.totalsOfProduct(1), both);
  EXPECT_EQ(tally.totalsOfProduct(0), editor) << "asked again";
  EXPECT_EQ(tally.totalsOf(tally.select({1, 0, 1})), both);
  EXPECT_EQ(tally.totalsOfAll(), both);
  EXPECT_EQ(tally.totalsOfComponent(0), editor);
  EXPECT_EQ(both.netChange(), ByteSum(22));
  EXPECT_EQ(both.peakNeed(), ByteSum(45));
}

TEST(TotalsOfADocument, AreExactBeyondSixtyFourBits) {
  constexpr std::int64_t kMin = std::numeric_limits<std::int64_t>::min();
  Contents contents;
  contents.packagesToExtract = {{u"c_1", kMin, kMin}, {u"c_2", kMin, 1}};
  contents.packagesToDelete = {{u"c_3", kMin, 0}};
  const Totals totals = Tally(contents).totalsOfAll();
  EXPECT_EQ(totals.bytesToFetch.value(), std::nullopt);
  EXPECT_EQ(totals.bytesUnpacked.value(), kMin + 1);
  EXPECT_EQ(totals.netChange().value(), 1);
  EXPECT_EQ(totals.peakNeed().value(), std::nullopt);
}

TEST(TotalsOfADocument, AreZeroWithoutProducts) {
  const Contents contents;
  EXPECT_EQ(Tally(contents).totalsOfAll(), Totals());
  EXPECT_EQ(countFilesToDelete(contents), 0U);
}

// --- made-up documents against a plain computation -------------------------------------------

/// Adds up from the plain tables what some products name, with sets and maps and nothing else.
class PlainTotals {
 public:
  explicit PlainTotals(const PlainDocument& document) : document_(document) {
    for (const auto& [name, product] : document.products) {
      forEachPackage(product, [&](bool toDelete, const std::string& key, auto sizes) {
        sizes_[toDelete].emplace(key, sizes);
      });
    }
  }

  Totals of(const std::vector<std::string>& products) const {
    std::set<std::string> components;
    std::set<std::string> keys[2];
    for (const std::string& name : products) {
      const PlainDocument::Product& product = document_.products.at(name);
      components.insert(product.toDelete.begin(), product.toDelete.end());
      components.insert(product.toExtract.begin(), product.toExtract.end());
      forEachPackage(product, [&](bool toDelete, const std::string& key, auto /*sizes*/) {
        keys[toDelete].insert(key);
      });
    }
    std::int64_t fetch = 0;
    std::int64_t unpacked = 0;
    std::int64_t deleted = 0;
    for (const std::string& key : keys[false]) {
      fetch += sizes_[false].at(key).size;
      unpacked += sizes_[false].at(key).uncompressedBytes;
    }
    for (const std::string& key : keys[true]) {
      deleted += sizes_[true].at(key).size;
    }
    return {components.size(), keys[true].size(), keys[false].size(),
            ByteSum(fetch),    ByteSum(unpacked), ByteSum(deleted)};
  }

  std::size_t files() const {
    std::map<std::string, std::size_t> filesByKey;
    for (const auto& [component, packages] : document_.componentsWithFiles) {
      for (const auto& [name, package] : packages) {
        const std::set<std::string> paths(package.files.begin(), package.files.end());
        filesByKey.emplace(component + '_' + name, paths.size());
      }
    }
    std::size_t count = 0;
    for (const auto& entry : filesByKey) {
      count += entry.second;
    }
    return count;
  }

 private:
  template <class Visit>
  void forEachPackage(const PlainDocument::Product& product, Visit visit) const {
    for (const bool toDelete : {true, false}) {
      for (const std::string& name : toDelete ? product.toDelete : product.toExtract) {
        const auto found = document_.components.find(name);
        if (found != document_.components.end()) {
          const auto& packages = toDelete ? found->second.toDelete : found->second.toExtract;
          for (const auto& [package, sizes] : packages) {
            visit(toDelete, name + '_' + package, sizes);
          }
        }
      }
    }
  }

  const PlainDocument& document_;
  std::map<std::string, PlainDocument::Sizes> sizes_[2];  // to extract, to delete
};

TEST(TotalsOfMadeUpDocuments, AgreeWithAPlainComputation) {
  std::mt19937 random(19970304);
  for (int round = 0; round < 500; ++round) {
    const PlainDocument document = test_support::makeRandomDocument(random);
    const PlainTotals plain(document);
    const Contents contents = contentsOf(document);
    Tally tally(contents);
    std::vector<std::string> names;
    std::vector<std::size_t> numbers;
    for (std::size_t i = 0; i < contents.products.size(); ++i) {
      const std::string name = toUtf8(contents.products[i].name);
      EXPECT_EQ(tally.totalsOfProduct(i), plain.of({name})) << document.json();
      names.push_back(name);
      numbers.push_back(i);
      EXPECT_EQ(tally.totalsOf(tally.select(numbers)), plain.of(names)) << document.json();
    }
    EXPECT_EQ(tally.totalsOfAll(), plain.of(names)) << document.json();
    EXPECT_EQ(countFilesToDelete(contents), plain.files()) << document.json();
  }
}

}  // namespace
}  // namespace update_metadata_tool
