#include "install/update_metadata_parser/Diagnosis.h"

#include <algorithm>
#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace install::update_metadata_parser {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;

// A document with these sections beside the metadata.
std::string documentWith(const std::string& components, const std::string& products) {
  return R"({"metadata": {"arch": "any", "base": null, "target": null},)"
         "\n\"components\": " +
         components + ",\n\"products\": " + products + ",\n\"componentsWithFilesDeleted\": {}}";
}

std::string textOf(const ThrownException& exception) {
  return exception.type + ": " + exception.text;
}

TEST(DiagnosisOfADocumentThatLoads, HasNoExceptionAndSaysWhereAFindingIs) {
  const std::string text =
      documentWith(R"({"core": {"delete": {}, "extract": {}}})",
                   R"({"Suite": {"delete": ["core", "core"], "extract": []}})");
  const Diagnosis diagnosis = diagnose(text);
  EXPECT_TRUE(diagnosis.loads());
  EXPECT_FALSE(diagnosis.exception);
  EXPECT_EQ(diagnosis.readerMessage, "");
  EXPECT_THAT(diagnosis.omitted, IsEmpty());
  ASSERT_EQ(diagnosis.findings.size(), 3U);
  EXPECT_EQ(diagnosis.findings[0].rule, "null-release");
  EXPECT_EQ(diagnosis.findings[1].rule, "null-release");
  const Finding& finding = diagnosis.findings[2];
  EXPECT_EQ(finding.rule, "component-named-twice");
  EXPECT_EQ(finding.severity, Severity::kWarning);
  EXPECT_EQ(finding.message,
            "duplicate component 'core' in 'delete': it counts once in the answers");
  EXPECT_EQ(finding.advice, "remove the duplicate");
  EXPECT_EQ(finding.offset, text.rfind("\"core\""));
  EXPECT_EQ(finding.length, std::string_view("\"core\"").size());
  EXPECT_EQ(finding.line, 3U);
  EXPECT_EQ(finding.column, 43U);
  EXPECT_EQ(finding.pointer, "/products/Suite/delete/1");
  EXPECT_EQ(finding.item, "product 'Suite'");
  ASSERT_EQ(finding.related.size(), 1U);
  EXPECT_EQ(finding.related[0].offset, finding.offset - 8);
  EXPECT_EQ(finding.related[0].line, 3U);
  EXPECT_EQ(finding.related[0].column, 35U);
  EXPECT_EQ(finding.related[0].message, "the previous mention");
}

TEST(DiagnosisOfMalformedText, QuotesThePathAndHasTheReadersMessage) {
  DiagnosisOptions options;
  options.path = u"/srv/\u00FC.json";
  const Diagnosis diagnosis = diagnose("{\n]", options);
  EXPECT_FALSE(diagnosis.loads());
  EXPECT_EQ(textOf(diagnosis.exception.value()),
            "std::runtime_error: Error while parsing /srv/\xC3\xBC.json");
  EXPECT_THAT(diagnosis.readerMessage, HasSubstr("(Line 2, Column 1)"));
  ASSERT_EQ(diagnosis.findings.size(), 1U);
  EXPECT_EQ(diagnosis.findings[0].rule, "malformed-text");
  EXPECT_EQ(diagnosis.findings[0].severity, Severity::kError);
  EXPECT_EQ(diagnosis.findings[0].line, 2U);
}

TEST(DiagnosisOfAnIncompleteDocument, HasTheExactTypeOfTheException) {
  const Diagnosis diagnosis =
      diagnose(R"({"metadata": {"arch": "any", "base": null, "target": null}})");
  EXPECT_EQ(textOf(diagnosis.exception.value()), "std::out_of_range: map::at");
  EXPECT_EQ(diagnosis.readerMessage, "");
}

TEST(DiagnosisOfAnIncompleteDocument, SaysWhichSectionsAreMissing) {
  const Diagnosis diagnosis = diagnose("{}");
  ASSERT_EQ(diagnosis.findings.size(), 4U);
  for (const Finding& finding : diagnosis.findings) {
    EXPECT_EQ(finding.rule, "missing-section");
  }
}

// The places of comments and of text in front of the document stay those of the text itself.
TEST(DiagnosisOfMalformedText, CountsLinesInsideComments) {
  const Diagnosis diagnosis = diagnose("{ /*\n*/ \"a\": 1,\n}");
  ASSERT_GE(diagnosis.findings.size(), 2U);
  std::string places;
  for (const Finding& finding : diagnosis.findings) {
    if (finding.rule == "malformed-text") {
      places += std::to_string(finding.line) + ':' + std::to_string(finding.column) + ' ';
    }
  }
  EXPECT_EQ(places, "1:3 3:1 ");
}

TEST(DiagnosisWithProductData, LooksUpTheProducts) {
  const std::string text = documentWith("{}", R"({"Nobody's": {"delete": [], "extract": []}})");
  DiagnosisOptions options;
  options.productData =
      std::u16string(u"" UMP_SOURCE_DIR) + u"/examples/documents/small/product-data";
  std::string rules;
  for (const Finding& finding : diagnose(text, options).findings) {
    rules += std::string(finding.rule) + ' ';
  }
  EXPECT_THAT(rules, HasSubstr("unknown-product"));
  options.productData.reset();
  for (const Finding& finding : diagnose(text, options).findings) {
    EXPECT_NE(finding.rule, "unknown-product");
  }
}

TEST(DiagnosisOfManyProblems, CountsThoseThatItLeavesOut) {
  constexpr std::size_t kNulls = 100'007;
  std::string files = "null";
  for (std::size_t number = 1; number != kNulls; ++number) {
    files += ",null";
  }
  std::string text = documentWith("null", "null");
  text.insert(text.size() - 2, R"("core": {"help": {"size": 0, "files": [)" + files + "]}}");
  const Diagnosis diagnosis = diagnose(text);
  EXPECT_FALSE(diagnosis.loads());
  ASSERT_EQ(diagnosis.omitted.size(), 1U);
  EXPECT_EQ(diagnosis.omitted[0].rule, "non-string-element");
  EXPECT_EQ(diagnosis.omitted[0].severity, Severity::kError);
  const auto listed =
      std::count_if(diagnosis.findings.begin(), diagnosis.findings.end(),
                    [](const Finding& finding) { return finding.rule == "non-string-element"; });
  EXPECT_EQ(static_cast<std::size_t>(listed) + diagnosis.omitted[0].count, kNulls);
  EXPECT_GT(listed, 50'000);
}

TEST(Progress, IsReportedWhileADocumentIsChecked) {
  int calls = 0;
  DiagnosisOptions options;
  options.onProgress = [&calls] { ++calls; };
  diagnose(documentWith("{}", "{}"), options);
  EXPECT_GT(calls, 1);
}

TEST(Progress, MayEndADiagnosisWithAnException) {
  DiagnosisOptions options;
  options.onProgress = [] { throw std::range_error("enough"); };
  EXPECT_THROW(diagnose("{}", options), std::range_error);
}

}  // namespace
}  // namespace install::update_metadata_parser
