#include "diagnosis/ShapeChecks.h"

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "install/update_metadata_parser/Diagnosis.h"

namespace install::update_metadata_parser::diagnosis {
namespace {

using ::testing::Contains;

// The findings about a document with this section, as "rule: message".
std::vector<std::string> findingsOf(const std::string& components) {
  std::vector<std::string> findings;
  for (const Finding& finding :
       diagnose(R"({"metadata": {"arch": "any", "base": null, "target": null}, "components": )" +
                components + R"(, "products": {}, "componentsWithFilesDeleted": {}})")
           .findings) {
    findings.push_back(std::string(finding.rule) + ": " + finding.message);
  }
  return findings;
}

TEST(MissingName, IsThatOfThePackageIfAMemberOfAPackageIsInItsPlace) {
  EXPECT_THAT(findingsOf(R"({"core": {"delete": {"size": null}, "extract": {}}})"),
              Contains("null-value: package 'size' must be an object, not null; the name of a "
                       "package seems to be missing around it"));
  EXPECT_THAT(findingsOf(R"({"core": {"delete": {}, "extract": {"files": []}}})"),
              Contains("wrong-kind: package 'files' must be an object, not an array; the name of a "
                       "package seems to be missing around it"));
}

TEST(MissingName, IsNotThatOfAComponentThatHasThePackagesOfOne) {
  EXPECT_THAT(
      findingsOf(R"({"extract": {"delete": {}, "extract": {}}})"),
      Contains("unused-component: no product uses this component, so its packages are ignored"));
}

TEST(Name, HasNoControlCharacter) {
  EXPECT_THAT(
      findingsOf("{\"a\x7F\": {\"delete\": {}, \"extract\": {}}}"),
      Contains(
          "control-character: the name of the component contains the control character U+007F"));
}

}  // namespace
}  // namespace install::update_metadata_parser::diagnosis
