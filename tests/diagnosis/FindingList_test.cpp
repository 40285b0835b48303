#include "diagnosis/FindingList.h"

#include <cstddef>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "diagnosis/source/SourceTree.h"

namespace install::update_metadata_parser::diagnosis {
namespace {

std::size_t omittedOf(const FindingList& list, Rule rule) {
  return list.omitted()[static_cast<std::size_t>(rule)];
}

std::size_t countOf(const std::vector<Finding>& findings, Rule rule) {
  std::size_t count = 0;
  for (const Finding& finding : findings) {
    count += finding.rule == describe(rule).id ? 1U : 0U;
  }
  return count;
}

std::size_t textBytesOf(const std::vector<Finding>& findings) {
  std::size_t bytes = findings.size() * sizeof(Finding);
  for (const Finding& finding : findings) {
    bytes += finding.pointer.size() + finding.item.size() + finding.message.size() +
             finding.advice.size() + finding.related.size() * sizeof(RelatedPlace);
  }
  return bytes;
}

// An array of numbers in an object, whose only key is at the beginning of every pointer.
std::string textWithKey(std::size_t bytes, std::size_t numbers) {
  std::string text = "{\"" + std::string(bytes, 'k') + "\":[1";
  for (; numbers > 1; --numbers) {
    text += ",1";
  }
  return text + "]}";
}

constexpr std::size_t kFirstNumber = 3;

TEST(FindingList, CountsFindingsWhoseLongPointersExceedTheMemory) {
  constexpr std::size_t kCount = 30'000;
  const std::string text = textWithKey(4'000, kCount);
  const source::SourceTree tree(text);
  FindingList list;
  for (std::size_t number = 0; number != kCount; ++number) {
    list.add(Rule::kNegativeSize, tree, kFirstNumber + number, {"message", "advice"});
  }
  const std::vector<Finding> findings = list.take(tree);
  EXPECT_LE(textBytesOf(findings), FindingList::kMostBytesWithoutErrors);
  EXPECT_GT(textBytesOf(findings), FindingList::kMostBytesWithoutErrors * 8 / 10);
  EXPECT_EQ(findings.size() + omittedOf(list, Rule::kNegativeSize), kCount);
}

TEST(FindingList, KeepsAQuarterOfTheMemoryForErrors) {
  constexpr std::size_t kCount = 30'000;
  const std::string text = textWithKey(4'000, kCount);
  const source::SourceTree tree(text);
  FindingList list;
  // After everything else, when the rest of the memory is used up.
  for (std::size_t number = 0; number != kCount; ++number) {
    list.add(Rule::kNegativeSize, tree, kFirstNumber + number, {"message", "advice"});
  }
  constexpr std::size_t kErrors = 5'000;
  for (std::size_t number = kCount - kErrors; number != kCount; ++number) {
    list.add(Rule::kWrongKind, tree, kFirstNumber + number, {"message", "advice"});
  }
  const std::vector<Finding> findings = list.take(tree);
  EXPECT_EQ(countOf(findings, Rule::kWrongKind), kErrors);
  EXPECT_EQ(omittedOf(list, Rule::kWrongKind), 0U);
  EXPECT_EQ(countOf(findings, Rule::kNegativeSize) + omittedOf(list, Rule::kNegativeSize), kCount);
  EXPECT_LE(textBytesOf(findings), FindingList::kMostBytes);
}

TEST(FindingList, CountsFindingsWhoseTextsExceedTheMemory) {
  const std::string text = "[1]";
  const source::SourceTree tree(text);
  FindingList list;
  constexpr std::size_t kCount = 200;
  for (std::size_t number = 0; number != kCount; ++number) {
    list.add(Rule::kWrongKind, tree, 1, {std::string(1'000'000, 'm'), "advice"});
  }
  const std::vector<Finding> findings = list.take(tree);
  EXPECT_EQ(findings.size(), FindingList::kMostBytes / 1'000'000 - 1);
  EXPECT_EQ(findings.size() + omittedOf(list, Rule::kWrongKind), kCount);
  EXPECT_TRUE(list.hasErrors());
}

TEST(FindingList, GivesAVeryLongPointerUpForThatOfTheValueAround) {
  const std::string text = R"({"a~/b": {")" + std::string(5'000, 'k') + R"(": [1]}})";
  const source::SourceTree tree(text);
  FindingList list;
  for (std::size_t node = 0; node != tree.nodes().size(); ++node) {
    list.add(Rule::kNegativeSize, tree, node, {"message", "advice"});
  }
  for (const Finding& finding : list.take(tree)) {
    EXPECT_EQ(finding.pointer, finding.offset == 0 ? "" : "/a~0~1b");
  }
}

}  // namespace
}  // namespace install::update_metadata_parser::diagnosis
