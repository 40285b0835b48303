#include "summary/ProductData.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/RunTool.h"
#include "support/TemporaryFolder.h"

namespace update_metadata_tool::summary {
namespace {

using test_support::runTool;
using test_support::TemporaryFolder;
using test_support::ToolRun;
using test_support::ToolSurroundings;

std::string noteOn(const std::optional<std::string>& location) {
  std::ostringstream err;
  const bool isNoted = noteMissingProductData(location, err);
  EXPECT_EQ(isNoted, !err.str().empty());
  return err.str();
}

TEST(ProductData, ThatExistNeedNoNote) {
  const TemporaryFolder folder;
  folder.writeFile("data/products.tsv", "");
  folder.writeFile("table", "");
  EXPECT_EQ(noteOn(std::nullopt), "");
  EXPECT_EQ(noteOn(folder.nativePath("data")), "");
  EXPECT_EQ(noteOn(folder.nativePath("table")), "");
}

TEST(ProductData, ThatCannotBeFoundAreNoted) {
  EXPECT_EQ(noteOn("no\nwhere"),
            "update-metadata: note: the product data 'no<U+000A>where' cannot be found, so no "
            "product has a base code; check --product-data\n");
  EXPECT_EQ(noteOn(""),
            "update-metadata: note: the product data '(empty)' cannot be found, so no product has "
            "a base code; check --product-data\n");
}

TEST(ProductData, ThatAreAFolderWithoutATableAreNoted) {
  const TemporaryFolder folder;
  EXPECT_EQ(noteOn(folder.nativePath()),
            "update-metadata: note: the product data '" + folder.nativePath() +
                "' contain no products.tsv, so no product has a base code; check --product-data\n");
}

TEST(ProductData, ThatCannotBeAccessedAreNoted) {
  const TemporaryFolder folder;
  folder.makeLink("circle", "circle");
  folder.makeFolder("data");
  folder.makeLink("data/products.tsv", "products.tsv");
  const auto noted = [](const std::string& location, const std::string& fault) {
    return "update-metadata: note: the product data '" + location + "' " + fault +
           " (Too many levels of symbolic links), so no product has a base code; check "
           "--product-data\n";
  };
  EXPECT_EQ(noteOn(folder.nativePath("circle")),
            noted(folder.nativePath("circle"), "cannot be accessed"));
  EXPECT_EQ(noteOn(folder.nativePath("data")),
            noted(folder.nativePath("data"), "contain a products.tsv that cannot be accessed"));
}

// --- products that the product data do not contain ------------------------------------------

std::string noteOn(const Contents& contents) {
  const TemporaryFolder folder;
  folder.writeFile("products.tsv", "");
  std::ostringstream err;
  noteProductData(folder.nativePath(), {{"up\x1B.json", contents}}, err);
  const std::string text = err.str();
  return text.substr(std::min(text.find("' "), text.size()));
}

Contents makeContents(std::size_t products) {
  Contents contents;
  contents.products.resize(products);
  return contents;
}

TEST(UnknownProducts, AreNotedIfTheProductDataContainNone) {
  EXPECT_EQ(noteOn(makeContents(3)),
            "' contain none of the 3 products of 'up<U+001B>.json'; check --product-data\n");
  EXPECT_EQ(noteOn(makeContents(1)),
            "' do not contain the only product of 'up<U+001B>.json'; check --product-data\n");
}

TEST(UnknownProducts, AreNotNotedIfTheProductDataContainOne) {
  Contents contents = makeContents(3);
  contents.products[1].baseCode = u"CODE";
  EXPECT_EQ(noteOn(contents), "");
}

TEST(UnknownProducts, AreNotNotedForADocumentWithoutProducts) {
  EXPECT_EQ(noteOn(Contents()), "");
}

TEST(UnknownProducts, AreNotNotedWithoutProductData) {
  std::ostringstream err;
  noteProductData(std::nullopt, {{"update.json", makeContents(3)}}, err);
  EXPECT_EQ(err.str(), "");
}

// --- every command --------------------------------------------------------------------------

struct Use {
  const char* name;
  std::vector<std::string> arguments;
  std::string noteOnEmpty;  ///< the note on product data without products
};

std::ostream& operator<<(std::ostream& out, const Use& row) {
  return out << row.name;
}

class MissingProductData : public ::testing::TestWithParam<Use> {};

// Except for the notes, a command prints the same as for product data without products.
TEST_P(MissingProductData, AreNotedByEveryCommand) {
  const TemporaryFolder folder;
  folder.writeFile(
      "update.json",
      R"({"metadata":{"arch":"x","base":null,"target":null},)"
      R"("components":{"c":{"delete":{},"extract":{"e":{"size":1,"uncompressedBytes":1}}}},)"
      R"("products":{"p":{"delete":[],"extract":["c"]}},"componentsWithFilesDeleted":{}})");
  ToolSurroundings around;
  around.folder = folder.nativePath();
  std::vector<std::string> arguments = GetParam().arguments;
  arguments.insert(arguments.end(), {"--product-data", "none"});
  const ToolRun missing = runTool(arguments, around);
  folder.writeFile("none/products.tsv", "\n");
  ToolRun empty = runTool(arguments, around);
  EXPECT_EQ(empty.err, GetParam().noteOnEmpty);
  empty.err =
      "update-metadata: note: the product data 'none' cannot be found, so no product has a base "
      "code; check --product-data\n";
  EXPECT_EQ(missing, empty);
}

const std::string kUnknown =
    "update-metadata: note: the product data 'none' do not contain the only product of "
    "'update.json'; check --product-data\n";

const Use kUses[] = {
    {"Query", {"query", "update.json", "--format=json"}, ""},
    {"Show", {"show", "update.json"}, kUnknown},
    {"ShowForPrograms", {"show", "update.json", "--format=json"}, kUnknown},
    {"Plan", {"plan", "update.json"}, kUnknown},
    {"Diff", {"diff", "update.json", "update.json"}, kUnknown + kUnknown},
    {"Report", {"report", "update.json", "-o", "-"}, kUnknown},
    {"Why", {"why", "c_e", "update.json"}, kUnknown},
    {"WhyForPrograms", {"why", "c_e", "update.json", "--format=json"}, kUnknown},
    {"List", {"list", "update.json"}, kUnknown},
    {"ListWithSeveralProcesses",
     {"list", "update.json", "update.json", "--jobs=2"},
     kUnknown + kUnknown},
    {"Lint", {"lint", "update.json"}, ""},
};
INSTANTIATE_TEST_SUITE_P(Commands, MissingProductData, ::testing::ValuesIn(kUses),
                         [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace update_metadata_tool::summary
