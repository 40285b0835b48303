#include <algorithm>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "docs/Markdown.h"
#include "foundation/json/Value.h"
#include "json/ParseResult.h"
#include "support/Patterns.h"

namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;

using Rows = std::vector<std::vector<std::string>>;

const std::string& errorsPage() {
  static const std::string page = test_support::readProjectFile("docs/errors.md");
  return page;
}

// The rows that explain an error: its text or code, a second cell, the cause and the remedy.
Rows explainedErrors() {
  Rows rows = test_support::findTableRows(errorsPage());
  rows.erase(
      std::remove_if(rows.begin(), rows.end(), [](const auto& row) { return row.size() != 4; }),
      rows.end());
  return rows;
}

// The text of a literal, with its single-character escapes decoded.
std::string unescaped(const std::string& literal) {
  std::string text;
  for (std::size_t index = 0; index < literal.size(); ++index) {
    if (literal[index] == '\\') {
      ++index;
      text += literal[index] == 'n' ? '\n' : literal[index] == 't' ? '\t' : literal[index];
    } else {
      text += literal[index];
    }
  }
  return text;
}

// The narrow string literals in the library's sources, except those in comments and static
// assertions. A diagnosis throws nothing that a load does not.
std::vector<std::string> literalsOfTheLibrary() {
  constexpr const char* kNotCode = R"(//[^\n]*|static_assert\([^;]*;|#include[^\n]*)";
  constexpr const char* kLiteral = R"re((?:^|[^u\\'])"((?:[^"\\\n]|\\.)*)")re";
  std::vector<std::string> literals;
  for (const char* root : {"src", "platform"}) {
    for (const auto& entry : fs::recursive_directory_iterator(fs::path(UMP_SOURCE_DIR) / root)) {
      const std::string path = entry.path().lexically_relative(UMP_SOURCE_DIR).string();
      const fs::path extension = entry.path().extension();
      if ((extension != ".cpp" && extension != ".h") || path.rfind("src/diagnosis/", 0) == 0) {
        continue;
      }
      const std::string source =
          test_support::replaceMatches(test_support::readProjectFile(path), kNotCode, "");
      for (const std::string& literal : test_support::matchesIn(source, kLiteral, 1)) {
        literals.push_back(unescaped(literal));
      }
    }
  }
  return literals;
}

// Whether a literal is a sentence for people, or part of one.
bool isOfASentence(const std::string& literal) {
  return !test_support::matchesIn(literal, "[a-z]{2}").empty() &&
         literal.find(' ') != std::string::npos;
}

TEST(ErrorsPage, GivesTextTypeOrCodeCauseAndRemedyOfEachError) {
  const Rows errors = explainedErrors();
  for (const auto& row : errors) {
    EXPECT_THAT(row, Not(::testing::Contains(std::string()))) << row.front();
  }
  EXPECT_GE(errors.size(), 30U);
}

TEST(ErrorsPage, ExplainsEveryResultOfTheTextReaderUnderItsCode) {
  Rows codes;
  for (const auto& row : explainedErrors()) {
    if (row[0].substr(0, 2) == "E0" && row[1] != "`Parse incomplete`") {
      codes.push_back({row[0], row[1]});
    }
  }
  Rows expected;
  const auto expect = [&](int number, const std::string& description) {
    const std::string digits = std::to_string(number);
    if (number != foundation::json::kSuccess) {
      expected.push_back(
          {"E" + std::string(4 - digits.size(), '0') + digits, "`" + description + "`"});
    }
  };
#define UMP_EXPECT(NAME, NUMBER, DESCRIPTION) expect(NUMBER, DESCRIPTION);
  FOUNDATION_JSON_PARSE_RESULTS(UMP_EXPECT)
#undef UMP_EXPECT
  EXPECT_EQ(codes, expected);
}

TEST(ErrorsPage, ContainsEverySentenceOfTheLibrary) {
  std::set<std::string> missing;
  for (const std::string& literal : literalsOfTheLibrary()) {
    if (isOfASentence(literal) && errorsPage().find(literal) == std::string::npos) {
      missing.insert(literal);
    }
  }
  EXPECT_THAT(missing, IsEmpty());
}

TEST(ErrorsPage, ExplainsNoTextThatTheLibraryDoesNotHave) {
  const std::vector<std::string> literals = literalsOfTheLibrary();
  const auto isInALiteral = [&](const std::string& part) {
    return std::any_of(literals.begin(), literals.end(), [&](const std::string& literal) {
      return literal.find(part) != std::string::npos;
    });
  };
  // The variable part of a message, and the punctuation between it and the text.
  constexpr const char* kPlaceholder = "[^A-Za-z]*[A-Z]{3,}(: |:)?";
  std::set<std::string> invented;
  for (const auto& row : explainedErrors()) {
    const std::string text = test_support::codeIn(row[0].front() == 'E' ? row[1] : row[0]);
    for (const std::string& part : test_support::partsBetween(text, kPlaceholder)) {
      if (isOfASentence(part) && !isInALiteral(part)) {
        invented.insert(part);
      }
    }
  }
  EXPECT_THAT(invented, IsEmpty());
}

TEST(ErrorsPage, NamesEveryKindOfValue) {
  using namespace foundation::json;
  for (const char* kind :
       {traits<Undefined>::name, traits<std::nullptr_t>::name, traits<bool>::name,
        traits<double>::name, traits<std::string>::name, traits<Array>::name, traits<Object>::name,
        traits<float>::name, traits<std::int64_t>::name, traits<std::uint64_t>::name}) {
    EXPECT_NE(errorsPage().find("`" + std::string(kind) + "`"), std::string::npos) << kind;
  }
}

}  // namespace
