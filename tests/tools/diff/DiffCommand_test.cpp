#include "diff/DiffCommand.h"

#include <cstddef>
#include <ostream>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/Json.h"
#include "support/PlainDocument.h"
#include "support/RunTool.h"
#include "support/TemporaryFolder.h"
#include "support/ToolCases.h"

namespace update_metadata_tool::diff {
namespace {

using test_support::Json;
using test_support::kRealistic;
using test_support::kSmall;
using test_support::kSmallProducts;
using test_support::parseJson;
using test_support::runTool;
using test_support::SampleRun;
using test_support::SampleRuns;
using test_support::TemporaryFolder;
using test_support::ToolRun;
using test_support::ToolSurroundings;
using ::testing::StartsWith;

const std::string kNext = UMP_SOURCE_DIR "/tests/golden/tool/diff/next.json";

constexpr int kSame = 0;
constexpr int kDifferent = static_cast<int>(command::ExitCode::kFailed);
constexpr int kTrouble = static_cast<int>(command::ExitCode::kTrouble);

ToolRun diffSamples(std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), "diff");
  return test_support::runOnSamples(arguments);
}

TEST_P(SampleRuns, PrintTheStoredDifferences) {
  expectStored(GetParam());
}

const SampleRun kSampleRuns[] = {
    {"NextForPeople",
     {"diff", kSmall, kNext, "--product-data", kSmallProducts},
     "",
     "diff/next.txt",
     kDifferent},
    {"NextForPrograms",
     {"diff", kSmall, kNext, "--product-data", kSmallProducts, "--format", "json"},
     "",
     "diff/next-answer.json",
     kDifferent},
    {"OthersForPeople", {"diff", kSmall, kRealistic}, "", "diff/small-realistic.txt", kDifferent},
    {"OthersForPrograms",
     {"diff", kSmall, kRealistic, "--format=json"},
     "",
     "diff/small-realistic.json",
     kDifferent},
};
INSTANTIATE_TEST_SUITE_P(Samples, SampleRuns, ::testing::ValuesIn(kSampleRuns),
                         [](const auto& row) { return row.param.name; });

TEST(Diff, OfADocumentAndItselfFindsNoDifferences) {
  EXPECT_EQ(diffSamples({kRealistic, kRealistic}), (ToolRun{kSame, "No differences found.\n", ""}));
  const ToolRun run = diffSamples({kRealistic, kRealistic, "--format", "json"});
  EXPECT_EQ(run.exitCode, kSame);
  EXPECT_THAT(run.out, StartsWith(R"({"version":1,"different":false,"totals":{"before":{)"));
}

constexpr const char* kMissing =
    "Update MetaData Json file does not exist \n"
    "update-metadata: 'none.json' could not be loaded; check the path\n";

TEST(Diff, OfADocumentThatDoesNotLoadIsTrouble) {
  EXPECT_EQ(diffSamples({"none.json", kSmall}), (ToolRun{kTrouble, "", kMissing}));
  EXPECT_EQ(diffSamples({kSmall, "none.json"}), (ToolRun{kTrouble, "", kMissing}));
  EXPECT_EQ(diffSamples({"none.json", "none.json", "--format=json"}),
            (ToolRun{kTrouble, "", std::string(kMissing) + kMissing}));
}

// --- the limit of growth --------------------------------------------------------------------

struct Limited {
  const char* name;
  std::vector<std::string> arguments;
  int exitCode;
  const char* lastLine;
};

std::ostream& operator<<(std::ostream& out, const Limited& row) {
  return out << row.name;
}

class LimitedDiffs : public ::testing::TestWithParam<Limited> {};

TEST_P(LimitedDiffs, FailOnlyIfTheGrowthExceedsTheLimit) {
  const ToolRun run = diffSamples(GetParam().arguments);
  EXPECT_EQ(run.exitCode, GetParam().exitCode) << run;
  const std::size_t lastLine = run.out.rfind('\n', run.out.size() - 2) + 1;
  EXPECT_EQ(run.out.substr(lastLine), GetParam().lastLine);
}

