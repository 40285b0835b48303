#include "plan/PlanCommand.h"

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "plan/RunPlan.h"
#include "support/Json.h"
#include "support/PlainDocument.h"
#include "support/RunTool.h"
#include "support/ToolCases.h"

namespace update_metadata_tool::plan {
namespace {

using test_support::Json;
using test_support::kRealistic;
using test_support::kRealisticProducts;
using test_support::kSmall;
using test_support::kSmallProducts;
using test_support::parseJson;
using test_support::PlainDocument;
using test_support::SampleRun;
using test_support::SampleRuns;
using test_support::ToolRun;
using ::testing::HasSubstr;

TEST_P(SampleRuns, PrintTheStoredPlan) {
  expectStored(GetParam());
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
INSTANTIATE_TEST_SUITE_P(Samples, SampleRuns, ::testing::ValuesIn(kSamplePlans),
                         [](const auto& row) { return row.param.name; });

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
    return parseJson(text)["doubtfulSizes"].dump();
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
    const Json planned = parseJson(plan(document.json(), options, products).out);
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

// "a" with "b_c" and "a_b" with "c" have the same key. The library returns the first of them.
TEST(Plan, ListsTheFilesOfAChosenComponentThatSharesAKey) {
  PlainDocument document;
  document.products["A"] = {{"a"}, {}};
  document.products["B"] = {{"a_b"}, {}};
  document.componentsWithFiles["a"]["b_c"] = {1, {"of a"}};
  document.componentsWithFiles["a_b"] = {{"c", {-2, {"of a_b"}}}, {"d", {3, {"too"}}}};
  const auto planned = [&](std::vector<std::string> options) {
    options.push_back("--format=json");
    const std::string text = plan(document.json(), options, "\nA\tA\t1\t\nB\tB\t2\t\n").out;
    const Json answer = parseJson(text);
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

TEST(Plan, ForAllProductsIncludesOneThatTheProductDataDoNotContain) {
  PlainDocument document;
  document.products["Unknown"] = {{}, {"c"}};
  const Json planned = parseJson(plan(document.json(), {"--format=json"}).out);
  EXPECT_EQ(planned["products"].dump(), R"([{"name":"Unknown","baseCode":null}])");
  EXPECT_THAT(plan(document.json(), {}).out, HasSubstr("\nProducts: 1\n  Unknown\n"));
}

// The library selects by the name that the product data contain for a code.
TEST(Plan, SelectsAProductByAnyCodeThatLeadsToItsName) {
  PlainDocument document;
  document.products["Editor"] = {{}, {"c"}};
  const Json planned = parseJson(plan(document.json(), {"--product=E2", "--format=json"},
                                      "\nE1\tEditor\t1\t\nE2\tEditor\t2\t\n")
                                     .out);
  EXPECT_EQ(planned["products"].dump(), R"([{"name":"Editor","baseCode":"E1"}])");
}

}  // namespace
}  // namespace update_metadata_tool::plan
