#include "diagnosis/Indentation.h"

#include <algorithm>
#include <cstddef>
#include <ostream>
#include <string>

#include <gtest/gtest.h>

namespace install::update_metadata_parser::diagnosis {
namespace {

struct Nesting {
  const char* name;
  std::string text;
  std::size_t openLine;    ///< 0: nothing is found
  std::size_t beforeLine;  ///< from 1
};

std::ostream& operator<<(std::ostream& out, const Nesting& row) {
  return out << row.name;
}

std::size_t lineOf(const std::string& text, std::size_t offset) {
  return 1 + static_cast<std::size_t>(std::count(
                 text.begin(), text.begin() + static_cast<std::ptrdiff_t>(offset), '\n'));
}

class BracketJudgedByIndentation : public ::testing::TestWithParam<Nesting> {};

TEST_P(BracketJudgedByIndentation, IsTheOneThatIsNotClosed) {
  const std::string& text = GetParam().text;
  const auto found = findUnclosedByIndentation(source::SourceTree(text));
  EXPECT_EQ(found ? lineOf(text, found->offset) : 0, GetParam().openLine);
  EXPECT_EQ(found ? lineOf(text, found->before) : 0, GetParam().beforeLine);
}

const std::string kBeginning = "{\n  \"a\": {\n    \"x\": 1,\n    \"y\": 2\n  },\n";

const Nesting kNestings[] = {
    {"WholeText", kBeginning + "  \"b\": {\n    \"x\": 1\n  }\n}", 0, 0},
    {"ClosingBracketLessDeep",
     kBeginning + "  \"b\": {\n    \"c\": {\n      \"x\": 1\n  },\n  \"d\": 1\n}", 7, 9},
    {"MemberLessDeep", kBeginning + "  \"b\": {\n    \"x\": 1,\n  \"d\": 1\n}", 6, 8},
    {"BraceThatIsNotLastOfItsLine", kBeginning + "  \"b\": { \"x\": 1,\n  \"d\": 1\n}", 6, 7},
    {"ElementLessDeep", kBeginning + "  \"b\": [\n    1,\n  2\n}", 6, 8},
    {"BraceOnALineOfItsOwn", kBeginning + "  \"b\":\n  {\n    \"x\": 1,\n  \"d\": 1\n}", 7, 9},
    {"Tabs", "{\n\t\"a\": {\n\t\t\"x\": 1,\n\t\t\"y\": 2,\n\t\"b\": 1\n}", 2, 5},
    {"CutOffText", kBeginning + "  \"b\": {\n    \"x\"", 0, 0},
    {"NoIndentation", "{\n\"a\": {\n\"x\": 1,\n\"y\": 2,\n\"b\": 1\n}", 0, 0},
    {"OneLine", "{\"a\": {\"x\": 1, \"y\": 2, \"b\": 1}", 0, 0},
    {"TooFewLines", "{\n  \"a\": {\n  \"x\": 1\n}", 0, 0},
    {"TabsAndBlanks", "{\n  \"a\": {\n\t\t\"x\": 1,\n    \"y\": 2,\n  \"b\": 1\n}", 0, 0},
    {"MembersAtTwoDepths", "{\n  \"a\": {\n    \"x\": 1,\n      \"y\": 2,\n  \"b\": 1\n}", 0, 0},
    {"ClosingBracketTooDeep", kBeginning + "  \"b\": {\n    \"x\": 1\n    },\n  \"c\": {\n  1", 0,
     0},
};
INSTANTIATE_TEST_SUITE_P(Texts, BracketJudgedByIndentation, ::testing::ValuesIn(kNestings),
                         [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace install::update_metadata_parser::diagnosis
