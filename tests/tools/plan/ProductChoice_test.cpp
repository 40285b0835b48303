#include "plan/ProductChoice.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/PlainDocument.h"
#include "support/RunTool.h"
#include "support/TemporaryFolder.h"

namespace update_metadata_tool::plan {
namespace {

using test_support::PlainDocument;
using test_support::runTool;
using test_support::TemporaryFolder;
using test_support::ToolRun;
using test_support::ToolSurroundings;

/// A document with four products, one of which the product data do not contain.
class PlanFailure : public ::testing::Test {
 protected:
  PlanFailure() {
    PlainDocument document;
    document.components["c"] = {{}, {{"e", {1, 2}}}};
    document.products["Editor"] = {{}, {"c"}};
    document.products["Viewer"] = {{}, {"c"}};
    document.products["Viewer Light"] = {{}, {"c"}};
    document.products["Unknown"] = {{}, {"c"}};
    writeDocument(document);
    folder_.writeFile("products.tsv",
                      "\nED\tEditor\t1\t\nVI\tViewer\t2\t\nVI\tViewer Light\t3\t\n"
                      "PR\tPrinter\t4\t\n");
    folder_.makeFolder("empty");
    around_.folder = folder_.nativePath();
    around_.environment = {"COLUMNS=80"};
  }

  void writeDocument(const PlainDocument& document) const {
    folder_.writeFile("update.json", document.json());
  }

  ToolRun plan(std::vector<std::string> options, const std::string& productData = ".") const {
    options.insert(options.begin(), {"plan", "update.json", "--product-data", productData});
    return runTool(options, around_);
  }

  TemporaryFolder folder_;
  ToolSurroundings around_;
};

TEST_F(PlanFailure, OfAnUnknownProductListsTheNearestOnes) {
  const std::string advice = "Name another with --product; the nearest in the document: ";
  EXPECT_EQ(plan({"--product", "vi2"}),
            (ToolRun{2, "",
                     "update-metadata: 'update.json' has no product with the base code 'vi2'\n" +
                         advice + "VI (Viewer), ED (Editor)\n"}));
  EXPECT_EQ(plan({"--product", "ED", "--product", "editr"}),
            (ToolRun{2, "",
                     "update-metadata: 'update.json' has no product with the base code 'editr'\n" +
                         advice + "ED (Editor), VI (Viewer)\n"}));
  EXPECT_EQ(
      plan({"--product", ""}),
      (ToolRun{2, "",
               "update-metadata: 'update.json' has no product with the base code '(empty)'\n" +
                   advice + "ED (Editor), VI (Viewer)\n"}));
}

TEST_F(PlanFailure, OfAProductThatIsNotInTheDocumentPrintsItsName) {
  EXPECT_EQ(plan({"--product", "PR"}),
            (ToolRun{2, "",
                     "update-metadata: 'update.json' has no product with the base code 'PR', which "
                     "belongs to 'Printer'\n"
                     "Name another with --product; the nearest in the document: ED (Editor), "
                     "VI (Viewer)\n"}));
}

TEST_F(PlanFailure, OfAProductSaysThatTheProductDataContainNone) {
  EXPECT_EQ(plan({"--product", "ED"}, "empty"),
            (ToolRun{2, "",
                     "update-metadata: 'update.json' has no product with the base code 'ED'\n"
                     "The product data at 'empty' contain none of its products: check "
                     "--product-data, or omit --product to plan for all products\n"}));
}

TEST_F(PlanFailure, OfALongNameShowsAndComparesItsBeginning) {
  const std::string longName(400'000, 'n');
  const std::string character = "\xF0\x9F\x98\x80";  // two units
  PlainDocument document;
  document.products["Editor"] = {{}, {"c"}};
  document.products[longName] = {{}, {"c"}};
  writeDocument(document);
  folder_.writeFile("products.tsv", "\nED\tEditor\t1\t\nLO\t" + longName + "\t2\t\n");
  const std::string asked = std::string(59, 'n') + character;
  EXPECT_EQ(plan({"--product", asked + std::string(100'000, 'e')}),
            (ToolRun{2, "",
                     "update-metadata: 'update.json' has no product with the base code '" + asked +
                         "...'\nName another with --product; the nearest in the document: LO (" +
                         std::string(60, 'n') + "...), ED (Editor)\n"}));
  EXPECT_EQ(plan({"--product", std::string(58, 'n') + character}).err,
            "update-metadata: 'update.json' has no product with the base code '" +
                std::string(58, 'n') + character +
                "'\nName another with --product; the nearest in the document: LO (" +
                std::string(60, 'n') + "...), ED (Editor)\n");
}

// The product data assign one code to two products, and the document has only the second.
TEST_F(PlanFailure, OfACodeThatIsAssignedToAnotherProductFirstNamesBoth) {
  PlainDocument document;
  document.products["Viewer Light"] = {{}, {"c"}};
  writeDocument(document);
  const std::string complaint =
      "update-metadata: the base code 'VI' selects no product of 'update.json': its product "
      "'Viewer Light' has that code, but the product data assign it to 'Viewer' first\n";
  const std::string othersFirst =
      "The product data at '.' assign its products' codes to other products first: correct them, "
      "or omit --product to plan for all products\n";
  EXPECT_EQ(plan({"--product", "VI"}), (ToolRun{2, "", complaint + othersFirst}));
  EXPECT_EQ(plan({"--product", "vi2"}),
            (ToolRun{2, "",
                     "update-metadata: 'update.json' has no product with the base code 'vi2'\n" +
                         othersFirst}));
  document.products["Editor"] = {{}, {"c"}};
  writeDocument(document);
  EXPECT_EQ(plan({"--product", "VI"}),
            (ToolRun{2, "",
                     complaint + "Name another with --product; the nearest in the document: ED "
                                 "(Editor)\n"}));
}

TEST_F(PlanFailure, OfADocumentThatCannotBeLoadedHasStatusTwo) {
  EXPECT_EQ(runTool({"plan", "no-such-file", "--product-data", "."}, around_),
            (ToolRun{2, "",
                     "Update MetaData Json file does not exist \n"
                     "update-metadata: 'no-such-file' could not be loaded; check the path\n"}));
}

TEST_F(PlanFailure, OfProductDataThatCannotBeReadHasStatusTwo) {
  folder_.writeFile("products.tsv", "\nx\n");
  EXPECT_EQ(
      plan({}),
      (ToolRun{2, "",
               "./products.tsv:2: expected 4 tab-separated fields, found 1\n"
               "update-metadata: 'update.json' was loaded but could not be queried; check the "
               "product data at '.'\n"}));
}

}  // namespace
}  // namespace update_metadata_tool::plan
