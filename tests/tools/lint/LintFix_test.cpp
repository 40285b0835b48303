// lint --fix on files.

#include <algorithm>
#include <cstdlib>
#include <ostream>
#include <random>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "lint/LintCommand.h"
#include "lint/UnifiedDiff.h"
#include "support/RunTool.h"
#include "support/TemporaryFolder.h"

namespace update_metadata_tool::lint {
namespace {

using test_support::readBytes;
using test_support::runTool;
using test_support::TemporaryFolder;
using test_support::ToolRun;
using test_support::ToolSurroundings;
using ::testing::HasSubstr;

constexpr int kNoErrorLeft = static_cast<int>(command::ExitCode::kDone);
constexpr int kErrorLeft = static_cast<int>(command::ExitCode::kFailed);
constexpr int kNotFixed = static_cast<int>(command::ExitCode::kTrouble);

const std::string kFixed =
    "{\"metadata\": {\"arch\": \"x\", \"base\": null, \"target\": null},\n"
    " \"components\": {},\n"
    " \"products\": {},\n"
    " \"componentsWithFilesDeleted\": {}}";

const std::string kFaulty =
    "{\"metadata\": {\"arch\": \"x\", \"base\": null, \"target\": null},\n"
    " \"components\": null,\n"
    " \"products\": {},\n"
    " \"componentsWithFilesDeleted\": {}}\n";

// Two releases that are null are left.
const std::string kLeft = "\n1 file checked: 2 warnings\n";

class LintFix : public ::testing::Test {
 protected:
  LintFix() {
    folder_.writeFile("a.json", kFaulty);
    around_.folder = folder_.nativePath();
  }

  ToolRun lint(std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin(), {"lint", "--fix"});
    return runTool(arguments, around_);
  }

  std::string contentOf(const std::string& name) const {
    return readBytes(folder_.nativePath(name));
  }

