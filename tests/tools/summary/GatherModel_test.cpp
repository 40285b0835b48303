#include "summary/GatherModel.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <random>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "install/update_metadata_parser/UpdateMetaData.h"
#include "install/update_metadata_parser/UpdateMetaDataJsonParser.h"
#include "output/Text.h"
#include "summary/Document.h"
#include "support/PlainDocument.h"
#include "support/TemporaryFolder.h"

namespace update_metadata_tool::summary {
namespace {

using install::update_metadata_parser::UpdateMetaDataJsonParser;
using output::toUtf8;
using test_support::PlainDocument;
using test_support::TemporaryFolder;

void writePackages(const std::vector<std::size_t>& numbers, const std::vector<Package>& packages,
                   const Component& component, const char* verb, std::ostream& out) {
  for (const std::size_t number : numbers) {
    const Package& package = packages[number];
    out << "    " << verb << ' ' << toUtf8(package.key.substr(component.name.size() + 1)) << " as #"
        << number << ": " << package.size << ", " << package.uncompressedBytes << '\n';
  }
}

void writeKeys(const char* title, const std::vector<Package>& packages, std::ostream& out) {
  out << title << ':';
  for (const Package& package : packages) {
    out << ' ' << toUtf8(package.key);
  }
  out << '\n';
}

void writeComponents(const char* verb, const std::vector<std::size_t>& numbers, std::ostream& out) {
  out << "; " << verb;
  for (const std::size_t number : numbers) {
    out << ' ' << number;
  }
}

void writePackagesWithFiles(const char* begin, const std::vector<PackageWithFiles>& packages,
                            std::ostream& out) {
  for (const PackageWithFiles& package : packages) {
    out << begin << toUtf8(package.key) << ", " << package.size << ':';
    for (const std::u16string& file : package.files) {
      out << ' ' << toUtf8(file);
    }
    out << '\n';
  }
}

std::string toText(const Contents& contents) {
  std::ostringstream out;
  const auto write = [&out](const Release& release) {
    const bool isNone = release.family.empty() && release.version.empty();
    out << (isNone ? "none" : toUtf8(release.family) + ", version " + toUtf8(release.version));
  };
  write(contents.base);
  out << " to ";
  write(contents.target);
  out << ", level " << contents.targetUpdateLevel << ", for " << toUtf8(contents.architecture)
      << '\n';
  writeKeys("to delete", contents.packagesToDelete, out);
  writeKeys("to extract", contents.packagesToExtract, out);
  for (const Component& component : contents.components) {
    out << "  component " << toUtf8(component.name) << '\n';
    writePackages(component.packagesToDelete, contents.packagesToDelete, component, "delete", out);
    writePackages(component.packagesToExtract, contents.packagesToExtract, component, "extract",
                  out);
  }
  for (const Product& product : contents.products) {
    out << "  product " << toUtf8(product.name) << " ("
        << toUtf8(product.baseCode.value_or(u"no code")) << ')';
    writeComponents("deletes", product.componentsToDelete, out);
    writeComponents("extracts", product.componentsToExtract, out);
    out << '\n';
  }
  for (const ComponentWithFiles& component : contents.componentsWithFiles) {
    out << "  files of " << toUtf8(component.name) << '\n';
    writePackagesWithFiles("    ", component.packages, out);
    writePackagesWithFiles("    repeated ", component.repeatedPackages, out);
  }
  return out.str();
}

std::string readAsText(const std::string& text, const std::string& products = "") {
  const TemporaryFolder folder;
  DocumentSource source = {folder.writeFile("update.json", text), std::nullopt};
  if (!products.empty()) {
    source.productData = folder.writeFile("products.tsv", products);
  }
  return toText(Document(source).gatherContents());
}

TEST(ContentsOfADocument, ListSharedComponentsOnceAndPackagesInModelOrder) {
  PlainDocument document;
  document.components["core"] = {{{"old", {5, 0}}}, {{"engine", {10, 20}}, {"fonts", {30, 40}}}};
  document.components["view"] = {{}, {{"show", {7, 8}}}};
  document.products["Editor"] = {{"core"}, {"core"}};
  document.products["Viewer"] = {{}, {"view", "core", "view", "unknown"}};
  document.componentsWithFiles["core"]["manual"] = {9, {"b", "a", "b"}};
  EXPECT_EQ(readAsText(document.json(), "\nED\tEditor\t1\t\n"),
            "Old, version 1 to New, version 2, level 3, for x86_64\n"
            "to delete: core_old\n"
            "to extract: core_engine core_fonts view_show\n"
            "  component core\n"
            "    delete old as #0: 5, 0\n"
            "    extract engine as #0: 10, 20\n"
            "    extract fonts as #1: 30, 40\n"
            "  component view\n"
            "    extract show as #2: 7, 8\n"
            "  component unknown\n"
            "  product Editor (ED); deletes 0; extracts 0\n"
            "  product Viewer (no code); deletes; extracts 1 0 2\n"
            "  files of core\n"
            "    core_manual, 9: a b\n");
}

TEST(ContentsOfADocument, GiveEveryProductTheFirstPackageWithAKey) {
  PlainDocument document;
  document.components["a"] = {{{"b_c", {1, 0}}}, {{"b_c", {2, 3}}}};
  document.components["a_b"] = {{{"c", {4, 0}}}, {{"c", {5, 6}}, {"d", {7, 8}}}};
  document.products["1"] = {{"a_b"}, {"a"}};
  document.products["2"] = {{"a"}, {"a_b"}};
  document.componentsWithFiles["a"]["b_c"] = {1, {"kept"}};
  document.componentsWithFiles["a_b"]["c"] = {2, {"aside"}};
  EXPECT_EQ(readAsText(document.json()),
            "Old, version 1 to New, version 2, level 3, for x86_64\n"
            "to delete: a_b_c\n"
            "to extract: a_b_c a_b_d\n"
            "  component a_b\n"
            "    delete c as #0: 4, 0\n"
            "    extract c as #0: 2, 3\n"
            "    extract d as #1: 7, 8\n"
            "  component a\n"
            "    delete b_c as #0: 4, 0\n"
            "    extract b_c as #0: 2, 3\n"
            "  product 1 (no code); deletes 0; extracts 1\n"
            "  product 2 (no code); deletes 1; extracts 0\n"
            "  files of a\n"
            "    a_b_c, 1: kept\n"
            "  files of a_b\n"
            "    repeated a_b_c, 2: aside\n");
}

// Two malformed names become equal when they are converted.
TEST(ContentsOfADocument, KeepOneOfTwoPackagesWhoseNamesDecodeAlike) {
  PlainDocument document;
  document.components["c"] = {{}, {{"\xFE", {1, 2}}, {"\xFF", {3, 4}}}};
  document.products["p"] = {{}, {"c"}};
  EXPECT_EQ(readAsText(document.json()),
            "Old, version 1 to New, version 2, level 3, for x86_64\n"
            "to delete:\n"
            "to extract: c_\xEF\xBF\xBD\n"
            "  component c\n"
            "    extract \xEF\xBF\xBD as #0: 1, 2\n"
            "  product p (no code); deletes; extracts 0\n");
}

TEST(ContentsOfADocument, AreEmptyForAnEmptyDocument) {
  EXPECT_EQ(readAsText(R"({"metadata":{"arch":"","base":null,"target":null},"components":null,)"
                       R"("products":null,"componentsWithFilesDeleted":null})"),
            "none to none, level 0, for \nto delete:\nto extract:\n");
}

std::set<std::u16string> keysOf(const Contents& contents, const Product& product,
                                std::vector<std::size_t> Product::*components,
                                std::vector<std::size_t> Component::*numbers,
                                const std::vector<Package>& packages) {
  std::set<std::u16string> keys;
  for (const std::size_t component : product.*components) {
    for (const std::size_t number : contents.components[component].*numbers) {
      keys.insert(packages[number].key);
    }
  }
  return keys;
}

void insertUnlessEmpty(std::map<std::u16string, std::set<std::u16string>>& keysByCode,
                       const std::u16string& code, std::set<std::u16string> keys) {
  if (!keys.empty()) {
    keysByCode.try_emplace(code, std::move(keys));
  }
}

TEST(ContentsOfRandomDocuments, AgreeWithTheLibrarysQueries) {
  std::mt19937 random(20240916);
  const TemporaryFolder folder;
  // Some of the products share a code, some have none.
  const std::u16string productData = folder.writeFile(
      "products.tsv",
      "\nA\tProduct a\t1\t\nA\tProduct a_b\t2\t\nB\tProduct b\t3\t\nC\tProduct \t4\t");
  for (int round = 0; round < 500; ++round) {
    const std::string text = test_support::makeRandomDocument(random).json();
    const std::u16string file = folder.writeFile("update.json", text);
    const auto update = UpdateMetaDataJsonParser(file).parseUpdateMetaDataJson();
    const Contents contents = Document({file, productData}).gatherContents();

    std::map<std::u16string, std::set<std::u16string>> toDelete;
    std::map<std::u16string, std::set<std::u16string>> toExtract;
    for (const Product& product : contents.products) {
      const std::u16string code = product.baseCode.value_or(std::u16string());
      insertUnlessEmpty(toDelete, code,
                        keysOf(contents, product, &Product::componentsToDelete,
                               &Component::packagesToDelete, contents.packagesToDelete));
      insertUnlessEmpty(toExtract, code,
                        keysOf(contents, product, &Product::componentsToExtract,
                               &Component::packagesToExtract, contents.packagesToExtract));
    }
    std::map<std::u16string, std::pair<std::int64_t, std::int64_t>> sizes;
    for (const Package& package : contents.packagesToExtract) {
      sizes.emplace(package.key, std::pair(package.size, package.uncompressedBytes));
    }
    std::map<std::u16string, std::pair<std::set<std::u16string>, std::int64_t>> files;
    for (const ComponentWithFiles& component : contents.componentsWithFiles) {
      for (const PackageWithFiles& package : component.packages) {
        const std::set<std::u16string> paths(package.files.begin(), package.files.end());
        EXPECT_TRUE(std::is_sorted(package.files.begin(), package.files.end()));
        EXPECT_EQ(paths.size(), package.files.size());
        EXPECT_TRUE(files.emplace(package.key, std::pair(paths, package.size)).second);
      }
    }
    EXPECT_EQ(toDelete, update->getComponentsToDelete(productData)) << text;
    EXPECT_EQ(toExtract, update->getComponentsToExtract(productData)) << text;
    EXPECT_EQ(sizes, update->getUpdateSizeForComponentsToExtract()) << text;
    EXPECT_EQ(files, update->getComponentsWithFilesToDelete()) << text;
  }
}

}  // namespace
}  // namespace update_metadata_tool::summary
