// docs/lint.md shows the rules as the command explains them, and what it says of a document.

#include <cstddef>
#include <string>

#include <gtest/gtest.h>

#include "lint/Rule.h"
#include "support/RunTool.h"
#include "support/StoredText.h"

namespace update_metadata_tool {
namespace {

const std::string kManual = UMP_SOURCE_DIR "/docs/lint.md";
const std::string kMark = "<!-- The rules are written by scripts/update-golden. -->\n";

std::string makeSection(const RuleDescription& description) {
  std::string severity = nameOf(description.severity);
  severity.front() = static_cast<char>(severity.front() - 'a' + 'A');
  return std::string("\n### ") + description.id + "\n\n" + severity + ": " + description.summary +
         ".\n\n" + description.explanation + '\n';
}

std::string makeSections() {
  std::string sections;
  for (const RuleDescription& description : allRules()) {
    sections += makeSection(description);
  }
  return sections;
}

TEST(RuleManual, HasEveryRuleAsTheCommandExplainsIt) {
  const std::string manual = test_support::readBytes(kManual);
  const std::size_t mark = manual.find(kMark);
  ASSERT_NE(mark, std::string::npos);
  const std::string expected = manual.substr(0, mark + kMark.size()) + makeSections();
  EXPECT_EQ(expected, test_support::storedText(kManual, expected));
}

TEST(Manual, ShowsWhatTheCommandSaysOfARepeatedKey) {
  const std::string said =
      test_support::readBytes(UMP_SOURCE_DIR "/tests/golden/lint/repeated-key/expected.txt");
  EXPECT_NE(test_support::readBytes(kManual).find("```\n" + said + "```\n"), std::string::npos);
}

}  // namespace
}  // namespace update_metadata_tool
