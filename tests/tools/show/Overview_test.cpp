#include "show/Overview.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "support/Json.h"
#include "support/PlainDocument.h"
#include "support/PlainTotals.h"
#include "support/ToolCases.h"

namespace update_metadata_tool::show {
namespace {

using test_support::Json;
using test_support::parseJson;
using test_support::PlainDocument;
using test_support::PlainTotals;
using test_support::runOnDocument;

// The summary of a document, as JSON.
Json summarize(const std::string& document, std::vector<std::string> options) {
  options.insert(options.begin(), {"show", "--format=json"});
  return parseJson(runOnDocument(options, document).out);
}

Json toJson(const PlainTotals::Sums& sums) {
  return {{"components", sums.components},
          {"packagesToDelete", sums.packagesToDelete},
          {"packagesToExtract", sums.packagesToExtract},
          {"bytesToFetch", sums.bytesToFetch},
          {"bytesUnpacked", sums.bytesUnpacked},
          {"bytesDeleted", sums.bytesDeleted}};
}

// The number of packages that several products name.
std::size_t countShared(const PlainTotals& plain, bool isDeleted) {
  std::map<std::string, int> products;
  for (const std::string& product : plain.products()) {
    for (const auto& entry : isDeleted ? plain.toDelete({product}) : plain.toExtract({product})) {
      ++products[entry.first];
    }
  }
  return static_cast<std::size_t>(std::count_if(
      products.begin(), products.end(), [](const auto& entry) { return entry.second > 1; }));
}

// The members with numbers, computed from the plain tables.
Json expectedNumbers(const PlainDocument& document) {
  const PlainTotals plain(document);
  Json expected;
  expected["totals"] = toJson(plain.of(plain.products()));
  expected["totals"]["filesToDelete"] = plain.files();
  expected["sharedPackages"] = {{"toDelete", countShared(plain, true)},
                                {"toExtract", countShared(plain, false)}};
  std::set<std::string> keys;
  for (const auto& [component, packages] : document.componentsWithFiles) {
    for (const auto& entry : packages) {
      keys.insert(component + '_' + entry.first);
    }
  }
  expected["packagesWithFiles"] = keys.size();
  expected["products"] = Json::array();
  for (const std::string& name : plain.products()) {
    Json product = {{"name", name}, {"baseCode", nullptr}};
    product.update(toJson(plain.of({name})));
    expected["products"].push_back(std::move(product));
  }
  Json& packages = expected["largestPackages"] = Json::array();
  for (const auto& [key, sizes] : plain.toDelete(plain.products())) {
    packages.push_back({{"key", key}, {"action", "delete"}, {"size", sizes.size}});
  }
  for (const auto& [key, sizes] : plain.toExtract(plain.products())) {
    packages.push_back({{"key", key},
                        {"action", "extract"},
                        {"size", sizes.size},
                        {"uncompressedBytes", sizes.uncompressedBytes}});
  }
  const auto precedes = [](const Json& left, const Json& right) {
    return left["key"] != right["key"] ? left["key"] < right["key"] : left["size"] > right["size"];
  };
  std::sort(packages.begin(), packages.end(), precedes);
  return expected;
}

TEST(OverviewOfRandomDocuments, AgreesWithAPlainComputation) {
  std::mt19937 random(7);
  for (int round = 0; round < 50; ++round) {
    const PlainDocument document = test_support::makeRandomDocument(random);
    const Json shown = summarize(document.json(), {"--sort=name", "--top=1000"});
    Json numbers;
    for (const char* member :
         {"totals", "sharedPackages", "packagesWithFiles", "products", "largestPackages"}) {
      numbers[member] = shown[member];
    }
    EXPECT_EQ(numbers.dump(1), expectedNumbers(document).dump(1)) << document.json();
  }
}

TEST(OverviewOfRandomDocuments, IsOrderedBySizeOrByName) {
  std::mt19937 random(8);
  for (int round = 0; round < 20; ++round) {
    const std::string text = test_support::makeRandomDocument(random).json();
    const Json bySize = summarize(text, {"--top=3"});
    const Json all = summarize(text, {"--top=1000"});
    const Json byName = summarize(text, {"--top=3", "--sort=name"});
    for (const char* rows : {"products", "largestComponents"}) {
      EXPECT_TRUE(std::is_sorted(all[rows].begin(), all[rows].end(),
                                 [](const Json& left, const Json& right) {
                                   return left["bytesToFetch"] > right["bytesToFetch"];
                                 }))
          << all[rows];
      EXPECT_TRUE(std::is_sorted(
          byName[rows].begin(), byName[rows].end(),
          [](const Json& left, const Json& right) { return left["name"] < right["name"]; }))
          << byName[rows];
    }
    for (const char* rows : {"largestComponents", "largestPackages"}) {
      const auto top = static_cast<std::ptrdiff_t>(std::min<std::size_t>(3, all[rows].size()));
      EXPECT_EQ(bySize[rows], Json(Json::array_t(all[rows].begin(), all[rows].begin() + top)));
      Json kept = byName[rows];
      EXPECT_TRUE(
          std::is_permutation(kept.begin(), kept.end(), bySize[rows].begin(), bySize[rows].end()));
    }
  }
}

}  // namespace
}  // namespace update_metadata_tool::show
