#include "diagnosis/ReferenceChecks.h"

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "install/update_metadata_parser/Diagnosis.h"

namespace install::update_metadata_parser::diagnosis {
namespace {

using ::testing::ElementsAre;

// The messages of a rule about a document with these sections.
std::vector<std::string> messagesOf(const std::string& rule, const std::string& components,
                                    const std::string& products, const std::string& files) {
  std::vector<std::string> messages;
  for (const Finding& finding :
       diagnose(R"({"metadata": {"arch": "any", "base": null, "target": null}, "components": )" +
                components + R"(, "products": )" + products +
                R"(, "componentsWithFilesDeleted": )" + files + '}')
           .findings) {
    if (finding.rule == rule) {
      messages.push_back(finding.message);
    }
  }
  return messages;
}

constexpr const char* kTwoComponents =
    R"({"a": {"delete": {"b_c": {"size": 1}}, "extract": {}},
        "a_b": {"delete": {"c": {"size": 1}}, "extract": {}}})";

TEST(PackagesWithOneKey, AreInTheAnswersOnce) {
  EXPECT_THAT(messagesOf("package-key-collision", kTwoComponents,
                         R"({"Suite": {"delete": ["a", "a_b"], "extract": []}})", "{}"),
              ElementsAre("this package has the same key, 'a_b_c', as package 'b_c' to delete of "
                          "component 'a'; the answers contain the key once"));
}

TEST(PackagesWithOneKey, AreReportedEvenIfNoProductUsesBothComponents) {
  EXPECT_THAT(messagesOf("package-key-collision", kTwoComponents,
                         R"({"Suite": {"delete": ["a"], "extract": []}})", "{}"),
              ElementsAre("this package has the same key, 'a_b_c', as package 'b_c' to delete of "
                          "component 'a'; no product uses both components yet"));
}

TEST(PackagesWithOneKey, LoseTheFilesOfTheFirst) {
  EXPECT_THAT(
      messagesOf(
          "package-key-collision", "{}", "{}",
          R"({"a": {"b_c": {"size": 1, "files": []}}, "a_b": {"c": {"size": 1, "files": []}}})"),
      ElementsAre("this package has the same key, 'a_b_c', as package 'b_c' with files to delete "
                  "of component 'a'; the answers contain the files and size of that package, not "
                  "of this one"));
}

TEST(UnknownComponent, IsReportedOnlyIfTheComponentsCanBeRead) {
  constexpr const char* kProducts = R"({"Suite": {"delete": [], "extract": ["a"]}})";
  EXPECT_EQ(messagesOf("unknown-component", "{}", kProducts, "{}").size(), 1U);
  EXPECT_EQ(messagesOf("unknown-component", "null", kProducts, "{}").size(), 1U);
  EXPECT_EQ(messagesOf("unknown-component", "[]", kProducts, "{}").size(), 0U);
}

}  // namespace
}  // namespace install::update_metadata_parser::diagnosis
