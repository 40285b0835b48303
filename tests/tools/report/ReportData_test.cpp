#include "report/ReportData.h"

#include <cstdint>
#include <limits>
#include <optional>
#include <random>
#include <string>

#include <gtest/gtest.h>

#include "output/Text.h"
#include "summary/Document.h"
#include "summary/Totals.h"
#include "support/Json.h"
#include "support/PlainDocument.h"
#include "support/RunTool.h"
#include "support/TemporaryFolder.h"

namespace update_metadata_tool::report {
namespace {

using install::update_metadata_parser::Diagnosis;
using install::update_metadata_parser::Severity;
using summary::Contents;
using test_support::Json;
using test_support::makeRandomDocument;
using test_support::parseJson;
using test_support::PlainDocument;
using test_support::TemporaryFolder;

Contents contentsOf(const std::string& document, std::optional<std::u16string> productData = {}) {
  const TemporaryFolder folder;
  return summary::Document({folder.writeFile("update.json", document), std::move(productData)})
      .gatherContents();
}

TEST(ReportData, ContainEverythingAboutASample) {
  const std::string small = UMP_SOURCE_DIR "/examples/documents/small/";
  const Contents contents = contentsOf(test_support::readBytes(small + "update.json"),
                                       output::toUtf16(small + "product-data"));
  EXPECT_EQ(parseJson(makeReportData(u"update.json", contents, Diagnosis())), parseJson(R"({
    "version": 1,
    "file": "update.json",
    "base": {"family": "Fernlight 7", "version": "7.1.0"},
    "target": {"family": "Fernlight 7", "version": "7.2.0", "updateLevel": 3},
    "arch": "x86_64",
    "totals": {"packagesToExtract": 5, "packagesToDelete": 2, "bytesToFetch": "2499477",
               "bytesUnpacked": "5842944", "bytesDeleted": "278528", "filesToDelete": 2},
    "doubtfulSizes": null,
    "packagesToExtract": [["core_engine", 1572864, 4194304], ["core_fonts", 655360, 901120],
                          ["editor_spelling", 222208, 614400], ["editor_toolbox", 48128, 131072],
                          ["viewer_slideshow", 917, 2048]],
    "packagesToDelete": [["core_legacy-formats", 73728], ["editor_spelling", 204800]],
    "components": [
      {"name": "core", "packagesToExtract": [0, 1], "packagesToDelete": [0],
       "bytesToFetch": "2228224", "bytesUnpacked": "5095424", "bytesDeleted": "73728"},
      {"name": "editor", "packagesToExtract": [2, 3], "packagesToDelete": [1],
       "bytesToFetch": "270336", "bytesUnpacked": "745472", "bytesDeleted": "204800"},
      {"name": "viewer", "packagesToExtract": [4], "packagesToDelete": [],
       "bytesToFetch": "917", "bytesUnpacked": "2048", "bytesDeleted": "0"}],
    "products": [
      {"name": "Fernlight Editor", "baseCode": "FE", "componentsToExtract": [0, 1],
       "componentsToDelete": [0, 1], "packagesToExtract": 4, "packagesToDelete": 2,
       "bytesToFetch": "2498560", "bytesUnpacked": "5840896", "bytesDeleted": "278528"},
      {"name": "Fernlight Viewer", "baseCode": "FV", "componentsToExtract": [0, 2],
       "componentsToDelete": [], "packagesToExtract": 3, "packagesToDelete": 0,
       "bytesToFetch": "2229141", "bytesUnpacked": "5097472", "bytesDeleted": "0"}],
    "componentsWithFiles": [
      {"name": "editor", "packages": [
        {"key": "editor_manual", "size": 36864,
         "files": ["manual/images/tour.png", "manual/old-index.html"]}]}],
    "findings": [],
    "omittedFindings": 0
  })"));
}

TEST(ReportData, HaveEveryMemberForADocumentThatUpdatesNothing) {
  EXPECT_EQ(makeReportData(u"",
                           contentsOf(R"({"metadata":{"arch":"","base":null,"target":null},)"
                                      R"("components":null,"products":null,)"
                                      R"("componentsWithFilesDeleted":null})"),
                           Diagnosis()),
            R"({"version":1,"file":"","base":{"family":"","version":""},)"
            R"("target":{"family":"","version":"","updateLevel":0},"arch":"",)"
            R"("totals":{"packagesToExtract":0,"packagesToDelete":0,"bytesToFetch":"0",)"
            R"("bytesUnpacked":"0","bytesDeleted":"0","filesToDelete":0},"doubtfulSizes":null,)"
            R"("packagesToExtract":[],"packagesToDelete":[],"components":[],)"
            R"("products":[],"componentsWithFiles":[],)"
            R"("findings":[],"omittedFindings":0})");
}

TEST(ReportData, GiveASumAsATextAndOneBeyondSixtyFourBitsAsItsBound) {
  constexpr std::int64_t kMax = std::numeric_limits<std::int64_t>::max();
  constexpr std::int64_t kMin = std::numeric_limits<std::int64_t>::min();
  Contents contents;
  contents.packagesToExtract = {{u"c_1", kMax, kMin}, {u"c_2", 1, -1}};
  contents.packagesToDelete = {{u"c_1", kMax, 0}};
  contents.components = {{u"c", {0}, {0, 1}}};
  contents.products = {{u"p", std::nullopt, {0}, {}}};
  const Json data = parseJson(makeReportData(u"", contents, Diagnosis()));
  const Json all = {{"packagesToExtract", 2},
                    {"packagesToDelete", 1},
                    {"bytesToFetch", ">9223372036854775807"},
                    {"bytesUnpacked", "<-9223372036854775808"},
                    {"bytesDeleted", "9223372036854775807"},
                    {"filesToDelete", 0}};
  EXPECT_EQ(data["totals"], all);
  EXPECT_EQ(data["components"][0]["bytesToFetch"], ">9223372036854775807");
  EXPECT_EQ(data["products"][0]["bytesToFetch"], "0");
  EXPECT_EQ(data["products"][0]["baseCode"], nullptr);
  EXPECT_EQ(data["packagesToDelete"], parseJson(R"([["c_1",9223372036854775807]])"));
}

TEST(ReportData, SayHowManyPackagesHaveDoubtfulSizes) {
  Contents contents;
  contents.packagesToExtract = {{u"c_1", -7, 1}, {u"c_2", 1, 1}};
  contents.packagesToDelete = {{u"c_3", std::numeric_limits<std::int64_t>::min(), 0}};
  contents.components = {{u"c", {0}, {0, 1}}};
  const Json data = parseJson(makeReportData(u"", contents, Diagnosis()));
  EXPECT_EQ(data["doubtfulSizes"],
            "'!' marks doubtful sizes: 1 package with a negative size, 1 package with a size that "
            "does not fit into 64 bits and is read as -9223372036854775808. Totals include "
            "these sizes.");
}

TEST(ReportData, ReplaceUnpairedSurrogatesAndKeepEverythingElse) {
  Contents contents;
  contents.architecture = u"\xD800 \u2028<\"\\\n";
  EXPECT_EQ(parseJson(makeReportData(u"", contents, Diagnosis()))["arch"],
            "\xEF\xBF\xBD \xE2\x80\xA8<\"\\\n");
}

TEST(ReportData, EscapeCharactersThatControlATerminal) {
  Contents contents;
  contents.architecture = u"\x9B\x31m\x202E\x7F \x00E9";
  const std::string data = makeReportData(u"\x85.json", contents, Diagnosis());
  EXPECT_NE(data.find(R"("arch":"\u009b1m\u202e\u007f )"
                      "\xC3\xA9\""),
            std::string::npos)
      << data;
  EXPECT_NE(data.find(R"("file":"\u0085.json")"), std::string::npos) << data;
}

TEST(ReportData, GiveFindingsByLineAndColumn) {
  Diagnosis diagnosis;
  diagnosis.findings = {
      {"repeated-key", Severity::kWarning, "it \xFF", "go", 4, 3, 2, 3, "/a", "member \"a\"", {}}};
  diagnosis.omitted = {{"malformed-text", Severity::kError, 7},
                       {"missing-section", Severity::kError, 2}};
  const Json data = parseJson(makeReportData(u"", Contents(), diagnosis));
  EXPECT_EQ(data["findings"], parseJson(R"([{
    "severity": "warning", "rule": "repeated-key", "line": 2, "column": 3,
    "message": "it \ufffd", "advice": "go", "item": "member \"a\"", "pointer": "/a"}])"));
  EXPECT_EQ(data["omittedFindings"], 9);
}

