#include "lint/SarifReport.h"

#include <ostream>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "install/update_metadata_parser/Version.h"
#include "lint/RuleExplanations.h"
#include "lint/Severity.h"
#include "support/Json.h"
#include "tools/lint/SampleReports.h"

namespace update_metadata_tool::lint {
namespace {

using install::update_metadata_parser::diagnosis::allRules;
using install::update_metadata_parser::diagnosis::RuleDescription;
using test_support::Json;
using test_support::parseJson;

Json reportOnAllSamples() {
  return parseJson(test_support::reportOnAllSamples<SarifReport>(
      indexArtifacts({"a folder/update.json", "/srv/b\x1B.json", "gone.json", "clean.json"})));
}

TEST(SarifReport, ListsEveryFindingThenTheFilesThenThoseThatCouldNotBeRead) {
  Json log = reportOnAllSamples();
  log["runs"][0].erase("tool");
  EXPECT_EQ(log.dump(2), parseJson(R"({
    "$schema": "https://json.schemastore.org/sarif-2.1.0.json",
    "version": "2.1.0",
    "runs": [{
      "columnKind": "unicodeCodePoints",
      "results": [{
        "ruleId": "null-section",
        "ruleIndex": 16,
        "level": "note",
        "message": {"text": "A section is null. Look."},
        "locations": [{"physicalLocation": {
          "artifactLocation": {"uri": "a%20folder/update.json", "index": 0},
          "region": {"startLine": 1, "startColumn": 1, "endLine": 1, "endColumn": 1,
                     "byteOffset": 0, "byteLength": 0}}}]
      }, {
        "ruleId": "repeated-key",
        "ruleIndex": 12,
        "level": "warning",
        "message": {"text": "Duplicate key '\u00fc'. Remove one of the two."},
        "locations": [{
          "physicalLocation": {
            "artifactLocation": {"uri": "a%20folder/update.json", "index": 0},
            "region": {"startLine": 4, "startColumn": 5, "endLine": 4, "endColumn": 8,
                       "byteOffset": 46, "byteLength": 4}},
          "logicalLocations": [
            {"name": "package '\u00fc'", "fullyQualifiedName": "/extract/\u00fc"}]}],
        "relatedLocations": [{
          "id": 0,
          "message": {"text": "The value that is used."},
          "physicalLocation": {
            "artifactLocation": {"uri": "a%20folder/update.json", "index": 0},
            "region": {"startLine": 3, "startColumn": 5, "endLine": 3, "endColumn": 6,
                       "byteOffset": 21, "byteLength": 1}}}],
        "fixes": [{
          "description": {"text": "Safe fix."},
          "artifactChanges": [{
            "artifactLocation": {"uri": "a%20folder/update.json", "index": 0},
            "replacements": [{
              "deletedRegion": {"startLine": 4, "startColumn": 3, "endLine": 4, "endColumn": 20,
                                "byteOffset": 44, "byteLength": 18}}]}]}]
      }, {
        "ruleId": "malformed-text",
        "ruleIndex": 0,
        "level": "error",
        "message": {"text": "Expected 'true' or 'false' for '\ufffd\u001b'. Correct the text."},
        "locations": [{
          "physicalLocation": {
            "artifactLocation": {"uri": "file:///srv/b%1B.json", "index": 1},
            "region": {"startLine": 1, "startColumn": 8, "endLine": 1, "endColumn": 11,
                       "byteOffset": 7, "byteLength": 3}},
          "logicalLocations": [{"name": "member '\ufffd'", "fullyQualifiedName": "/\ufffd"}]}],
        "fixes": [{
          "description": {"text": "Suggested fix."},
          "artifactChanges": [{
            "artifactLocation": {"uri": "file:///srv/b%1B.json", "index": 1},
            "replacements": [{
              "deletedRegion": {"startLine": 1, "startColumn": 8, "endLine": 1, "endColumn": 11,
                                "byteOffset": 7, "byteLength": 3},
              "insertedContent": {"text": "\u00fc"}}]}]}]
      }],
      "artifacts": [
        {"location": {"uri": "a%20folder/update.json"}, "hashes": {"sha-256":
          "b7bc6f4dc418b19851de40980a4a9f66ff639df07e8102925f3131e8040ce699"}, "properties":
          {"loads": true, "exception": null, "omitted": {"null-section": 1, "empty-name": 3}}},
        {"location": {"uri": "file:///srv/b%1B.json"}, "hashes": {"sha-256":
          "0629919bb75c7411dd601daa7b6c896fcd868c026cd4196d08f259859c31850c"}, "properties": {"loads": false,
          "exception": {"type": "std::runtime_error",
                        "text": "Error while parsing /srv/b\u001b.json"}, "omitted": {}}},
        {"location": {"uri": "gone.json"}, "properties": {"loads": false,
          "exception": {"type": "std::runtime_error",
                        "text": "Update MetaData Json file does not exist "}, "omitted": {}}},
        {"location": {"uri": "clean.json"}, "hashes": {"sha-256":
          "44136fa355b3678a1146ad16f7e8649e94fb4fc21fe77e8310c060f61caaff8a"}, "properties":
          {"loads": true, "exception": null, "omitted": {}}}
      ],
      "invocations": [{
        "executionSuccessful": false,
        "toolExecutionNotifications": [{
          "level": "error",
          "message": {"text": "Update MetaData Json file does not exist "},
          "locations": [{"physicalLocation": {"artifactLocation":
            {"uri": "gone.json", "index": 2}}}]}]
      }]
    }]
  })")
                             .dump(2));
}

TEST(SarifReport, DescribesTheCommandAndEveryRule) {
  const Json driver = reportOnAllSamples()["runs"][0]["tool"]["driver"];
  EXPECT_EQ(driver["name"], "update-metadata");
  EXPECT_EQ(driver["version"], install::update_metadata_parser::version());
  ASSERT_EQ(driver["rules"].size(), allRules().size());
  for (const RuleDescription& description : allRules()) {
    const Json& rule = driver["rules"][static_cast<std::size_t>(description.rule)];
    EXPECT_EQ(rule["id"], description.id);
    EXPECT_EQ(rule["shortDescription"]["text"], std::string(description.summary) + '.');
    EXPECT_EQ(rule["fullDescription"]["text"], explain(description.rule));
    EXPECT_EQ(rule["help"]["text"], explain(description.rule));
    const std::string level =
        description.severity == Severity::kInfo ? "note" : nameOf(description.severity);
    EXPECT_EQ(rule["defaultConfiguration"]["level"], level);
  }
}

TEST(SarifReport, MakesNeitherALinkNorAPlaceholderOfANameInAMessage) {
  FileReport file = test_support::clean();
  file.text = "[]";
  file.diagnosis.findings = {{"unlisted-member",
                              Severity::kWarning,
                              "unknown '[a](1)' \\[b](2) {0}?",
                              "remove it",
                              0,
                              1,
                              1,
                              1,
                              "/[a](1)",
                              "item [a](1)",
                              {{1, 1, 2, "]{"}},
                              {}}};
  const UnreadableFile unreadable{"[c](3)", {"std::exception", "[c](3)"}};
  const ArtifactIndices artifacts = indexArtifacts({file.file, unreadable.file});
  std::ostringstream out;
  SarifReport report(out, artifacts);
  report.begin();
  report.remember(file.file, report.write(file));
  report.remember(unreadable.file, report.write(unreadable));
  report.finish({});
  const Json run = parseJson(out.str())["runs"][0];
  const Json& result = run["results"][0];
  EXPECT_EQ(result["message"]["text"], "Unknown '\\[a\\](1)' \\\\\\[b\\](2) {{0}}? Remove it.");
  EXPECT_EQ(result["relatedLocations"][0]["message"]["text"], "\\]{{.");
  EXPECT_EQ(run["invocations"][0]["toolExecutionNotifications"][0]["message"]["text"],
            "\\[c\\](3)");
  const Json& logical = result["locations"][0]["logicalLocations"][0];
  EXPECT_EQ(logical["name"], "item [a](1)");
  EXPECT_EQ(logical["fullyQualifiedName"], "/[a](1)");
}

// A region from the first line to the third, with characters of several bytes around its ends.
TEST(SarifReport, GivesARegionOfSeveralLinesItsEndInCharacters) {
  FileReport file = test_support::clean();
  file.text = "\xC3\xBC [\n1\n\xF0\x9F\x97\xBA]\n";
  file.diagnosis.findings = {
      {"wrong-kind", Severity::kError, "wrong", "right", 3, 9, 1, 4, "/a", "item", {}, {}}};
  std::ostringstream out;
  const ArtifactIndices artifacts = indexArtifacts({file.file});
  SarifReport report(out, artifacts);
  report.begin();
  report.remember(file.file, report.write(file));
  report.finish({});
  EXPECT_EQ(
      parseJson(out.str())["runs"][0]["results"][0]["locations"][0]["physicalLocation"]["region"],
      parseJson(R"({"startLine": 1, "startColumn": 3, "endLine": 3, "endColumn": 3,
                            "byteOffset": 3, "byteLength": 9})"));
}

}  // namespace
}  // namespace update_metadata_tool::lint
