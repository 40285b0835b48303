#include "plan/PlanCommand.h"

#include <algorithm>
#include <cstddef>
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

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "support/LongNames.h"
#include "support/PlainDocument.h"
#include "support/PlainTotals.h"
#include "support/RunTool.h"
#include "support/TemporaryFolder.h"
#include "support/ToolCases.h"

namespace update_metadata_tool::plan {
namespace {

using Json = nlohmann::ordered_json;
using test_support::kRealistic;
using test_support::kRealisticProducts;
using test_support::kSmall;
using test_support::kSmallProducts;
using test_support::PlainDocument;
using test_support::PlainTotals;
using test_support::readBytes;
using test_support::runSample;
using test_support::runTool;
using test_support::SampleRun;
using test_support::storedRun;
using test_support::TemporaryFolder;
using test_support::ToolRun;
using test_support::ToolSurroundings;
using ::testing::AllOf;
using ::testing::HasSubstr;

const std::string kSourceDir = UMP_SOURCE_DIR;

// --- the sample documents -------------------------------------------------------------------

class SamplePlans : public ::testing::TestWithParam<SampleRun> {};

TEST_P(SamplePlans, AreAsStored) {
  const ToolRun run = runSample(GetParam());
  EXPECT_EQ(run, storedRun(GetParam(), run));
}

const SampleRun kSamplePlans[] = {
    {"Small", {"plan", kSmall, "--product-data", kSmallProducts}, "80", "plan-small.txt"},
    {"SmallOnANarrowTerminal",
     {"plan", kSmall, "--product-data", kSmallProducts},
     "40",
     "plan-small-narrow.txt"},
    {"SmallForPrograms",
     {"plan", kSmall, "--product-data", kSmallProducts, "--format=json"},
     "80",
     "plan-small.json"},
    {"OneProduct",
     {"plan", "--product-data", kSmallProducts, "--product", "FV", kSmall},
     "80",
     "plan-small-one-product.txt"},
    {"Realistic",
     {"plan", kRealistic, "--product-data", kRealisticProducts},
     "80",
     "plan-realistic.txt"},
    {"RealisticForPrograms",
     {"plan", kRealistic, "--product-data", kRealisticProducts, "--format=json"},
     "80",
     "plan-realistic.json"},
    {"TwoProductsOneOfWhichSharesItsCode",
     {"plan", kRealistic, "--product-data", kRealisticProducts, "--product=FP", "--product=FA",
      "--product=FP"},
     "80",
     "plan-realistic-two-products.txt"},
    {"TwoProductsForPrograms",
     {"plan", kRealistic, "--product-data", kRealisticProducts, "--product=FP", "--product=FA",
      "--format=json"},
     "80",
     "plan-realistic-two-products.json"},
};
INSTANTIATE_TEST_SUITE_P(Samples, SamplePlans, ::testing::ValuesIn(kSamplePlans),
                         [](const auto& row) { return row.param.name; });

// --- single properties ----------------------------------------------------------------------

ToolRun plan(const std::string& document, std::vector<std::string> options,
             const std::string& products = "\n") {
  const TemporaryFolder folder;
  folder.writeFile("update.json", document);
  folder.writeFile("products.tsv", products);
  options.insert(options.begin(), {"plan", "update.json", "--product-data", "."});
  ToolSurroundings around;
  around.folder = folder.nativePath();
  around.environment = {"COLUMNS=80"};
  return runTool(options, around);
}

const std::string kNothing =
    R"({"metadata":{"arch":"","base":null,"target":null},"components":null,"products":null,)"
    R"("componentsWithFilesDeleted":null})";

TEST(PlanForPeople, SaysThatThereIsNothingToDo) {
  EXPECT_EQ(plan(kNothing, {}),
            (ToolRun{0,
                     "Base release:   none\n"
                     "Target release: none, update level 0\n"
                     "Architecture:   (empty)\n"
                     "\nProducts: 0\n"
                     "\nPackages to delete: 0\n"
                     "\nFiles to delete: 0\n"
                     "\nPackages to extract: 0\n"
                     "\nThis fetches 0 bytes, unpacks 0 bytes and frees 0 bytes: a net change of\n"
                     "0 bytes, with a peak need of 0 bytes before anything is freed.\n",
                     ""}));
}

TEST(PlanForPrograms, HasEveryMemberForAnEmptyDocument) {
  EXPECT_EQ(plan(kNothing, {"--format", "json"}),
            (ToolRun{0,
                     R"({"version":1,"base":{"family":"","version":""},)"
                     R"("target":{"family":"","version":"","updateLevel":0},"arch":"",)"
                     R"("products":[],"packagesToDelete":[],"packagesToExtract":[],)"
                     R"("filesToDelete":[],"totals":{"bytesToFetch":0,"bytesUnpacked":0,)"
                     R"("bytesDeleted":0,"netChange":0,"peakNeed":0},)"
                     R"("doubtfulSizes":{"negative":0,"truncated":0},"productsLeftOut":[]})"
                     "\n",
                     ""}));
}

PlainDocument makeDoubtfulDocument() {
  PlainDocument document;
  document.components["c\\u001b[2J"] = {
      {{"old", {-5, 0}}},
      {{"huge", {9'000'000'000'000'000'000, 9'000'000'000'000'000'000}}, {"small", {1, 2}}}};
  document.products["p\\n"] = {{"c\\u001b[2J"}, {"c\\u001b[2J"}};
  document.componentsWithFiles["c\\u001b[2J"]["kept"] = {-1, {"", "a\\u001b"}};
  return document;
}

TEST(PlanForPeople, MarksDoubtfulSizesAndSaysWhereASumDoesNotFit) {
  EXPECT_EQ(plan(makeDoubtfulDocument().json(), {}).out,
            "Base release:   Old, version 1\n"
            "Target release: New, version 2, update level 3\n"
            "Architecture:   x86_64\n"
            "\n"
            "Products: 1\n"
            "  p<U+000A>\n"
            "\n"
            "Packages to delete: 1\n"
            "  ! -5 B  -5  c<U+001B>[2J_old\n"
            "\n"
            "Files to delete: 2, of 1 package kept otherwise\n"
            "  ! -1 B  -1  c<U+001B>[2J_kept\n"
            "    (empty)\n"
            "    a<U+001B>\n"
            "\n"
            "Packages to extract: 2, with bytes to fetch and bytes after unpacking\n"
            "  7.8 EiB  9000000000000000000  7.8 EiB  9000000000000000000  c<U+001B>[2J_huge\n"
            "      1 B                    1      2 B                    2  c<U+001B>[2J_small\n"
            "\n"
            "Note: '!' marks doubtful sizes: 2 packages with a negative size. Sums take sizes\n"
            "as they stand.\n"
            "\n"
            "This fetches 9000000000000000001 bytes (7.8 EiB), unpacks\n"
            "9000000000000000002 bytes (7.8 EiB) and frees -5 bytes: a net change of\n"
            "9000000000000000007 bytes (7.8 EiB), with a peak need of more than\n"
            "9223372036854775807 bytes (8.0 EiB) before anything is freed.\n");
}

/// A plan for an installation, with names and sizes that leave no room for each other.
class PlanWithLongNames : public ::testing::Test {
 protected:
  PlanWithLongNames() {
    folder_.writeFile("update.json", test_support::makeDocumentWithLongNames(-5).json());
    folder_.writeFile("products.tsv", "\n");
    folder_.makeFolder("tree");
  }

