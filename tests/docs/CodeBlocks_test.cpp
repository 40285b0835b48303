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

// The file that a code block is taken from, relative to the root of the project.
std::string sourceOf(const CodeBlock& block, const std::string& page) {
  return (fs::path(page).parent_path() / block.sourceFile).lexically_normal().string();
}

class Pages : public ::testing::TestWithParam<const char*> {};

TEST_P(Pages, ShowProgramsAndProjectsAsTheyAreInTheirFiles) {
  for (const CodeBlock& block :
       test_support::findCodeBlocks(test_support::readProjectFile(GetParam()))) {
    if (block.language == "cpp" || block.language == "cmake") {
      ASSERT_THAT(block.sourceFile, Not(IsEmpty())) << block.text;
    }
    if (!block.sourceFile.empty()) {
      const std::string file = sourceOf(block, GetParam());
      EXPECT_THAT(test_support::readProjectFile(file), HasSubstr(block.text)) << file;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(WithCode, Pages, ::testing::Values("README.md", "docs/guide.md"));

TEST(Guide, ShowsPartOfEachOfItsPrograms) {
  std::set<std::string> shown;
  for (const CodeBlock& block :
       test_support::findCodeBlocks(test_support::readProjectFile("docs/guide.md"))) {
    shown.insert(sourceOf(block, "docs/guide.md"));
  }
  std::set<std::string> unshown;
  for (const auto& entry : fs::directory_iterator(UMP_SOURCE_DIR "/examples/guide")) {
    const std::string file = "examples/guide/" + entry.path().filename().string();
    if (shown.count(file) == 0) {
      unshown.insert(file);
    }
  }
  EXPECT_THAT(unshown, IsEmpty());
  EXPECT_GE(shown.size(), 3U);
}

}  // namespace
