#include "plan/TextOutput.h"

#include <cstddef>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "plan/RunPlan.h"
#include "support/Json.h"
#include "support/LongNames.h"
#include "support/PlainDocument.h"
#include "support/RunTool.h"
#include "support/TemporaryFolder.h"
#include "support/ToolCases.h"

namespace update_metadata_tool::plan {
namespace {

using test_support::Json;
using test_support::parseJson;
using test_support::PlainDocument;
using test_support::runTool;
using test_support::TemporaryFolder;
using test_support::ToolRun;
using test_support::ToolSurroundings;
using ::testing::AllOf;
using ::testing::HasSubstr;

const std::string kNothing =
    R"({"metadata":{"arch":"","base":null,"target":null},"components":null,"products":null,)"
    R"("componentsWithFilesDeleted":null})";

TEST(PlanForPeople, IsEmptyForAnEmptyDocument) {
  EXPECT_EQ(
      plan(kNothing, {}),
      (ToolRun{0,
               "Base release:   none\n"
               "Target release: none, update level 0\n"
               "Architecture:   (empty)\n"
               "\nProducts: 0\n"
               "\nPackages to delete: 0\n"
               "\nFiles to delete: 0\n"
               "\nPackages to extract: 0\n"
               "\nThe update fetches 0 bytes, unpacks 0 bytes and frees 0 bytes: a net change of\n"
               "0 bytes, and a peak need of 0 bytes before anything is freed.\n",
               ""}));
}

TEST(PlanForPrograms, HasEveryMemberForAnEmptyDocument) {
  EXPECT_EQ(
      plan(kNothing, {"--format", "json"}),
      (ToolRun{0,
               R"({"version":1,"base":{"family":"","version":""},)"
               R"("target":{"family":"","version":"","updateLevel":0},"arch":"",)"
               R"("products":[],"packagesToDelete":[],"packagesToExtract":[],)"
               R"("filesToDelete":[],"totals":{"bytesToFetch":0,"bytesUnpacked":0,)"
               R"("bytesDeleted":0,"netChange":0,"peakNeed":0},)"
               R"("doubtfulSizes":{"negative":0,"truncated":0},"productsLeftOut":[],)"
               R"("sha256":"e6168a8a3678587bd02727978a6332ad301ff2f243652ca179548fa9ae26858a"})"
               "\n",
               ""}));
}

PlainDocument makeDoubtfulDocument() {
  PlainDocument document;
  document.components["c\\u001b[2J"] = {
      {{"old", {-5, 0}}},
      {{"huge", {9'000'000'000'000'000'000, 9'000'000'000'000'000'000}}, {"small", {1, 2}}}};
  document.products["p\\n"] = {{"c\\u001b[2J"}, {"c\\u001b[2J"}};
  document.componentsWithFiles["c\\u001b[2J"]["kept"] = {-1, {"", "a\\u001b"}};
  return document;
}

TEST(PlanForPeople, MarksDoubtfulSizesAndSumsThatDoNotFit) {
  EXPECT_EQ(plan(makeDoubtfulDocument().json(), {}).out,
            "Base release:   Old, version 1\n"
            "Target release: New, version 2, update level 3\n"
            "Architecture:   x86_64\n"
            "\n"
            "Products: 1\n"
            "  p<U+000A>\n"
            "\n"
            "Packages to delete: 1    Size  Bytes\n"
            "c<U+001B>[2J_old       ! -5 B     -5\n"
            "\n"
            "Files to delete: 2, from 1 package that is otherwise kept\n"
            "  c<U+001B>[2J_kept: ! -1 byte\n"
            "    (empty)\n"
            "    a<U+001B>\n"
            "\n"
            "Packages to extract: 2\n"
            "  c<U+001B>[2J_huge\n"
            "    To fetch              7.8 EiB\n"
            "    Bytes     9000000000000000000\n"
            "    Unpacked              7.8 EiB\n"
            "    Bytes     9000000000000000000\n"
            "  c<U+001B>[2J_small\n"
            "    To fetch                  1 B\n"
            "    Bytes                       1\n"
            "    Unpacked                  2 B\n"
            "    Bytes                       2\n"
            "\n"
            "Note: '!' marks doubtful sizes: 2 packages with a negative size. Totals include\n"
            "these sizes.\n"
            "\n"
            "The update fetches 9000000000000000001 bytes (7.8 EiB), unpacks\n"
            "9000000000000000002 bytes (7.8 EiB) and frees -5 bytes: a net change of\n"
            "9000000000000000007 bytes (7.8 EiB), and a peak need of more than\n"
            "9223372036854775807 bytes (8.0 EiB) before anything is freed.\n");
}

/// A plan for an installation, with names and sizes that compete for room.
class PlanWithLongNames : public ::testing::Test {
 protected:
  PlanWithLongNames() {
    folder_.writeFile("update.json", test_support::makeDocumentWithLongNames(-5).json());
    folder_.writeFile("products.tsv", "\n");
    folder_.makeFolder("tree");
  }

