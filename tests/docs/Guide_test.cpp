#include <filesystem>
#include <set>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "docs/Markdown.h"

namespace {

namespace fs = std::filesystem;
using test_support::CodeBlock;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

TEST(Guide, ShowsProgramsAndProjectsAsTheyStandInTheirFiles) {
  for (const CodeBlock& block :
       test_support::findCodeBlocks(test_support::readProjectFile("docs/guide.md"))) {
    if (block.language == "cpp" || block.language == "cmake") {
      ASSERT_THAT(block.sourceFile, Not(IsEmpty())) << block.text;
    }
    if (!block.sourceFile.empty()) {
      const fs::path file = (fs::path("docs") / block.sourceFile).lexically_normal();
      EXPECT_THAT(test_support::readProjectFile(file.string()), HasSubstr(block.text)) << file;
    }
  }
}

TEST(Guide, ShowsSomethingOfEveryProgramThatWasWrittenForIt) {
  std::set<std::string> shown;
  for (const CodeBlock& block :
       test_support::findCodeBlocks(test_support::readProjectFile("docs/guide.md"))) {
    shown.insert(block.sourceFile);
  }
  std::set<std::string> unshown;
  for (const auto& entry : fs::directory_iterator(UMP_SOURCE_DIR "/examples/guide")) {
    const std::string link = "../examples/guide/" + entry.path().filename().string();
    if (shown.count(link) == 0) {
      unshown.insert(link);
    }
  }
  EXPECT_THAT(unshown, IsEmpty());
  EXPECT_GE(shown.size(), 3U);
}

}  // namespace
