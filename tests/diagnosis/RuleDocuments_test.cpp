// Each rule has a document for which it fires and a similar one for which it does not. The stored
// reports of the command on these and other documents have the findings of the diagnosis.

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "diagnosis/Rule.h"
#include "diagnosis/Text.h"
#include "install/update_metadata_parser/Diagnosis.h"
#include "reader/DocumentFile.h"
#include "support/Patterns.h"

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

Diagnosis diagnoseDocument(const fs::path& document, const fs::path& productData) {
  DiagnosisOptions options;
  options.path = document.filename().u16string();
  if (fs::exists(productData)) {
    options.productData = productData.u16string();
  }
  return diagnose(readDocument(document.u16string()), options);
}

// Whether a rule has a finding for a document in its folder.
bool fires(const std::string& id, const std::string& document, const std::string& productData) {
  const Diagnosis diagnosis = diagnoseDocument(kFolder / id / document, kFolder / id / productData);
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

std::vector<std::string> folders() {
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(kFolder)) {
    names.push_back(entry.path().filename().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

// A text as the command shows it.
std::string toVisible(std::string_view text) {
  std::string shown;
  while (!text.empty()) {
    const Character character = firstCharacter(text);
    appendVisible(character, shown);
    text.remove_prefix(character.bytes);
  }
  return shown;
}

// The first line of a finding in the command's report.
std::string headingOf(const Finding& finding) {
  constexpr const char* kNames[] = {"info", "warning", "error"};
  return "document.json:" + std::to_string(finding.line) + ':' + std::to_string(finding.column) +
         ": " + kNames[static_cast<std::size_t>(finding.severity)] + ": " +
         toVisible(finding.message) + " [" + std::string(finding.rule) + ']';
}

std::vector<std::string> storedHeadings(const std::string& report) {
  std::vector<std::string> headings;
  std::istringstream lines(report);
  for (std::string line; std::getline(lines, line);) {
    if (test_support::matches(
            line, R"(document\.json:\d+:\d+: (info|warning|error): .* \[[a-z0-9-]+\])")) {
      headings.push_back(line);
    }
  }
  return headings;
}

class StoredReport : public ::testing::TestWithParam<std::string> {};

TEST_P(StoredReport, HasTheFindingsOfTheDiagnosisInTheirOrder) {
  const fs::path folder = kFolder / GetParam();
  const Diagnosis diagnosis = diagnoseDocument(folder / "document.json", folder / "product-data");
  std::vector<std::string> headings;
  for (Finding finding : diagnosis.findings) {
    // A message quotes the path of the product data.
    const std::string quoted = (folder / "product-data" / "products.tsv").string();
    if (const std::size_t at = finding.message.find(quoted); at != std::string::npos) {
      finding.message.replace(at, quoted.size(), "product-data/products.tsv");
    }
    headings.push_back(headingOf(finding));
  }
  const std::string report = readDocument((folder / "expected.txt").u16string());
  EXPECT_EQ(headings, storedHeadings(report));
  EXPECT_EQ(diagnosis.loads(),
            report.find("document.json: the library loads this document") != std::string::npos);
}

INSTANTIATE_TEST_SUITE_P(Cases, StoredReport, ::testing::ValuesIn(folders()),
                         [](const auto& row) { return toTestName(row.param); });

}  // namespace
}  // namespace install::update_metadata_parser::diagnosis