TEST(ReportData, ContainTheFirstTenThousandFindingsAndTheNumberOfTheOthers) {
  Diagnosis diagnosis;
  diagnosis.findings.assign(10'005,
                            {"empty-name", Severity::kInfo, "m", "", 0, 1, 1, 1, "", "", {}});
  diagnosis.omitted = {{"empty-name", Severity::kInfo, 5}};
  const Json data = parseJson(makeReportData(u"", Contents(), diagnosis));
  EXPECT_EQ(data["findings"].size(), 10'000U);
  EXPECT_EQ(data["omittedFindings"], 10);
}

// The packages listed have the sums of the totals.
TEST(ReportData, AddUpToTheTotalsOfRandomDocuments) {
  std::mt19937 random(6);
  for (int round = 0; round != 300; ++round) {
    const Contents contents = contentsOf(makeRandomDocument(random).json());
    const Json data = parseJson(makeReportData(u"", contents, Diagnosis()));
    const summary::Totals totals = summary::Tally(contents).totalsOfAll();
    std::int64_t toFetch = 0;
    std::int64_t unpacked = 0;
    std::int64_t deleted = 0;
    for (const Json& package : data["packagesToExtract"]) {
      toFetch += package[1].get<std::int64_t>();
      unpacked += package[2].get<std::int64_t>();
    }
    for (const Json& package : data["packagesToDelete"]) {
      deleted += package[1].get<std::int64_t>();
    }
    EXPECT_EQ(data["totals"]["bytesToFetch"], std::to_string(toFetch));
    EXPECT_EQ(data["totals"]["bytesUnpacked"], std::to_string(unpacked));
    EXPECT_EQ(data["totals"]["bytesDeleted"], std::to_string(deleted));
    EXPECT_EQ(totals.bytesToFetch.value(), toFetch);
    EXPECT_EQ(data["products"].size(), contents.products.size());
  }
}

}  // namespace
}  // namespace update_metadata_tool::report
