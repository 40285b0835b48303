#include "show/ShowCommand.h"

#include <cstddef>
#include <ostream>
#include <string>
#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/LongNames.h"
#include "support/PlainDocument.h"
#include "support/RunTool.h"
#include "support/TemporaryFolder.h"
#include "support/ToolCases.h"

namespace update_metadata_tool::show {
namespace {

using test_support::kRealistic;
using test_support::kRealisticProducts;
using test_support::kSmall;
using test_support::kSmallProducts;
using test_support::PlainDocument;
using test_support::readBytes;
using test_support::runOnDocument;
using test_support::runOnSamples;
using test_support::runTool;
using test_support::SampleRun;
using test_support::SampleRuns;
using test_support::TemporaryFolder;
using test_support::ToolRun;
using test_support::ToolSurroundings;
using test_support::widestLine;
using ::testing::AllOf;
using ::testing::HasSubstr;

const std::string kSourceDir = UMP_SOURCE_DIR;

TEST_P(SampleRuns, PrintTheStoredSummary) {
  expectStored(GetParam());
}

const SampleRun kSamplesShown[] = {
    {"Small", {"show", kSmall, "--product-data", kSmallProducts}, "80", "show-small.txt"},
    {"SmallOnANarrowTerminal",
     {"show", kSmall, "--product-data", kSmallProducts},
     "40",
     "show-small-narrow.txt"},
    {"SmallForPrograms",
     {"show", kSmall, "--product-data", kSmallProducts, "--format", "json"},
     "80",
     "show-small.json"},
    {"Realistic",
     {"show", kRealistic, "--product-data", kRealisticProducts, "--format=text", "--top", "10"},
     "100",
     "show-realistic.txt"},
    {"RealisticForPrograms",
     {"show", kRealistic, "--product-data", kRealisticProducts, "--format=json", "--top=10"},
     "100",
     "show-realistic.json"},
    {"RealisticByNameWithoutProductData",
     {"show", "--sort", "name", "--", kRealistic},
     "80",
     "show-realistic-by-name.txt"},
    {"RealisticByNameForPrograms",
     {"show", "--sort=name", "--format=json", kRealistic},
     "80",
     "show-realistic-by-name.json"},
};
INSTANTIATE_TEST_SUITE_P(Samples, SampleRuns, ::testing::ValuesIn(kSamplesShown),
                         [](const auto& row) { return row.param.name; });

TEST(Show, FitsTheTerminal) {
  for (const std::size_t columns : {40U, 45U, 50U, 55U, 60U, 65U, 70U, 80U, 100U, 200U}) {
    const ToolRun run =
        runOnSamples({"show", kRealistic, "--product-data", kRealisticProducts, "--top=99"},
                     std::to_string(columns));
    EXPECT_LE(widestLine(run.out), columns) << run.out;
  }
}

TEST(Show, FitsTheTerminalWithLongNamesAndLargeSizes) {
  const TemporaryFolder folder;
  folder.writeFile("update.json", test_support::makeDocumentWithLongNames(-5).json());
  ToolSurroundings around;
  around.folder = folder.nativePath();
  for (const std::size_t columns : {20U, 30U, 40U, 60U, 80U, 100U, 200U}) {
    around.environment = {"COLUMNS=" + std::to_string(columns)};
    const ToolRun run = runTool({"show", "update.json"}, around);
    EXPECT_LE(widestLine(run.out), columns) << run.out;
  }
}

TEST(Show, CutsNoNamesWithoutATerminal) {
  const TemporaryFolder folder;
  folder.writeFile("update.json", test_support::makeDocumentWithLongNames(5).json());
  ToolSurroundings around;
  around.folder = folder.nativePath();
  around.environment = {"COLUMNS="};
  const std::string& word = test_support::kLongWord;
  EXPECT_THAT(
      runTool({"show", "update.json"}, around).out,
      AllOf(HasSubstr('\n' + test_support::kLongWords + "  "),
            HasSubstr('\n' + test_support::kLongWideName + "  "),
            HasSubstr('\n' + word + '_' + word + "  "),
            HasSubstr("\nNote: Several products name 1 package to extract: each counts once "
                      "in the total.\n")));
}

TEST(Show, UsesTheWidthThatTheTerminalReports) {
  ToolSurroundings around;
  around.folder = kSourceDir + "/examples/documents";
  around.environment = {"COLUMNS="};
  around.isOnTerminal = true;
  for (const auto& [columns, expected] :
       {std::pair(40, "show-small-narrow.txt"), std::pair(80, "show-small.txt")}) {
    around.terminalColumns = static_cast<unsigned short>(columns);
    EXPECT_EQ(runTool({"show", kSmall, "--product-data", kSmallProducts}, around).out,
              readBytes(kSourceDir + "/tests/golden/tool/" + expected));
  }
}

TEST(Show, UsesEightyColumnsIfTheTerminalDoesNotReportItsWidth) {
  ToolSurroundings around;
  around.folder = kSourceDir + "/examples/documents";
  around.environment = {"COLUMNS="};
  around.isOnTerminal = true;
  EXPECT_EQ(runTool({"show", "--sort=name", kRealistic}, around).out,
            readBytes(kSourceDir + "/tests/golden/tool/show-realistic-by-name.txt"));
}

struct Columns {
  const char* name;
  const char* columns;
};

std::ostream& operator<<(std::ostream& out, const Columns& row) {
  return out << row.name;
}

class InvalidColumns : public ::testing::TestWithParam<Columns> {};

TEST_P(InvalidColumns, MeanNoLimitWithoutATerminal) {
  EXPECT_EQ(runOnSamples({"show", kRealistic}, GetParam().columns).out,
            runOnSamples({"show", kRealistic}, "1000").out);
}

const Columns kInvalidColumns[] = {
    {"Empty", ""},       {"Zero", "0"},
    {"Word", "many"},    {"NumberAndMore", "40 wide"},
    {"Negative", "-40"}, {"TooLarge", "99999999999999999999999"},
};
INSTANTIATE_TEST_SUITE_P(Columns, InvalidColumns, ::testing::ValuesIn(kInvalidColumns),
                         [](const auto& row) { return row.param.name; });

TEST(Show, ExitsWithStatusTwoIfTheDocumentCannotBeLoaded) {
  EXPECT_EQ(runTool({"show", "no-such-file"}),
            (ToolRun{2, "",
                     "Update MetaData Json file does not exist \n"
                     "update-metadata: 'no-such-file' could not be loaded; check the path\n"}));
}

TEST(Show, ExitsWithStatusTwoIfTheProductDataCannotBeRead) {
  PlainDocument document;
  document.products["p"] = {{}, {"c"}};
  EXPECT_EQ(
      runOnDocument({"show"}, document.json(), "\nx\n"),
      (ToolRun{2, "",
               "./products.tsv:2: expected 4 tab-separated fields, found 1\n"
               "update-metadata: 'update.json' was loaded but could not be queried; check the "
               "product data at '.'\n"}));
}

}  // namespace
}  // namespace update_metadata_tool::show
