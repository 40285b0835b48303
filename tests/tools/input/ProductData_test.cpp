#include "input/ProductData.h"

#include <optional>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/RunTool.h"
#include "support/TemporaryFolder.h"

namespace update_metadata_tool::input {
namespace {

using test_support::runTool;
using test_support::TemporaryFolder;
using test_support::ToolRun;
using test_support::ToolSurroundings;

std::string noteOn(const std::optional<std::string>& location) {
  std::ostringstream err;
  noteMissingProductData(location, err);
  return err.str();
}

TEST(ProductData, ThatAreThereNeedNoNote) {
  const TemporaryFolder folder;
  folder.writeFile("data/products.tsv", "");
  folder.writeFile("table", "");
  EXPECT_EQ(noteOn(std::nullopt), "");
  EXPECT_EQ(noteOn(folder.nativePath("data")), "");
  EXPECT_EQ(noteOn(folder.nativePath("table")), "");
}

TEST(ProductData, ThatAreNotThereAreNoted) {
  EXPECT_EQ(noteOn("no\nwhere"),
            "update-metadata: note: the product data 'no<U+000A>where' are not there, so no "
            "product has a base code; check --product-data\n");
  EXPECT_EQ(noteOn(""),
            "update-metadata: note: the product data '(empty)' are not there, so no product has a "
            "base code; check --product-data\n");
}

TEST(ProductData, ThatAreAFolderWithoutATableAreNoted) {
  const TemporaryFolder folder;
  EXPECT_EQ(noteOn(folder.nativePath()),
            "update-metadata: note: the product data '" + folder.nativePath() +
                "' hold no products.tsv, so no product has a base code; check --product-data\n");
}

TEST(ProductData, ThatTheSystemHidesAreNotedAsSuch) {
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
            noted(folder.nativePath("circle"), "cannot be looked at"));
  EXPECT_EQ(noteOn(folder.nativePath("data")),
            noted(folder.nativePath("data"), "hold a products.tsv that cannot be looked at"));
}

struct Use {
  const char* name;
  std::vector<std::string> arguments;
  std::string noteOnEmpty;  ///< what is noted of product data without a product
};

std::ostream& operator<<(std::ostream& out, const Use& row) {
  return out << row.name;
}

class MissingProductData : public ::testing::TestWithParam<Use> {};

// But for the notes, a command tells the same of product data without a product.
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
      "update-metadata: note: the product data 'none' are not there, so no product has a base "
      "code; check --product-data\n";
  EXPECT_EQ(missing, empty);
}

const std::string kUnknown =
    "update-metadata: note: the product data 'none' do not know the only product of 'update.json'; "
    "check --product-data\n";

const Use kUses[] = {
    {"Query", {"query", "update.json", "--format=json"}, ""},
    {"Show", {"show", "update.json"}, kUnknown},
    {"ShowForPrograms", {"show", "update.json", "--format=json"}, kUnknown},
    {"Plan", {"plan", "update.json"}, kUnknown},
    {"Diff", {"diff", "update.json", "update.json"}, kUnknown + kUnknown},
    {"Report", {"report", "update.json", "-o", "-"}, kUnknown},
    {"Lint", {"lint", "update.json"}, ""},
};
INSTANTIATE_TEST_SUITE_P(Commands, MissingProductData, ::testing::ValuesIn(kUses),
                         [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace update_metadata_tool::input