  std::string plan(const std::string& columns) const {
    ToolSurroundings around;
    around.folder = folder_.nativePath();
    around.environment = {"COLUMNS=" + columns};
    return runTool({"plan", "update.json", "--product-data=.", "--installed=tree"}, around).out;
  }

  TemporaryFolder folder_;
};

TEST_F(PlanWithLongNames, FitsTheTerminal) {
  for (const std::size_t columns : {20U, 30U, 40U, 60U, 80U, 100U, 200U}) {
    const std::string text = plan(std::to_string(columns));
    EXPECT_LE(test_support::widestLine(text), columns) << text;
  }
}

TEST_F(PlanWithLongNames, NeitherCutsNorWrapsThemWithoutATerminal) {
  const std::string& word = test_support::kLongWord;
  EXPECT_THAT(plan(""), AllOf(HasSubstr("\n  " + test_support::kLongWords + '\n'),
                              HasSubstr("\n    missing  " + word + '/' + word + '\n'),
                              HasSubstr('\n' + word + '_' + word + "  ! -5 B     -5\n")));
}

TEST_F(PlanWithLongNames, WrapsThemOnATerminalAndCutsNone) {
  const std::string name(21, 'n');
  PlainDocument document;
  document.components["c"] = {{}, {{name, {9'000'000'000'000, 9'500'000'000'000}}}};
  document.products[name] = {{}, {"c"}};
  folder_.writeFile("update.json", document.json());
  EXPECT_THAT(plan("20"), AllOf(HasSubstr("Products: 1\n"
                                          "  nnnnnnnnnnnnnnnnnn\n"
                                          "      nnn\n"),
                                HasSubstr("  c_nnnnnnnnnnnnnnnn\n"
                                          "      nnnnn\n"
                                          "    To fetch\n"
                                          "      8.2 TiB\n"
                                          "    Bytes\n"
                                          "      9000000000000\n"
                                          "    Unpacked\n"
                                          "      8.6 TiB\n"
                                          "    Bytes\n"
                                          "      9500000000000\n")));
  EXPECT_THAT(plan("80"), HasSubstr("\nc_" + name + "  "));
}

/// The part of a plan on a narrow terminal about the package c_p, with these files to delete.
std::string planOfFiles(const std::vector<std::string>& files) {
  PlainDocument document;
  document.componentsWithFiles["c"]["p"] = {1, files};
  const TemporaryFolder folder;
  folder.writeFile("update.json", document.json());
  folder.writeFile("products.tsv", "\n");
  ToolSurroundings around;
  around.folder = folder.nativePath();
  around.environment = {"COLUMNS=20"};
  const std::string text = runTool({"plan", "update.json", "--product-data=."}, around).out;
  const std::size_t begin = text.find("  c_p: ");
  return text.substr(begin, text.find("\nPackages to extract") - begin);
}

TEST(PlanForPeople, DistinguishesNamesThatDifferInBlanks) {
  const std::string line(16, 'x');
  EXPECT_EQ(planOfFiles({"y", " y", "y ", line + "y", line + " y", line + "   y"}),
            "  c_p: 1 byte\n"
            "    <U+0020>y\n"
            "    xxxxxxxxxxxxxxxx\n"
            "           y\n"
            "    xxxxxxxxxxxxxxxx\n"
            "         y\n"
            "    xxxxxxxxxxxxxxxx\n"
            "        y\n"
            "    y\n"
            "    y<U+0020>\n");
}

TEST(PlanForPeople, GrowsLinearlyWithTheBlanksOfAName) {
  const auto roomOf = [](std::size_t blanks) {
    return planOfFiles({std::string(blanks, ' ') + 'x' + std::string(blanks, ' ') + 'x'}).size();
  };
  EXPECT_LT(roomOf(4000), 10 * roomOf(400) + 100);
}

TEST(PlanForPrograms, HasNullForASumThatDoesNotFit) {
  const Json planned = parseJson(plan(makeDoubtfulDocument().json(), {"--format=json"}).out);
  EXPECT_EQ(planned["totals"].dump(),
            R"({"bytesToFetch":9000000000000000001,"bytesUnpacked":9000000000000000002,)"
            R"("bytesDeleted":-5,"netChange":9000000000000000007,"peakNeed":null})");
  EXPECT_EQ(planned["doubtfulSizes"].dump(), R"({"negative":2,"truncated":0})");
}

}  // namespace
}  // namespace update_metadata_tool::plan
