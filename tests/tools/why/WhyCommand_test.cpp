#include "why/WhyCommand.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/RunTool.h"
#include "support/TemporaryFolder.h"
#include "support/ToolCases.h"

namespace update_metadata_tool::why {
namespace {

using test_support::kRealistic;
using test_support::kRealisticProducts;
using test_support::kSmall;
using test_support::kSmallProducts;
using test_support::runOnSamples;
using test_support::runTool;
using test_support::SampleRun;
using test_support::SampleRuns;
using test_support::TemporaryFolder;
using test_support::ToolRun;
using test_support::ToolSurroundings;
using test_support::WrongUsage;

TEST_P(SampleRuns, PrintTheStoredAnswers) {
  expectStored(GetParam());
}

const SampleRun kSampleReasons[] = {
    {"PackageOfTwoProducts",
     {"why", "core_engine", kSmall, "--product-data", kSmallProducts},
     "80",
     "why-two-products.txt"},
    {"PackageOfTwoProductsInNarrowLines",
     {"why", "core_engine", kSmall, "--product-data", kSmallProducts},
     "30",
     "why-two-products-narrow.txt"},
    {"PackageOfTwoProductsForPrograms",
     {"why", "core_engine", kSmall, "--product-data", kSmallProducts, "--format=json"},
     "80",
     "why-two-products.json"},
    {"PackageOfOneOfTheProducts",
     {"why", "core_engine", kSmall, "--product-data", kSmallProducts, "--product=FV"},
     "80",
     "why-one-product.txt"},
    {"PackageToDeleteAndToExtractInTwoDocuments",
     {"why", "editor_spelling", kSmall, kRealistic},
     "80",
     "why-two-documents.txt"},
    {"FileToDelete", {"why", "manual/old-index.html", kSmall}, "80", "why-file.txt"},
    {"PackageWithFilesToDelete", {"why", "editor_manual", kSmall}, "80", "why-files.txt"},
    {"SimilarKeys", {"why", "core_engin", kSmall, kRealistic}, "80", "why-similar.txt", 1},
    {"SimilarKeysForPrograms",
     {"why", "core_engin", kSmall, "--format=json"},
     "80",
     "why-similar.json",
     1},
};
INSTANTIATE_TEST_SUITE_P(Samples, SampleRuns, ::testing::ValuesIn(kSampleReasons),
                         [](const auto& row) { return row.param.name; });

ToolRun askIn(const TemporaryFolder& folder, std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), "why");
  ToolSurroundings around;
  around.folder = folder.nativePath();
  around.environment = {"COLUMNS=80"};
  return runTool(arguments, around);
}

std::string makeDocument(const std::string& components, const std::string& products,
                         const std::string& files = "null") {
  return R"({"metadata":{"arch":"","base":null,"target":null},"components":)" + components +
         R"(,"products":)" + products + R"(,"componentsWithFilesDeleted":)" + files + '}';
}

const std::string kReleases =
    "Base release:   none\n"
    "Target release: none, update level 0\n";

TEST(Why, ShowsEveryReasonOfAPackageInNoAnswer) {
  const TemporaryFolder folder;
  folder.writeFile(
      "update.json",
      makeDocument(R"({"a":{"delete":{"p":{"size":1},"p":{"size":2}},"extract":{}}})", "null"));
  EXPECT_EQ(
      askIn(folder, {"a_p", "update.json"}),
      (ToolRun{
          0,
          "update.json: named, but in no answer\n" + kReleases +
              "\n"
              "line 1: package 'p' of component 'a', to delete\n"
              "  size: 1 byte\n"
              "  packages to delete, all products: not used: no product has the component in\n"
              "      'delete'\n"
              "  packages to delete, this product: not used: no product has the component in\n"
              "      'delete'\n"
              "\n"
              "line 1: package 'p' of component 'a', to delete\n"
              "  size: 2 bytes\n"
              "  packages to delete, all products: not used: it is in the value of a duplicate\n"
              "      key, which is ignored\n"
              "  packages to delete, this product: not used: it is in the value of a duplicate\n"
              "      key, which is ignored\n",
          ""}));
}

TEST(Why, FindsWhatAnUndescribedComponentWouldContain) {
  const TemporaryFolder folder;
  folder.writeFile("update.json", makeDocument("{}", R"({"P":{"delete":["a"],"extract":[]}})"));
  EXPECT_EQ(
      askIn(folder, {"a_p", "update.json"}),
      (ToolRun{
          0,
          "update.json: named, but in no answer\n" + kReleases +
              "\n"
              "line 1: component 'a', to delete for P\n"
              "  packages to delete, all products: not used: \"components\" does not contain its\n"
              "      component\n"
              "  packages to delete, this product: not used: \"components\" does not contain its\n"
              "      component\n",
          ""}));
}

TEST(Why, AnswersTheOtherDocumentsIfOneDoesNotLoad) {
  const TemporaryFolder folder;
  folder.writeFile("bad.json", "[");
  folder.writeFile("update.json", makeDocument("null", "null"));
  const ToolRun run = askIn(folder, {"a_p", "bad.json", "update.json"});
  EXPECT_EQ(run.exitCode, 2);
  EXPECT_EQ(run.out, "update.json: not named\n");
  EXPECT_EQ(run.err.substr(0, 29), "Error while parsing bad.json\n");
}

TEST(Why, NotesAProductThatNoDocumentHas) {
  const ToolRun run = runOnSamples(
      {"why", "core_engine", kSmall, "--product=FX", "--product-data", kSmallProducts});
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_EQ(run.err,
            "update-metadata: note: no document has a product with the base code 'FX'; check "
            "--product\n");
}

TEST(Why, UsesTheNameOfAProductWithoutProductData) {
  EXPECT_EQ(runOnSamples({"why", "core_engine", kSmall, "--product=Fernlight Viewer"}).exitCode, 0);
}

class WrongWhy : public ::testing::TestWithParam<WrongUsage> {};

TEST_P(WrongWhy, IsRejected) {
  EXPECT_EQ(runTool(GetParam().arguments), rejectedRun(GetParam()));
}

const WrongUsage kWrongUsages[] = {
    {"NoKey", {"why"}, "KEY is required"},
    {"NoDocument", {"why", "a_b"}, "FILE is required"},
    {"StandardInputTwice",
     {"why", "a_b", "-", "-"},
     "FILE: standard input (-) can be read only once"},
};
INSTANTIATE_TEST_SUITE_P(Usages, WrongWhy, ::testing::ValuesIn(kWrongUsages),
                         [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace update_metadata_tool::why
