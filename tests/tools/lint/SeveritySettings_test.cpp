#include "lint/SeveritySettings.h"

#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "diagnosis/Rule.h"
#include "lint/ReportWriter.h"
#include "lint/Severity.h"

namespace update_metadata_tool::lint {
namespace {

Finding findingOf(Rule rule) {
  const auto& description = install::update_metadata_parser::diagnosis::describe(rule);
  return {description.id, description.severity, "", "", 0, 1, 1, 1, "", "", {}, {}};
}

// The findings that remain of one finding of each of four rules, as "id severity".
std::vector<std::string> settle(const SeveritySettings& settings) {
  Diagnosis diagnosis;
  for (const Rule rule :
       {Rule::kNullValue, Rule::kRepeatedKey, Rule::kNullSection, Rule::kEmptyName}) {
    diagnosis.findings.push_back(findingOf(rule));
  }
  settings.applyTo(diagnosis);
  std::vector<std::string> left;
  for (const Finding& finding : diagnosis.findings) {
    left.push_back(std::string(finding.rule) + ' ' + nameOf(finding.severity));
  }
  return left;
}

using Left = std::vector<std::string>;

TEST(SeveritySettings, KeepTheDefaultSeverityOfEveryRuleAtFirst) {
  EXPECT_EQ(settle({}), (Left{"null-value error", "repeated-key warning", "null-section info",
                              "empty-name warning"}));
}

TEST(SeveritySettings, ChangeOnlyTheChosenRules) {
  SeveritySettings settings;
  EXPECT_EQ(settings.add("null-value=info"), "");
  EXPECT_EQ(settings.add("null-section=error"), "");
  EXPECT_EQ(settle(settings), (Left{"null-value info", "repeated-key warning", "null-section error",
                                    "empty-name warning"}));
  EXPECT_EQ(settings.severityOf(Rule::kNullSection), Severity::kError);
  EXPECT_EQ(settings.severityOf(Rule::kEmptyName), Severity::kWarning);
}

TEST(SeveritySettings, RemoveTheFindingsOfRulesThatAreOff) {
  SeveritySettings settings;
  EXPECT_EQ(settings.add("null-value=off"), "");
  EXPECT_EQ(settings.add("empty-name=off"), "");
  EXPECT_EQ(settle(settings), (Left{"repeated-key warning", "null-section info"}));
  EXPECT_EQ(settings.severityOf(Rule::kEmptyName), std::nullopt);
}

TEST(SeveritySettings, CountOmittedFindingsByTheirRules) {
  SeveritySettings settings;
  EXPECT_EQ(settings.add("null-value=warning"), "");
  EXPECT_EQ(settings.add("empty-name=off"), "");
  FileReport report;
  report.diagnosis.findings = {findingOf(Rule::kNullValue)};
  report.diagnosis.omitted = {{"null-value", Severity::kError, 10},
                              {"null-section", Severity::kInfo, 20},
                              {"empty-name", Severity::kWarning, 40}};
  settings.applyTo(report.diagnosis);
  EXPECT_EQ(report.diagnosis.omitted.size(), 2U);
  LintTotals totals;
  totals.count(report);
  EXPECT_EQ(totals.errors, 0U);
  EXPECT_EQ(totals.warnings, 11U);
  EXPECT_EQ(totals.infos, 20U);
}

TEST(SeveritySettings, UseTheLastSettingOfARule) {
  SeveritySettings settings;
  EXPECT_EQ(settings.add("repeated-key=off"), "");
  EXPECT_EQ(settings.add("repeated-key=error"), "");
  EXPECT_EQ(settings.severityOf(Rule::kRepeatedKey), Severity::kError);
}

struct WrongChoice {
  const char* name;
  std::string choice;
  std::string complaint;
};

std::ostream& operator<<(std::ostream& out, const WrongChoice& row) {
  return out << row.name;
}

class WrongChoices : public ::testing::TestWithParam<WrongChoice> {};

TEST_P(WrongChoices, AreRejectedWithTheReason) {
  EXPECT_EQ(SeveritySettings().add(GetParam().choice), GetParam().complaint);
}

const WrongChoice kWrongChoices[] = {
    {"Empty", "", "'(empty)' is not of the form RULE=SEVERITY"},
    {"RuleAlone", "null-value", "'null-value' is not of the form RULE=SEVERITY"},
    {"UnknownRule", "null=off", "'null' is not a rule; --list-rules lists them"},
    {"EmptyRule", "=off", "'(empty)' is not a rule; --list-rules lists them"},
    {"UnknownSeverity", "null-value=fatal",
     "'fatal' is not a severity; use off, info, warning or error"},
    {"TwoSigns", "null-value=off=off",
     "'off=off' is not a severity; use off, info, warning or error"},
};
INSTANTIATE_TEST_SUITE_P(Choices, WrongChoices, ::testing::ValuesIn(kWrongChoices),
                         [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace update_metadata_tool::lint
