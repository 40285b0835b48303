#include "diagnosis/Rule.h"

#include <algorithm>
#include <cctype>
#include <optional>
#include <set>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

namespace install::update_metadata_parser::diagnosis {
namespace {

bool isIdCharacter(char character) {
  return std::islower(static_cast<unsigned char>(character)) != 0 ||
         std::isdigit(static_cast<unsigned char>(character)) != 0 || character == '-';
}

TEST(EachRule, IsFoundByItsIdWhichNoOtherHas) {
  std::set<std::string_view> ids;
  for (const RuleDescription& description : allRules()) {
    const std::string_view id = description.id;
    EXPECT_TRUE(ids.insert(id).second) << id;
    EXPECT_TRUE(!id.empty() && std::all_of(id.begin(), id.end(), isIdCharacter)) << id;
    EXPECT_EQ(findRule(id), description.rule) << id;
    EXPECT_EQ(describe(description.rule).id, id);
  }
  EXPECT_EQ(ids.size(), kRuleCount);
}

TEST(EachRule, HasASummaryOfOneLineThatIsASentenceWithoutItsFullStop) {
  for (const RuleDescription& description : allRules()) {
    const std::string_view summary = description.summary;
    ASSERT_FALSE(summary.empty()) << description.id;
    EXPECT_LE(summary.size(), 80U) << description.id;
    EXPECT_EQ(summary.find('\n'), std::string_view::npos) << description.id;
    EXPECT_NE(summary.back(), '.') << description.id;
    EXPECT_EQ(std::islower(static_cast<unsigned char>(summary.front())), 0) << description.id;
  }
}

TEST(RuleLookUp, FindsNothingByAnIdThatNoRuleHas) {
  EXPECT_EQ(findRule("no-such-rule"), std::nullopt);
  EXPECT_EQ(findRule("Repeated-Key"), std::nullopt);
  EXPECT_EQ(findRule(""), std::nullopt);
}

}  // namespace
}  // namespace install::update_metadata_parser::diagnosis