  std::string plan(const std::string& columns) const {
    ToolSurroundings around;
    around.folder = folder_.nativePath();
    around.environment = {"COLUMNS=" + columns};
    return runTool({"plan", "update.json", "--product-data=.", "--installed=tree"}, around).out;
  }

  TemporaryFolder folder_;
};

TEST_F(PlanWithLongNames, KeepsToTheWidthOfTheTerminal) {
  for (const std::size_t columns : {20U, 30U, 40U, 60U, 80U, 100U, 200U}) {
    const std::string text = plan(std::to_string(columns));
    EXPECT_LE(test_support::widestLine(text), columns) << text;
  }
}

TEST_F(PlanWithLongNames, HasThemWholeWithoutATerminal) {
  const std::string& word = test_support::kLongWord;
  EXPECT_THAT(plan(""), AllOf(HasSubstr("\n  " + test_support::kLongWords + '\n'),
                              HasSubstr("\n    not there  " + word + '/' + word + '\n'),
                              HasSubstr("  -5  " + word + '_' + word + '\n')));
}

TEST_F(PlanWithLongNames, BreaksThemOnATerminalAndShortensNone) {
  const std::string name(21, 'n');
  PlainDocument document;
  document.components["c"] = {{}, {{name, {9'000'000'000'000, 9'500'000'000'000}}}};
  document.products[name] = {{}, {"c"}};
  folder_.writeFile("update.json", document.json());
  EXPECT_THAT(plan("20"), AllOf(HasSubstr("Products: 1\n"
                                          "  nnnnnnnnnnnnnnnnnn\n"
                                          "      nnn\n"),
                                HasSubstr("  c_nnnnnnnnnnnnnnnn\n"
                                          "      nnnnn\n"
                                          "    8.2 TiB\n"
                                          "      9000000000000\n"
                                          "    8.6 TiB\n"
                                          "      9500000000000\n")));
}

/// The part of a plan on a terminal that tells of the package c_p, which loses these files.
std::string planOfFiles(const std::vector<std::string>& files) {
  PlainDocument document;
  document.componentsWithFiles["c"]["p"] = {1, files};
  const TemporaryFolder folder;
  folder.writeFile("update.json", document.json());
  folder.writeFile("products.tsv", "\n");
  ToolSurroundings around;
  around.folder = folder.nativePath();
  around.environment = {"COLUMNS=20"};
  const std::string text = runTool({"plan", "update.json", "--product-data=."}, around).out;
  const std::size_t begin = text.find("  c_p\n");
  return text.substr(begin, text.find("\nPackages to extract") - begin);
}

TEST(PlanForPeople, TellsApartWhatDiffersInBlanks) {
  const std::string line(16, 'x');
  EXPECT_EQ(planOfFiles({"y", " y", "y ", line + "y", line + " y", line + "   y"}),
            "  c_p\n"
            "    1 B  1\n"
            "    <U+0020>y\n"
            "    xxxxxxxxxxxxxxxx\n"
            "           y\n"
            "    xxxxxxxxxxxxxxxx\n"
            "         y\n"
            "    xxxxxxxxxxxxxxxx\n"
            "        y\n"
            "    y\n"
            "    y<U+0020>\n");
}

TEST(PlanForPeople, TakesRoomInProportionToTheBlanksOfAName) {
  const auto roomOf = [](std::size_t blanks) {
    return planOfFiles({std::string(blanks, ' ') + 'x' + std::string(blanks, ' ') + 'x'}).size();
  };
  EXPECT_LT(roomOf(4000), 10 * roomOf(400) + 100);
}

TEST(PlanForPrograms, HasNullForASumThatDoesNotFit) {
  const Json planned = Json::parse(plan(makeDoubtfulDocument().json(), {"--format=json"}).out);
  EXPECT_EQ(planned["totals"].dump(),
            R"({"bytesToFetch":9000000000000000001,"bytesUnpacked":9000000000000000002,)"
            R"("bytesDeleted":-5,"netChange":9000000000000000007,"peakNeed":null})");
  EXPECT_EQ(planned["doubtfulSizes"].dump(), R"({"negative":2,"truncated":0})");
}

TEST(Plan, CountsTheDoubtfulSizesOfThePackagesWhoseFilesItDeletes) {
  PlainDocument document;
  document.products["A"] = {{"a"}, {}};
  document.products["B"] = {{"b"}, {}};
  document.componentsWithFiles["a"] = {
      {"p", {-1, {"file"}}}, {"q", {std::numeric_limits<std::int64_t>::min(), {}}}, {"r", {0, {}}}};
  document.componentsWithFiles["b"]["p"] = {-1, {"file"}};
  const auto doubtfulSizes = [&](std::vector<std::string> options) {
    options.push_back("--format=json");
    const std::string text = plan(document.json(), options, "\nA\tA\t1\t\nB\tB\t2\t\n").out;
    return Json::parse(text)["doubtfulSizes"].dump();
  };
  EXPECT_EQ(doubtfulSizes({}), R"({"negative":2,"truncated":1})");
  EXPECT_EQ(doubtfulSizes({"--product", "A"}), R"({"negative":1,"truncated":1})");
  EXPECT_EQ(doubtfulSizes({"--product", "B"}), R"({"negative":1,"truncated":0})");
}

TEST(Plan, ListsTheFilesOfComponentsThatAChosenProductOrNoneNames) {
  PlainDocument document;
  document.products["A"] = {{"deleted by a"}, {"extracted by a"}};
  document.products["B"] = {{"deleted by b"}, {"extracted by b", "extracted by a"}};
  for (const char* component :
       {"deleted by a", "extracted by a", "deleted by b", "extracted by b", "named by none"}) {
    document.componentsWithFiles[component]["p"] = {1, {"file"}};
  }
  const std::string products = "\nA\tA\t1\t\nB\tB\t2\t\n";
  const auto keys = [&](std::vector<std::string> options) {
    options.push_back("--format=json");
    std::string text;
    const Json planned = Json::parse(plan(document.json(), options, products).out);
    for (const Json& package : planned["filesToDelete"]) {
      text += package["key"].get<std::string>() + '\n';
    }
    return text;
  };
  EXPECT_EQ(keys({"--product", "A"}), "deleted by a_p\nextracted by a_p\nnamed by none_p\n");
  EXPECT_EQ(keys({"--product", "B"}),
            "deleted by b_p\nextracted by a_p\nextracted by b_p\nnamed by none_p\n");
  EXPECT_EQ(
      keys({}),
      "deleted by a_p\ndeleted by b_p\nextracted by a_p\nextracted by b_p\nnamed by none_p\n");
}

// "a" with "b_c" and "a_b" with "c" have one key. The library answers with the first of them.
TEST(Plan, ListsTheFilesOfAChosenComponentWhoseKeyAnotherOneHasToo) {
  PlainDocument document;
  document.products["A"] = {{"a"}, {}};
  document.products["B"] = {{"a_b"}, {}};
  document.componentsWithFiles["a"]["b_c"] = {1, {"of a"}};
  document.componentsWithFiles["a_b"] = {{"c", {-2, {"of a_b"}}}, {"d", {3, {"too"}}}};
  const auto planned = [&](std::vector<std::string> options) {
    options.push_back("--format=json");
    const std::string text = plan(document.json(), options, "\nA\tA\t1\t\nB\tB\t2\t\n").out;
    const Json answer = Json::parse(text);
    return answer["filesToDelete"].dump() + ' ' + answer["doubtfulSizes"].dump();
  };
  const std::string ofFirst = R"({"key":"a_b_c","size":1,"files":["of a"]})";
  const std::string ofSecond = R"({"key":"a_b_c","size":-2,"files":["of a_b"]})";
  const std::string ofNoOther = R"({"key":"a_b_d","size":3,"files":["too"]})";
  const std::string noneDoubtful = R"( {"negative":0,"truncated":0})";
  EXPECT_EQ(planned({"--product", "A"}), '[' + ofFirst + ']' + noneDoubtful);
  EXPECT_EQ(planned({"--product", "B"}),
            '[' + ofSecond + ',' + ofNoOther + R"(] {"negative":1,"truncated":0})");
  EXPECT_EQ(planned({}), '[' + ofFirst + ',' + ofNoOther + ']' + noneDoubtful);
}

TEST(Plan, IncludesAProductInNoCatalogueIfItIsForAll) {
  PlainDocument document;
  document.products["Unknown"] = {{}, {"c"}};
  const Json planned = Json::parse(plan(document.json(), {"--format=json"}).out);
  EXPECT_EQ(planned["products"].dump(), R"([{"name":"Unknown","baseCode":null}])");
  EXPECT_THAT(plan(document.json(), {}).out, HasSubstr("\nProducts: 1\n  Unknown\n"));
}

// The library chooses by the name that the product data give for a code.
TEST(Plan, ChoosesAProductByAnyCodeThatLeadsToItsName) {
  PlainDocument document;
  document.products["Editor"] = {{}, {"c"}};
  const Json planned = Json::parse(plan(document.json(), {"--product=E2", "--format=json"},
                                        "\nE1\tEditor\t1\t\nE2\tEditor\t2\t\n")
                                       .out);
  EXPECT_EQ(planned["products"].dump(), R"([{"name":"Editor","baseCode":"E1"}])");
}

// --- made-up documents against a plain computation and the library's answers -----------------

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
  std::set<std::string> components[2];  // named by some product, by a chosen one
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
  std::map<std::string, Json> files;  // of each key the first that is planned
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

TEST(PlansForMadeUpDocuments, AgreeWithAPlainComputation) {
  std::mt19937 random(11);
  for (int round = 0; round < 40; ++round) {
    const PlainDocument document = test_support::makeRandomDocument(random);
    const std::vector<std::string> names = PlainTotals(document).products();
    std::string catalogue = "\n";
    std::vector<std::string> chosen;
    std::vector<std::string> options = {"--format=json"};
    for (std::size_t i = 0; i < names.size(); ++i) {
      catalogue += std::to_string(i) + '\t' + names[i] + '\t' + std::to_string(i) + "\t\n";
      if (random() % 2 == 0) {
        chosen.push_back(names[i]);
        options.push_back("--product=" + std::to_string(i));
      }
    }
    const std::string text = document.json();
    const Json ofAll = Json::parse(plan(text, {"--format=json"}, catalogue).out);
    EXPECT_EQ(numbersOf(ofAll).dump(1), expectedPlan(document, names).dump(1)) << text;
    if (!chosen.empty()) {
      const Json ofSome = Json::parse(plan(text, options, catalogue).out);
      EXPECT_EQ(numbersOf(ofSome).dump(1), expectedPlan(document, chosen).dump(1)) << text;
    }
  }
}

TEST(PlansForMadeUpDocuments, HoldForAllProductsWhatQueryAnswers) {
  std::mt19937 random(12);
  for (int round = 0; round < 40; ++round) {
    const TemporaryFolder folder;
    folder.writeFile("update.json", test_support::makeRandomDocument(random).json());
    ToolSurroundings around;
    around.folder = folder.nativePath();
    const Json planned = Json::parse(
        runTool({"plan", "update.json", "--product-data", ".", "--format=json"}, around).out);
    const Json answered =
        Json::parse(runTool({"query", "update.json", "--format=json"}, around).out);

    std::set<std::string> deleted;
    for (const Json& keys : answered["componentsToDelete"]) {
      deleted.insert(keys.begin(), keys.end());
    }
    std::set<std::string> plannedDeleted;
    for (const Json& package : planned["packagesToDelete"]) {
      plannedDeleted.insert(package["key"].get<std::string>());
    }
    EXPECT_EQ(plannedDeleted, deleted);

    Json sizes = Json::object();
    std::set<std::string> plannedExtracted;
    for (const Json& package : planned["packagesToExtract"]) {
      plannedExtracted.insert(package["key"].get<std::string>());
      sizes[package["key"].get<std::string>()] = {
          {"size", package["size"]}, {"uncompressedBytes", package["uncompressedBytes"]}};
    }
    EXPECT_EQ(sizes, answered["updateSizeForComponentsToExtract"]);
    std::set<std::string> extracted;
    for (const Json& keys : answered["componentsToExtract"]) {
      extracted.insert(keys.begin(), keys.end());
    }
    EXPECT_EQ(plannedExtracted, extracted);

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
