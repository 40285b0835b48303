// Faulty documents with everything that the command reports about them.

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "diagnosis/Rule.h"
#include "lint/Severity.h"
#include "lint/TextReport.h"
#include "support/Json.h"
#include "support/Patterns.h"
#include "support/RunTool.h"
#include "support/StoredText.h"

namespace update_metadata_tool::lint {
namespace {

namespace fs = std::filesystem;
using install::update_metadata_parser::diagnosis::describe;
using install::update_metadata_parser::diagnosis::findRule;
using test_support::Json;
using test_support::parseJson;
using test_support::readBytes;
using test_support::ToolRun;

const fs::path kFolder = fs::path(UMP_SOURCE_DIR) / "tests" / "golden" / "lint";

// Lints the document of a case, against the product data of the case if there are any.
ToolRun lint(const std::string& name, const std::string& format) {
  test_support::ToolSurroundings around;
  around.folder = (kFolder / name).string();
  std::vector<std::string> arguments = {"lint", "document.json", "--format", format};
  if (fs::exists(kFolder / name / "product-data")) {
    arguments.insert(arguments.end(), {"--product-data", "product-data"});
  }
  return test_support::runTool(arguments, around);
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

std::optional<ThrownException> readException(const Json& json) {
  return json.is_null() ? std::nullopt : std::optional(ThrownException{json["type"], json["text"]});
}

Finding readFinding(const Json& json) {
  Finding finding{describe(*findRule(json["rule"].get<std::string>())).id,
                  *findSeverity(json["severity"].get<std::string>()),
                  json["message"],
                  json["advice"],
                  json["offset"],
                  json["length"],
                  json["line"],
                  json["column"],
                  json["pointer"],
                  json["item"],
                  {},
                  {}};
  for (const Json& related : json["related"]) {
    finding.related.push_back(
        {related["offset"], related["line"], related["column"], related["message"]});
  }
  return finding;
}

FileReport readReport(const Json& json, const std::string& text) {
  Diagnosis diagnosis;
  diagnosis.exception = readException(json["exception"]);
  EXPECT_EQ(diagnosis.loads(), json["loads"]);
  if (json["readerMessage"].is_string()) {
    diagnosis.readerMessage = json["readerMessage"];
  }
  for (const Json& finding : json["findings"]) {
    diagnosis.findings.push_back(readFinding(finding));
  }
  for (const auto& [id, count] : json["omitted"].items()) {
    const auto& description = describe(*findRule(id));
    diagnosis.omitted.push_back({description.id, description.severity, count});
  }
  return {json["file"], text, diagnosis};
}

// The text form of what the JSON form of one document says.
std::string textOf(const Json& json, const std::string& document) {
  std::ostringstream out;
  TextReport report(out, false);
  report.write(readReport(json["files"].at(0), document));
  const Json& totals = json["totals"];
  report.finish({totals["files"], totals["loads"], totals["unreadable"], totals["errors"],
                 totals["warnings"], totals["infos"]});
  return out.str();
}

// The text form shows bytes that are not UTF-8, which the other forms replace by U+FFFD.
std::string withReplacements(const std::string& text) {
  return test_support::replaceMatches(text, "(<[89A-F][0-9A-F]>|\xEF\xBF\xBD)+", "\xEF\xBF\xBD");
}

class FaultyDocument : public ::testing::TestWithParam<std::string> {
 protected:
  static void expectStored(const std::string& written, const std::string& file) {
    EXPECT_EQ(written, test_support::storedText(kFolder / GetParam() / file, written));
  }
};

TEST_P(FaultyDocument, IsReportedAsItsExpectationSays) {
  const ToolRun text = lint(GetParam(), "text");
  expectStored(text.out, "expected.txt");
  const ToolRun json = lint(GetParam(), "json");
  const Json report = parseJson(json.out);
  EXPECT_EQ(withReplacements(
                textOf(report, readBytes((kFolder / GetParam() / "document.json").string()))),
            withReplacements(text.out));
  EXPECT_EQ(text.err + json.err, "");
  const int exitCode = report["totals"]["errors"] != 0 ? 1 : 0;
  EXPECT_EQ(text.exitCode, exitCode);
  EXPECT_EQ(json.exitCode, exitCode);
}

INSTANTIATE_TEST_SUITE_P(Cases, FaultyDocument, ::testing::ValuesIn(caseNames()),
                         [](const auto& row) { return toTestName(row.param); });

class FaultyDocumentInEveryForm : public FaultyDocument {};

TEST_P(FaultyDocumentInEveryForm, IsReportedAsItsExpectationsSay) {
  expectStored(parseJson(lint(GetParam(), "json").out).dump(2) + '\n', "expected.json");
  Json sarif = parseJson(lint(GetParam(), "sarif").out);
  sarif["runs"][0]["tool"]["driver"].erase("rules");  // the same in every log
  expectStored(sarif.dump(2) + '\n', "expected.sarif");
}

// A document that does not load, with findings of every severity; no finding; the text reader's
// message and several related places; characters of several bytes; bytes that are not UTF-8;
// product data.
INSTANTIATE_TEST_SUITE_P(Cases, FaultyDocumentInEveryForm,
                         ::testing::Values("many-faults", "faultless", "missing-brace",
                                           "wide-characters", "same-name", "shared-base-code"),
                         [](const auto& row) { return toTestName(row.param); });

}  // namespace
}  // namespace update_metadata_tool::lint
