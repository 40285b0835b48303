#include <cstdint>
#include <map>
#include <optional>
#include <random>
#include <sstream>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "diff/Difference.h"
#include "diff/JsonOutput.h"
#include "output/Text.h"
#include "support/PlainContents.h"
#include "support/PlainDocument.h"

namespace update_metadata_tool::diff {
namespace {

using summary::ByteSum;
using summary::Contents;
using test_support::contentsOf;
using test_support::makeRandomDocument;
using test_support::PlainDocument;

// The sizes of packages to extract by key, where the first package with a key counts.
std::map<std::string, std::pair<std::int64_t, std::int64_t>> extractedBy(
    const PlainDocument& document) {
  std::map<std::string, std::pair<std::int64_t, std::int64_t>> packages;
  for (const auto& product : document.products) {
    for (const std::string& name : product.second.toExtract) {
      const auto component = document.components.find(name);
      if (component == document.components.end()) {
        continue;
      }
      for (const auto& [package, sizes] : component->second.toExtract) {
        packages.emplace(name + '_' + package, std::pair(sizes.size, sizes.uncompressedBytes));
      }
    }
  }
  return packages;
}

std::string jsonOf(const Difference& difference) {
  std::ostringstream out;
  writeJson(difference, std::nullopt, out);
  return out.str();
}

TEST(DifferenceOfRandomDocuments, IsEmptyForADocumentAndItself) {
  std::mt19937 random(3);
  for (int round = 0; round != 300; ++round) {
    const Contents contents = contentsOf(makeRandomDocument(random));
    EXPECT_TRUE(compare(contents, contents).isEmpty());
  }
}

TEST(DifferenceOfRandomDocuments, ListsEveryPackageThatDiffersAndAddsUpToTheTotals) {
  std::mt19937 random(4);
  for (int round = 0; round != 300; ++round) {
    const PlainDocument old = makeRandomDocument(random);
    const PlainDocument recent = makeRandomDocument(random);
    const Difference difference = compare(contentsOf(old), contentsOf(recent));
    const auto before = extractedBy(old);
    const auto after = extractedBy(recent);
    std::map<std::string, int> expected;
    for (const auto& [key, sizes] : before) {
      const auto found = after.find(key);
      if (found == after.end() || found->second != sizes) {
        ++expected[key];
      }
    }
    for (const auto& entry : after) {
      expected[entry.first] += before.count(entry.first) == 0 ? 1 : 0;
    }
    std::map<std::string, int> listed;
    ByteSum fetch;
    ByteSum unpacked;
    for (const PackageChange& package : difference.packagesToExtract) {
      ++listed[output::toUtf8(package.key)];
      const PackageSizes none;
      fetch +=
          ByteSum(package.after.value_or(none).size) - ByteSum(package.before.value_or(none).size);
      unpacked += ByteSum(package.after.value_or(none).uncompressedBytes) -
                  ByteSum(package.before.value_or(none).uncompressedBytes);
    }
    for (const auto& entry : after) {
      listed[entry.first] += 0;  // equal on both sides, so in none of the lists
    }
    EXPECT_EQ(listed, expected);
    const Sides<summary::Totals>& totals = difference.totals;
    EXPECT_EQ(fetch, totals.after.bytesToFetch - totals.before.bytesToFetch);
    EXPECT_EQ(unpacked, totals.after.bytesUnpacked - totals.before.bytesUnpacked);
  }
}

TEST(DifferenceOfRandomDocuments, IsSymmetric) {
  std::mt19937 random(5);
  for (int round = 0; round != 300; ++round) {
    const Contents one = contentsOf(makeRandomDocument(random));
    const Contents other = contentsOf(makeRandomDocument(random));
    Difference there = compare(one, other);
    const Difference back = compare(other, one);
    const auto exchange = [](auto& items) {
      for (auto& item : items) {
        std::swap(item.before, item.after);
      }
    };
    exchange(there.products);
    exchange(there.components);
    exchange(there.packagesToDelete);
    exchange(there.packagesToExtract);
    exchange(there.packagesWithFiles);
    std::swap(there.totals.before, there.totals.after);
    std::swap(there.filesToDelete.before, there.filesToDelete.after);
    for (ProductChange& product : there.products) {
      std::swap(product.componentsToDelete.added, product.componentsToDelete.removed);
      std::swap(product.componentsToExtract.added, product.componentsToExtract.removed);
    }
    for (FilesChange& package : there.packagesWithFiles) {
      std::swap(package.files.added, package.files.removed);
    }
    EXPECT_EQ(jsonOf(there), jsonOf(back));
  }
}

}  // namespace
}  // namespace update_metadata_tool::diff
