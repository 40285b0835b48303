// Faulty documents with everything that the command says about them.

#include <algorithm>
#include <filesystem>
#include <ostream>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "lint/Rule.h"
#include "support/RunTool.h"
#include "support/StoredText.h"

namespace update_metadata_tool::lint {
namespace {

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;
using test_support::ToolRun;

const fs::path kFolder = fs::path(UMP_SOURCE_DIR) / "tests" / "golden" / "lint";

// Lints a document of a case against product data of the case, if they are there.
ToolRun lint(const std::string& name, const std::string& document, const std::string& productData,
             const std::string& format) {
  test_support::ToolSurroundings around;
  around.folder = kFolder / name;
  std::vector<std::string> arguments = {"lint", document, "--format", format};
  if (fs::exists(kFolder / name / productData)) {
    arguments.insert(arguments.end(), {"--product-data", productData});
  }
  return test_support::runTool(arguments, around);
}

// In lines, for people who review it. What every report says of the rules is left out.
std::string toLines(const std::string& text) {
  Json json = Json::parse(text);
  if (json.contains("runs")) {
    json["runs"][0]["tool"]["driver"].erase("rules");
  }
  return json.dump(2) + '\n';
}

std::vector<std::string> caseNames() {
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(kFolder)) {
    names.push_back(entry.path().filename().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

// The name of a test has no hyphens.
std::string toTestName(std::string name) {
  std::replace(name.begin(), name.end(), '-', '_');
  return name;
}

std::set<std::string> rulesIn(const Json& report) {
  std::set<std::string> rules;
  for (const Json& finding : report["files"][0]["findings"]) {
    rules.insert(finding["rule"].get<std::string>());
  }
  return rules;
}

class FaultyDocument : public ::testing::TestWithParam<std::string> {
 protected:
  static void expectStored(const std::string& said, const std::string& file) {
    EXPECT_EQ(said, test_support::storedText(kFolder / GetParam() / file, said));
  }
};

TEST_P(FaultyDocument, IsReportedInEveryFormAsItsExpectationsSay) {
  const ToolRun text = lint(GetParam(), "document.json", "product-data", "text");
  const ToolRun json = lint(GetParam(), "document.json", "product-data", "json");
  const ToolRun sarif = lint(GetParam(), "document.json", "product-data", "sarif");
  expectStored(text.out, "expected.txt");
  expectStored(toLines(json.out), "expected.json");
  expectStored(toLines(sarif.out), "expected.sarif");
  EXPECT_EQ(text.err + json.err + sarif.err, "");

  const bool hasErrors = Json::parse(json.out)["totals"]["errors"] != 0;
  for (const ToolRun& run : {text, json, sarif}) {
    EXPECT_EQ(run.exitCode, hasErrors ? 1 : 0);
  }
}

INSTANTIATE_TEST_SUITE_P(Cases, FaultyDocument, ::testing::ValuesIn(caseNames()),
                         [](const auto& row) { return toTestName(row.param); });

std::vector<std::string> shownRules() {
  std::vector<std::string> ids;
  for (const RuleDescription& description : allRules()) {
    // The fallback has nothing to say as long as the other rules are complete.
    if (description.rule != Rule::kRefused) {
      ids.emplace_back(description.id);
    }
  }
  return ids;
}

class ShownRule : public ::testing::TestWithParam<std::string> {};

TEST_P(ShownRule, FiresForItsDocumentAndIsSilentForOneThatIsNearlyTheSame) {
  const std::string& id = GetParam();
  // A rule about product data is silent for better ones.
  const bool hasOthers = fs::exists(kFolder / id / "silent-product-data");
  const ToolRun fires = lint(id, "document.json", "product-data", "json");
  const ToolRun silent =
      lint(id, "silent.json", hasOthers ? "silent-product-data" : "product-data", "json");
  EXPECT_EQ(rulesIn(Json::parse(fires.out)).count(id), 1U);
  EXPECT_EQ(rulesIn(Json::parse(silent.out)).count(id), 0U);
}

INSTANTIATE_TEST_SUITE_P(Rules, ShownRule, ::testing::ValuesIn(shownRules()),
                         [](const auto& row) { return toTestName(row.param); });

}  // namespace
}  // namespace update_metadata_tool::lint
