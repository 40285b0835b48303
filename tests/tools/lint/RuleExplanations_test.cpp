#include "lint/RuleExplanations.h"

#include <sstream>
#include <string>

#include <gtest/gtest.h>

namespace update_metadata_tool::lint {
namespace {

TEST(EachRule, IsExplainedInLinesThatFitATerminalAndSaysWhatToDo) {
  for (const auto& description : install::update_metadata_parser::diagnosis::allRules()) {
    const std::string explanation = explain(description.rule);
    EXPECT_NE(explanation.find("\nWhat to do: "), std::string::npos) << description.id;
    EXPECT_EQ(explanation.back(), '.') << description.id;
    std::istringstream lines(explanation);
    for (std::string line; std::getline(lines, line);) {
      EXPECT_LE(line.size(), 80U) << description.id << ": " << line;
    }
  }
}

}  // namespace
}  // namespace update_metadata_tool::lint
