// Each rule has a document for which it fires and a similar one for which it does not.

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "diagnosis/Rule.h"
#include "install/update_metadata_parser/Diagnosis.h"
#include "reader/DocumentFile.h"

namespace install::update_metadata_parser::diagnosis {
namespace {

namespace fs = std::filesystem;

const fs::path kFolder = fs::path(UMP_SOURCE_DIR) / "tests" / "golden" / "lint";

// The name of a test has no hyphens.
std::string toTestName(std::string name) {
  std::replace(name.begin(), name.end(), '-', '_');
  return name;
}

std::vector<std::string> shownRules() {
  std::vector<std::string> ids;
  for (const RuleDescription& description : allRules()) {
    // The fallback has no findings as long as the other rules are complete.
    if (description.rule != Rule::kRefused) {
      ids.emplace_back(description.id);
    }
  }
  return ids;
}

// Whether a rule has a finding for a document in its folder.
bool fires(const std::string& id, const std::string& document, const std::string& productData) {
  DiagnosisOptions options;
  if (fs::exists(kFolder / id / productData)) {
    options.productData = (kFolder / id / productData).u16string();
  }
  const Diagnosis diagnosis =
      diagnose(readDocument((kFolder / id / document).u16string()), options);
  return std::any_of(diagnosis.findings.begin(), diagnosis.findings.end(),
                     [&](const Finding& finding) { return finding.rule == id; });
}

class ShownRule : public ::testing::TestWithParam<std::string> {};

TEST_P(ShownRule, FiresForItsDocumentAndNotForOneThatIsNearlyTheSame) {
  const std::string& id = GetParam();
  // A rule about product data has better product data instead.
  const bool hasOthers = fs::exists(kFolder / id / "silent-product-data");
  EXPECT_TRUE(fires(id, "document.json", "product-data"));
  EXPECT_FALSE(fires(id, "silent.json", hasOthers ? "silent-product-data" : "product-data"));
}

INSTANTIATE_TEST_SUITE_P(Rules, ShownRule, ::testing::ValuesIn(shownRules()),
                         [](const auto& row) { return toTestName(row.param); });

}  // namespace
}  // namespace install::update_metadata_parser::diagnosis