const Limited kLimited[] = {
    {"Less",
     {kNext, kSmall, "--fail-if-larger", "0"},
     kSame,
     "Growth in bytes to fetch: -593920 bytes (-580.0 KiB), -19.2%; allowed: 0 bytes; within "
     "the limit\n"},
    {"TheSame",
     {kSmall, kSmall, "--fail-if-larger=0%"},
     kSame,
     "Growth in bytes to fetch: 0 bytes; allowed: 0 bytes; within the limit\n"},
    {"AsManyBytesAsAllowed",
     {kSmall, kNext, "--fail-if-larger", "593920"},
     kSame,
     "Growth in bytes to fetch: +593920 bytes (580.0 KiB), +23.8%; allowed: 593920 bytes "
     "(580.0 KiB); "
     "within the limit\n"},
    {"OneByteMore",
     {kSmall, kNext, "--fail-if-larger", "593919"},
     kDifferent,
     "Growth in bytes to fetch: +593920 bytes (580.0 KiB), +23.8%; allowed: 593919 bytes "
     "(580.0 KiB); "
     "over the limit\n"},
    {"LargerShare",
     {kSmall, kNext, "--fail-if-larger", "20%"},
     kDifferent,
     "Growth in bytes to fetch: +593920 bytes (580.0 KiB), +23.8%; allowed: 499895 bytes "
     "(488.2 KiB); "
     "over the limit\n"},
    {"SmallerShare",
     {kSmall, kNext, "--fail-if-larger", "23.77%"},
     kSame,
     "Growth in bytes to fetch: +593920 bytes (580.0 KiB), +23.8%; allowed: 594125 bytes "
     "(580.2 KiB); "
     "within the limit\n"},
};
INSTANTIATE_TEST_SUITE_P(Limits, LimitedDiffs, ::testing::ValuesIn(kLimited),
                         [](const auto& row) { return row.param.name; });

TEST(LimitedDiff, WritesTheGrowthForPrograms) {
  const ToolRun run = diffSamples({kSmall, kNext, "--fail-if-larger=20%", "--format=json"});
  EXPECT_EQ(run.exitCode, kDifferent);
  EXPECT_EQ(parseJson(run.out)["growth"],
            parseJson(R"({"bytesToFetch": 593920, "allowed": 499895, "tooLarge": true})"));
}

TEST(LimitedDiff, AcceptsAPercentageOfMoreThanSixtyFourBits) {
  const TemporaryFolder folder;
  test_support::PlainDocument document;
  document.components["c"] = {{}, {{"a", {9'000'000'000'000'000'000, 1}}}};
  document.products["p"] = {{}, {"c"}};
  folder.writeFile("large.json", document.json());
  document.components["c"].toExtract["b"] = {9'000'000'000'000'000'000, 1};
  folder.writeFile("vast.json", document.json());
  ToolSurroundings around;
  around.folder = folder.nativePath();
  EXPECT_EQ(runTool({"diff", "vast.json", "vast.json", "--fail-if-larger", "1%"}, around),
            (ToolRun{kSame,
                     "No differences found.\n\n"
                     "Growth in bytes to fetch: 0 bytes; allowed: 180000000000000000 bytes "
                     "(159.9 PiB); within the limit\n",
                     ""}));
  EXPECT_EQ(runTool({"diff", "vast.json", "large.json", "--fail-if-larger", "0%"}, around).exitCode,
            kSame);
  const ToolRun grown =
      runTool({"diff", "large.json", "vast.json", "--fail-if-larger=99%", "--format=json"}, around);
  EXPECT_EQ(grown.exitCode, kDifferent);
  EXPECT_EQ(
      parseJson(grown.out)["growth"].dump(),
      R"({"bytesToFetch":9000000000000000000,"allowed":8910000000000000000,"tooLarge":true})");
  const ToolRun doubled =
      runTool({"diff", "vast.json", "vast.json", "--fail-if-larger=200%", "--format=json"}, around);
  EXPECT_EQ(parseJson(doubled.out)["growth"].dump(),
            R"({"bytesToFetch":0,"allowed":null,"tooLarge":false})");
}

}  // namespace
}  // namespace update_metadata_tool::diff