  TemporaryFolder folder_;
  ToolSurroundings around_;
};

TEST_F(LintFix, ReplacesTheFileAndReportsWhatIsLeft) {
  const ToolRun run = lint({"a.json"});
  EXPECT_EQ(run.exitCode, kNoErrorLeft);
  EXPECT_EQ(run.err,
            "a.json:2:16: fixed: 'components' is null, which is read as empty [null-section]\n"
            "a.json:4:35: fixed: line feed after the document [text-around-value]\n"
            "update-metadata: 'a.json' was changed by 2 fixes\n");
  EXPECT_THAT(run.out, HasSubstr(kLeft));
  EXPECT_EQ(contentOf("a.json"), kFixed);
}

TEST_F(LintFix, ChangesNothingASecondTime) {
  lint({"a.json"});
  const ToolRun run = lint({"a.json"});
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(run.exitCode, kNoErrorLeft);
  EXPECT_EQ(contentOf("a.json"), kFixed);
}

TEST_F(LintFix, ExitsWith1ForErrorsThatAreLeft) {
  folder_.writeFile("b.json", "{\"a\": what}\n");
  EXPECT_EQ(lint({"b.json"}).exitCode, kErrorLeft);
  EXPECT_EQ(lint({"--strict", "a.json"}).exitCode, kErrorLeft);
}

TEST_F(LintFix, MentionsSuggestedFixesAndAppliesThemOnRequest) {
  folder_.writeFile("a.json", "{'metadata'" + kFixed.substr(kFixed.find(':')));
  const ToolRun safe = lint({"a.json"});
  EXPECT_EQ(safe.exitCode, kErrorLeft);
  EXPECT_EQ(safe.err,
            "update-metadata: 'a.json' has at least 1 suggested fix, which --suggested applies\n");
  EXPECT_EQ(lint({"--suggested", "a.json"}).exitCode, kNoErrorLeft);
  EXPECT_EQ(contentOf("a.json"), kFixed);
}

TEST_F(LintFix, ShowsADiffAndChangesNothingInADryRun) {
  const std::string diff =
      "--- a.json\n"
      "+++ a.json\n"
      "@@ -1,4 +1,4 @@\n"
      " {\"metadata\": {\"arch\": \"x\", \"base\": null, \"target\": null},\n"
      "- \"components\": null,\n"
      "+ \"components\": {},\n"
      "  \"products\": {},\n"
      "- \"componentsWithFilesDeleted\": {}}\n"
      "+ \"componentsWithFilesDeleted\": {}}\n"
      "\\ No newline at end of file\n";
  EXPECT_EQ(
      lint({"--dry-run", "a.json"}),
      (ToolRun{kNoErrorLeft, diff,
               "a.json:2:16: fix: 'components' is null, which is read as empty [null-section]\n"
               "a.json:4:35: fix: line feed after the document [text-around-value]\n"
               "update-metadata: 'a.json' would be changed by 2 fixes\n"}));
  EXPECT_EQ(contentOf("a.json"), kFaulty);
}

TEST_F(LintFix, WritesFixedStandardInputToStandardOutput) {
  around_.inFile = folder_.nativePath("a.json");
  const ToolRun run = lint({"-"});
  EXPECT_EQ(run.exitCode, kNoErrorLeft);
  EXPECT_EQ(run.out, kFixed);
  EXPECT_THAT(run.err, HasSubstr(kLeft));
}

TEST_F(LintFix, ReportsAsJson) {
  const ToolRun run = lint({"--format", "json", "a.json"});
  EXPECT_THAT(run.out, HasSubstr(R"("errors":0,"warnings":2)"));
  EXPECT_EQ(contentOf("a.json"), kFixed);
}

TEST_F(LintFix, KeepsTheFileWhenThereIsNoSpaceForANewOne) {
  const std::string large =
      kFaulty.substr(0, 1) + "\"note\": \"" + std::string(5000, 'x') + "\", " + kFaulty.substr(1);
  folder_.writeFile("a.json", large);
  around_.fileSize = 4096;
  const ToolRun run = lint({"--format", "json", "a.json"});
  EXPECT_EQ(run.exitCode, kNotFixed);
  EXPECT_THAT(run.err, HasSubstr("update-metadata: 'a.json' was not changed; check that it is "));
  EXPECT_EQ(contentOf("a.json"), large);
}

TEST_F(LintFix, DoesNotReadAPipe) {
  folder_.makeFifo("pipe");
  const ToolRun run = lint({"pipe"});
  EXPECT_EQ(run.exitCode, kNotFixed);
  EXPECT_THAT(run.err, HasSubstr("it is not a regular file; pipe its content to 'lint --fix -'"));
}

TEST_F(LintFix, DoesNotReplaceAFileThroughADescriptor) {
  around_.inFile = folder_.nativePath("a.json");
  for (const char* name : {"/dev/stdin", "/dev/fd/0", "/proc/self/fd/0"}) {
    const ToolRun run = lint({name});
    EXPECT_EQ(run.exitCode, kNotFixed);
    EXPECT_THAT(run.err, HasSubstr("it is not a regular file; pipe its content to 'lint --fix -'"));
  }
  EXPECT_EQ(contentOf("a.json"), kFaulty);
}

TEST_F(LintFix, ReportsAFileThatCannotBeRead) {
  const ToolRun run = lint({"gone.json", "a.json"});
  EXPECT_EQ(run.exitCode, kNotFixed);
  EXPECT_THAT(run.err, HasSubstr("'gone.json' could not be loaded; check the path\n"));
  EXPECT_EQ(contentOf("a.json"), kFixed);
}

TEST_F(LintFix, RejectsOptionsThatDoNotFit) {
  for (const std::vector<std::string>& arguments :
       std::vector<std::vector<std::string>>{{"--dry-run", "--format", "json", "a.json"},
                                             {"-", "a.json"},
                                             {"--format", "sarif", "-"}}) {
    const ToolRun run = lint(arguments);
    EXPECT_EQ(run.exitCode, kNotFixed);
    EXPECT_EQ(run.out, "");
  }
  for (const char* option : {"--suggested", "--dry-run"}) {
    EXPECT_EQ(runTool({"lint", option, "a.json"}, around_).exitCode, kNotFixed);
  }
  EXPECT_EQ(contentOf("a.json"), kFaulty);
}

/// A document with a fix that makes nothing better.
struct UnprovedFix {
  const char* name;
  std::string document;
  std::string failure;
};

std::ostream& operator<<(std::ostream& out, const UnprovedFix& row) {
  return out << row.name;
}

class LintFixWithoutProof : public LintFix, public ::testing::WithParamInterface<UnprovedFix> {};

TEST_P(LintFixWithoutProof, LeavesTheFileAndSaysSo) {
  const UnprovedFix& row = GetParam();
  folder_.writeFile("a.json", row.document);
  const std::string message =
      "update-metadata: 'a.json' was not fixed at " + row.failure + " could not be proved\n";
  EXPECT_EQ(lint({"--suggested", "--dry-run", "a.json"}), (ToolRun{kErrorLeft, "", message}));
  const ToolRun run = lint({"--suggested", "a.json"});
  EXPECT_EQ(run.exitCode, kErrorLeft);
  EXPECT_EQ(run.err, message);
  EXPECT_EQ(contentOf("a.json"), row.document);
}

const UnprovedFix kUnprovedFixes[] = {
    {"ANullWouldBeNoKey", "{\n None\"a\": 1}", "line 2: the fix of malformed-text"},
    {"TheSectionWouldHaveMoreErrors",
     "{\"metadata\": {\"arch\": \"x\", \"base\": null, \"target\": null},\n"
     " \"components\": {},\n"
     " \"prodcts\": {\"P\": {\"delete\": [5], \"extract\": [6]}},\n"
     " \"componentsWithFilesDeleted\": {}}",
     "line 3: the fix of unlisted-member"},
    {"TheSectionWouldHaveATypedValue",
     "{\"metadata\": {\"arch\": \"x\", \"base\": null, \"target\": null},\n"
     " \"compnents\": {\"c\": {\"qzdata\": [1], \"qztype\": \"uint;2\"}},\n"
     " \"products\": {},\n"
     " \"componentsWithFilesDeleted\": {}}",
     "line 2: the fix of unlisted-member"},
};
INSTANTIATE_TEST_SUITE_P(Documents, LintFixWithoutProof, ::testing::ValuesIn(kUnprovedFixes),
                         [](const auto& row) { return row.param.name; });

// --- the diff ---------------------------------------------------------------------------------

TEST(UnifiedDiff, IsEmptyForEqualTexts) {
  EXPECT_EQ(unifiedDiff("a", "", ""), "");
  EXPECT_EQ(unifiedDiff("a", "x\ny", "x\ny"), "");
}

TEST(UnifiedDiff, WritesNamesAsPatchReadsThem) {
  EXPECT_THAT(unifiedDiff("a b", "x", ""), HasSubstr("--- a b\t\n+++ a b\t\n"));
  EXPECT_THAT(unifiedDiff("a\n\"", "x", ""), HasSubstr("--- \"a\\012\\\"\"\n"));
}

// Applies a diff with the system's patch; returns the patched text.
std::string patched(const TemporaryFolder& folder, const std::string& text,
                    const std::string& diff) {
  folder.writeFile("text", text);
  folder.writeFile("changes", diff);
  const std::string command =
      "cd '" + folder.nativePath() + "' && patch --binary --fuzz=0 -s text changes 2>&1";
  EXPECT_EQ(std::system(command.c_str()), 0) << diff;
  return readBytes(folder.nativePath("text"));
}

TEST(UnifiedDiff, IsReadByPatch) {
  if (std::system("patch --version > /dev/null 2>&1") != 0) {
    GTEST_SKIP() << "needs patch";
  }
  const TemporaryFolder folder;
  std::mt19937_64 random(9);
  for (int round = 0; round < 60; ++round) {
    std::string before = "first\n";
    std::string after = "first\n";
    for (std::size_t line = 0; line < 60; ++line) {
      const std::string text = std::to_string(random() % 5) + (random() % 9 == 0 ? "\r\n" : "\n");
      const std::size_t kind = random() % 12;
      before += kind == 0 ? "" : text;
      after += kind == 1 ? "" : kind == 2 ? "x" + text : text;
    }
    before += random() % 2 == 0 ? "end" : "";
    after += random() % 2 == 0 ? "end" : "";
    const std::string diff = unifiedDiff("text", before, after);
    ASSERT_EQ(diff.empty() ? before : patched(folder, before, diff), after) << diff;
  }
}

}  // namespace
}  // namespace update_metadata_tool::lint
