#include "plan/Plan.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <random>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/Json.h"
#include "support/PlainDocument.h"
#include "support/PlainTotals.h"
#include "support/ToolCases.h"

namespace update_metadata_tool::plan {
namespace {

using test_support::Json;
using test_support::parseJson;
using test_support::PlainDocument;
using test_support::PlainTotals;
using test_support::runOnDocument;

Json expectedPlan(const PlainDocument& document, const std::vector<std::string>& chosen) {
  const PlainTotals plain(document);
  Json expected;
  Json& toDelete = expected["packagesToDelete"] = Json::array();
  for (const auto& [key, sizes] : plain.toDelete(chosen)) {
    toDelete.push_back({{"key", key}, {"size", sizes.size}});
  }
  Json& toExtract = expected["packagesToExtract"] = Json::array();
  for (const auto& [key, sizes] : plain.toExtract(chosen)) {
    toExtract.push_back(
        {{"key", key}, {"size", sizes.size}, {"uncompressedBytes", sizes.uncompressedBytes}});
  }
  std::set<std::string> components[2];  // named by any product, by a chosen one
  for (const std::string& name : plain.products()) {
    const PlainDocument::Product& product = document.products.at(name);
    const bool isChosen = std::find(chosen.begin(), chosen.end(), name) != chosen.end();
    for (const auto& names : {product.toDelete, product.toExtract}) {
      components[false].insert(names.begin(), names.end());
      if (isChosen) {
        components[true].insert(names.begin(), names.end());
      }
    }
  }
  std::map<std::string, Json> files;  // the first planned one of each key
  for (const auto& [component, packages] : document.componentsWithFiles) {
    const bool isPlanned =
        components[true].count(component) != 0 || components[false].count(component) == 0;
    if (!isPlanned) {
      continue;
    }
    for (const auto& [name, package] : packages) {
      const std::string key = component + '_' + name;
      const std::set<std::string> paths(package.files.begin(), package.files.end());
      files.emplace(key, Json{{"key", key}, {"size", package.size}, {"files", paths}});
    }
  }
  Json& toDeleteSingly = expected["filesToDelete"] = Json::array();
  for (const auto& entry : files) {
    toDeleteSingly.push_back(entry.second);
  }
  const PlainTotals::Sums sums = plain.of(chosen);
  expected["totals"] = {{"bytesToFetch", sums.bytesToFetch},
                        {"bytesUnpacked", sums.bytesUnpacked},
                        {"bytesDeleted", sums.bytesDeleted},
                        {"netChange", sums.bytesUnpacked - sums.bytesDeleted},
                        {"peakNeed", sums.bytesToFetch + sums.bytesUnpacked}};
  return expected;
}

Json numbersOf(const Json& planned) {
  Json numbers;
  for (const char* member : {"packagesToDelete", "packagesToExtract", "filesToDelete", "totals"}) {
    numbers[member] = planned[member];
  }
  return numbers;
}

TEST(PlansForRandomDocuments, AgreeWithAPlainComputation) {
  std::mt19937 random(11);
  for (int round = 0; round < 40; ++round) {
    const PlainDocument document = test_support::makeRandomDocument(random);
    const std::vector<std::string> names = PlainTotals(document).products();
    std::string catalogue = "\n";
    std::vector<std::string> chosen;
    std::vector<std::string> options = {"plan", "--format=json"};
    for (std::size_t i = 0; i < names.size(); ++i) {
      catalogue += std::to_string(i) + '\t' + names[i] + '\t' + std::to_string(i) + "\t\n";
      if (random() % 2 == 0) {
        chosen.push_back(names[i]);
        options.push_back("--product=" + std::to_string(i));
      }
    }
    const std::string text = document.json();
    const Json ofAll = parseJson(runOnDocument({"plan", "--format=json"}, text, catalogue).out);
    EXPECT_EQ(numbersOf(ofAll).dump(1), expectedPlan(document, names).dump(1)) << text;
    if (!chosen.empty()) {
      const Json ofSome = parseJson(runOnDocument(options, text, catalogue).out);
      EXPECT_EQ(numbersOf(ofSome).dump(1), expectedPlan(document, chosen).dump(1)) << text;
    }
  }
}

TEST(PlansForRandomDocuments, ContainWhatQueryPrintsForAllProducts) {
  std::mt19937 random(12);
  for (int round = 0; round < 40; ++round) {
    const std::string text = test_support::makeRandomDocument(random).json();
    const Json planned = parseJson(runOnDocument({"plan", "--format=json"}, text, "\n").out);
    const Json answered = parseJson(runOnDocument({"query", "--format=json"}, text).out);

    const auto keysOf = [](const Json& packages) {
      std::set<std::string> keys;
      for (const Json& package : packages) {
        keys.insert(package["key"].get<std::string>());
      }
      return keys;
    };
    const auto unite = [](const Json& keysByBaseCode) {
      std::set<std::string> keys;
      for (const Json& list : keysByBaseCode) {
        keys.insert(list.begin(), list.end());
      }
      return keys;
    };
    EXPECT_EQ(keysOf(planned["packagesToDelete"]), unite(answered["componentsToDelete"]));
    EXPECT_EQ(keysOf(planned["packagesToExtract"]), unite(answered["componentsToExtract"]));

    Json sizes = Json::object();
    for (const Json& package : planned["packagesToExtract"]) {
      sizes[package["key"].get<std::string>()] = {
          {"size", package["size"]}, {"uncompressedBytes", package["uncompressedBytes"]}};
    }
    EXPECT_EQ(sizes, answered["updateSizeForComponentsToExtract"]);

    Json files = Json::object();
    for (const Json& package : planned["filesToDelete"]) {
      files[package["key"].get<std::string>()] = {{"size", package["size"]},
                                                  {"files", package["files"]}};
    }
    EXPECT_EQ(files, answered["componentsWithFilesToDelete"]);
  }
}

}  // namespace
}  // namespace update_metadata_tool::plan
