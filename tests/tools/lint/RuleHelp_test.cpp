#include "lint/RuleHelp.h"

#include <sstream>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "diagnosis/Rule.h"
#include "lint/RuleExplanations.h"
#include "lint/Severity.h"

namespace update_metadata_tool::lint {
namespace {

using install::update_metadata_parser::diagnosis::allRules;
using install::update_metadata_parser::diagnosis::RuleDescription;
using ::testing::HasSubstr;

TEST(Explanation, HasTheIdTheSeverityTheSummaryAndTheText) {
  for (const RuleDescription& description : allRules()) {
    std::ostringstream explanation;
    writeExplanation(description.rule, {}, explanation);
    EXPECT_EQ(explanation.str(), std::string(description.id) + " (" + nameOf(description.severity) +
                                     "): " + description.summary + "\n\n" +
                                     explain(description.rule) + '\n');
  }
}

TEST(RulePage, ExplainsEveryRuleUnderItsId) {
  std::ostringstream page;
  writeRulePage(page);
  for (const RuleDescription& description : allRules()) {
    const std::string severity = nameOf(description.severity);
    EXPECT_THAT(page.str(),
                HasSubstr(std::string("\n## ") + description.id + "\n\n" + severity + ": " +
                          description.summary + ".\n\n" + explain(description.rule) + '\n'));
  }
}

}  // namespace
}  // namespace update_metadata_tool::lint
