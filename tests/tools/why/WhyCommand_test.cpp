#include "why/WhyCommand.h"

#include <ostream>
#include <string>
#include <vector>

#include <gmock/gmock.h>
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
using ::testing::HasSubstr;

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

const std::string kTwoComponents =
    R"({"c":{"delete":{"p":{"size":1}},"extract":{"q":{"size":2,"uncompressedBytes":3}}},)"
    R"("c_q":{"delete":{},"extract":{"":{"size":4,"uncompressedBytes":5}}}})";

/// A document, the key that is asked for, and what is shown between and after the releases.
struct ReasonCase {
  const char* name;
  std::string document;
  std::string key;
  std::string verdict;
  std::string places;
  int exitCode = 0;
  std::string productData = {};
};

std::ostream& operator<<(std::ostream& out, const ReasonCase& row) {
  return out << row.name;
}

class ReasonsOf : public ::testing::TestWithParam<ReasonCase> {};

TEST_P(ReasonsOf, AreInWords) {
  const ReasonCase& row = GetParam();
  const TemporaryFolder folder;
  folder.writeFile("update.json", row.document);
  std::vector<std::string> arguments = {row.key, "update.json"};
  if (!row.productData.empty()) {
    folder.writeFile("products.tsv",
                     "base code\tname\tnumber\tcontrolling product\n" + row.productData);
    arguments.emplace_back("--product-data=.");
  }
  EXPECT_EQ(
      askIn(folder, arguments),
      (ToolRun{row.exitCode, "update.json: " + row.verdict + '\n' + kReleases + row.places, ""}));
}

const ReasonCase kReasons[] = {
    {"NoProductAndADuplicateKey",
     makeDocument(R"({"a":{"delete":{"p":{"size":1},"p":{"size":2}},"extract":{}}})", "null"),
     "a_p", "named, but in no answer",
     "\n"
     "line 1: package 'p' of component 'a', to delete\n"
     "  size: 1 byte\n"
     "  in no answer: no product has the component in 'delete'\n"
     "\n"
     "line 1: package 'p' of component 'a', to delete\n"
     "  size: 2 bytes\n"
     "  in no answer: it is in the value of a duplicate key, which is ignored\n"},
    {"AnUndescribedComponent", makeDocument("{}", R"({"P":{"delete":["a"],"extract":[]}})"), "a_p",
     "not named, but a product names a component that is not described",
     "\n"
     "line 1: component 'a', to delete for P\n"
     "  in no answer: \"components\" does not contain the component\n",
     1},
    {"AComponentNamedTwiceAndADuplicateProduct",
     makeDocument(kTwoComponents, R"({"P":{"delete":["c",
"c"],"extract":[]},
"P":{"delete":["c"],"extract":[]}})"),
     "c_p", "deleted for P",
     "\n"
     "line 1: package 'p' of component 'c', to delete for P, named on line 1\n"
     "  size: 1 byte\n"
     "  in packages to delete, all products: yes\n"
     "  in packages to delete, this product: yes\n"
     "\n"
     "line 1: package 'p' of component 'c', to delete for P, named on line 2\n"
     "  size: 1 byte\n"
     "  in no answer: the product has named the component before, on line 1\n"
     "\n"
     "line 1: package 'p' of component 'c', to delete for P, named on line 3\n"
     "  size: 1 byte\n"
     "  in no answer: the product names it in the value of a duplicate key, which is\n"
     "      ignored\n"},
    {"AnEqualKeyOfAnotherComponent",
     makeDocument(kTwoComponents, R"({"P":{"delete":[],"extract":["c_q","c"]}})"), "c_q_",
     "extracted for P",
     "\n"
     "line 1: package '(empty)' of component 'c_q', to extract for P, named on line 1\n"
     "  size: 4 bytes; unpacked: 5 bytes\n"
     "  in packages to extract, all products: yes\n"
     "  in packages to extract, this product: yes\n"
     "  in sizes of the packages to extract: yes\n"},
    {"OnlyADuplicateProduct",
     makeDocument(kTwoComponents,
                  R"({"P":{"delete":[],"extract":[]},"P":{"delete":["c"],"extract":["d"]}})"),
     "c_p", "named, but in no answer",
     "\n"
     "line 1: package 'p' of component 'c', to delete\n"
     "  size: 1 byte\n"
     "  in no answer: no product has the component in 'delete', except in the value of\n"
     "      a duplicate key, which is ignored\n"
     "\n"
     "line 1: package 'p' of component 'c', to delete for P, named on line 1\n"
     "  size: 1 byte\n"
     "  in no answer: the product names it in the value of a duplicate key, which is\n"
     "      ignored\n"},
    {"AnUndescribedComponentOfADuplicateProduct",
     makeDocument("{}", R"({"P":{"delete":[],"extract":[]},"P":{"delete":["a"],"extract":[]}})"),
     "a_p", "not named, but a product names a component that is not described",
     "\n"
     "line 1: component 'a', to delete for P\n"
     "  in no answer: the product names it in the value of a duplicate key, which is\n"
     "      ignored\n",
     1},
    {"OnlySizesOfASecondProductWithTheBaseCode", makeDocument(kTwoComponents, R"({
"P":{"delete":[],"extract":["c_q"]},
"Q":{"delete":[],"extract":["c"]}})"),
     "c_q", "named, but only its sizes are in an answer",
     "\n"
     "line 1: package 'q' of component 'c', to extract for Q (X), named on line 3\n"
     "  size: 2 bytes; unpacked: 3 bytes\n"
     "  in packages to extract, all products: no, 'P' on line 2 comes first and has\n"
     "      the same base code\n"
     "  in packages to extract, this product: no, the product data assign its base\n"
     "      code to 'P'\n"
     "  in sizes of the packages to extract: yes\n",
     0, "X\tP\t1\t\nX\tQ\t2\t\n"},
    {"TheSecondUnknownProduct",
     makeDocument(kTwoComponents, R"({"P":{"delete":["c"],"extract":[]},)"
                                  R"("Q":{"delete":["c"],"extract":[]},)"
                                  R"("R":{"delete":["c_q"],"extract":[]}})"),
     "c_p", "deleted for P",
     "\n"
     "line 1: package 'p' of component 'c', to delete for P, named on line 1\n"
     "  size: 1 byte\n"
     "  in packages to delete, all products: yes\n"
     "  in packages to delete, this product: no, the product data do not contain the\n"
     "      product\n"
     "\n"
     "line 1: package 'p' of component 'c', to delete for Q, named on line 1\n"
     "  size: 1 byte\n"
     "  in no answer: the product data do not contain the product\n",
     0, "X\tR\t1\t\n"},
    {"EqualKeysOfPackagesWithFiles", makeDocument("null", "null", R"({"a":{
"b_c":{"size":1,"files":[]}},"a_b":{
"c":{"size":2,"files":[
"x"]}}})"),
     "x", "named, but in no answer",
     "\n"
     "line 3: file 'x' of package 'c' of component 'a_b', to delete, listed on line 4\n"
     "  size: 2 bytes\n"
     "  in no answer: a package of component 'a' on line 2 comes first and has the\n"
     "      same key\n"},
};
INSTANTIATE_TEST_SUITE_P(Documents, ReasonsOf, ::testing::ValuesIn(kReasons),
                         [](const auto& row) { return row.param.name; });

TEST(Why, AnswersTheOtherDocumentsIfOneDoesNotLoad) {
  const TemporaryFolder folder;
  folder.writeFile("bad.json", "[");
  folder.writeFile("update.json", makeDocument("null", "null"));
  const ToolRun run = askIn(folder, {"a_p", "bad.json", "update.json"});
  EXPECT_EQ(run.exitCode, 2);
  EXPECT_EQ(run.out, "update.json: not named\n");
  EXPECT_EQ(run.err.substr(0, 29), "Error while parsing bad.json\n");
}

TEST(Why, MentionsDuplicatesOfProductsThatAreLeftOut) {
  const TemporaryFolder folder;
  folder.writeFile("update.json", makeDocument(kTwoComponents, R"({"P":{"delete":[],"extract":[]},
"P":{"delete":["c"],"extract":[]}})"));
  EXPECT_THAT(askIn(folder, {"c_p", "update.json", "--product=Q"}).out,
              HasSubstr("no product has the component in 'delete', except in"));
}

TEST(Why, SaysThatOnlyOtherProductsNameThePackage) {
  EXPECT_EQ(runOnSamples({"why", "viewer_slideshow", kSmall, "--product-data", kSmallProducts,
                          "--product=FE"}),
            (ToolRun{1, "small/update.json: named, but not for product 'FE'\n", ""}));
}

TEST(Why, RejectsMorePackagesThanTheLimit) {
  const ToolRun run = runOnSamples({"why", "core_engine", kSmall, "--limit-packages=1"});
  EXPECT_EQ(run.exitCode, 2);
  EXPECT_EQ(run.err.substr(0, 52), "Update MetaData Json file names more than 1 packages");
}

TEST(Why, NotesAProductThatNoDocumentHas) {
  const ToolRun byName = runOnSamples({"why", "core_engine", kSmall, "--product=FE"});
  EXPECT_EQ(byName.err,
            "update-metadata: note: no document has a product 'FE'; base codes need "
            "--product-data, otherwise check the name\n");
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
