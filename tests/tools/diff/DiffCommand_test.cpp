#include "diff/DiffCommand.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <ostream>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "support/LongNames.h"
#include "support/PlainDocument.h"
#include "support/RunTool.h"
#include "support/StoredText.h"
#include "support/TemporaryFolder.h"
#include "support/ToolCases.h"

namespace update_metadata_tool::diff {
namespace {

using test_support::kRealistic;
using test_support::kSmall;
using test_support::refusedRun;
using test_support::runTool;
using test_support::storedText;
using test_support::TemporaryFolder;
using test_support::ToolRun;
using test_support::ToolSurroundings;
using test_support::WrongUsage;
using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::StartsWith;

const std::string kSourceDir = UMP_SOURCE_DIR;
const std::string kGolden = kSourceDir + "/tests/golden/tool/diff/";
const std::string kNext = kGolden + "next.json";

constexpr int kSame = 0;
constexpr int kDifferent = static_cast<int>(command::ExitCode::kFailed);
constexpr int kTrouble = static_cast<int>(command::ExitCode::kTrouble);

ToolRun runOnSamples(std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), "diff");
  ToolSurroundings around;
  around.folder = kSourceDir + "/examples/documents";
  return runTool(arguments, around);
}

// --- the sample documents -------------------------------------------------------------------

struct SampleDiff {
  const char* name;
  std::vector<std::string> arguments;  ///< in the folder of the sample documents
  const char* expected;                ///< file in tests/golden/tool/diff
};

std::ostream& operator<<(std::ostream& out, const SampleDiff& row) {
  return out << row.name;
}

class SampleDiffs : public ::testing::TestWithParam<SampleDiff> {};

TEST_P(SampleDiffs, AreAsStored) {
  const ToolRun run = runOnSamples(GetParam().arguments);
  EXPECT_EQ(run, (ToolRun{kDifferent, storedText(kGolden + GetParam().expected, run.out), ""}));
}

const SampleDiff kSampleDiffs[] = {
    {"NextForPeople", {kSmall, kNext, "--product-data", "small/product-data"}, "next.txt"},
    {"NextForPrograms",
     {kSmall, kNext, "--product-data", "small/product-data", "--format", "json"},
     "next-answer.json"},
    {"OthersForPeople", {kSmall, kRealistic}, "small-realistic.txt"},
    {"OthersForPrograms", {kSmall, kRealistic, "--format=json"}, "small-realistic.json"},
};
INSTANTIATE_TEST_SUITE_P(Samples, SampleDiffs, ::testing::ValuesIn(kSampleDiffs),
                         [](const auto& row) { return row.param.name; });

TEST(Diff, OfADocumentAndItselfSaysSo) {
  EXPECT_EQ(runOnSamples({kRealistic, kRealistic}),
            (ToolRun{kSame, "Both documents say the same.\n", ""}));
  const ToolRun run = runOnSamples({kRealistic, kRealistic, "--format", "json"});
  EXPECT_EQ(run.exitCode, kSame);
  EXPECT_THAT(run.out, StartsWith(R"({"version":1,"different":false,"totals":{"before":{)"));
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

TEST_P(LimitedDiffs, FailOnlyIfThereIsMoreToFetchThanIsAllowed) {
  const ToolRun run = runOnSamples(GetParam().arguments);
  EXPECT_EQ(run.exitCode, GetParam().exitCode) << run;
  const std::size_t lastLine = run.out.rfind('\n', run.out.size() - 2) + 1;
  EXPECT_EQ(run.out.substr(lastLine), GetParam().lastLine);
}

const Limited kLimited[] = {
    {"Less",
     {kNext, kSmall, "--fail-if-larger", "0"},
     kSame,
     "Growth of the bytes to fetch: -593920 bytes (-580.0 KiB), -19.2%; allowed: 0 bytes; within "
     "the "
     "limit\n"},
    {"TheSame",
     {kSmall, kSmall, "--fail-if-larger=0%"},
     kSame,
     "Growth of the bytes to fetch: 0 bytes; allowed: 0 bytes; within the limit\n"},
    {"AsManyBytesAsAllowed",
     {kSmall, kNext, "--fail-if-larger", "593920"},
     kSame,
     "Growth of the bytes to fetch: +593920 bytes (580.0 KiB), +23.8%; allowed: 593920 bytes "
     "(580.0 KiB); "
     "within the limit\n"},
    {"OneByteMore",
     {kSmall, kNext, "--fail-if-larger", "593919"},
     kDifferent,
     "Growth of the bytes to fetch: +593920 bytes (580.0 KiB), +23.8%; allowed: 593919 bytes "
     "(580.0 KiB); "
     "too much\n"},
    {"LargerShare",
     {kSmall, kNext, "--fail-if-larger", "20%"},
     kDifferent,
     "Growth of the bytes to fetch: +593920 bytes (580.0 KiB), +23.8%; allowed: 499895 bytes "
     "(488.2 KiB); "
     "too much\n"},
    {"SmallerShare",
     {kSmall, kNext, "--fail-if-larger", "23.77%"},
     kSame,
     "Growth of the bytes to fetch: +593920 bytes (580.0 KiB), +23.8%; allowed: 594125 bytes "
     "(580.2 KiB); "
     "within the limit\n"},
};
INSTANTIATE_TEST_SUITE_P(Limits, LimitedDiffs, ::testing::ValuesIn(kLimited),
                         [](const auto& row) { return row.param.name; });

TEST(LimitedDiff, TellsProgramsOfTheGrowth) {
  const ToolRun run = runOnSamples({kSmall, kNext, "--fail-if-larger=20%", "--format=json"});
  EXPECT_EQ(run.exitCode, kDifferent);
  EXPECT_EQ(
      nlohmann::json::parse(run.out)["growth"],
      nlohmann::json::parse(R"({"bytesToFetch": 593920, "allowed": 499895, "tooLarge": true})"));
}

// --- trouble --------------------------------------------------------------------------------

constexpr const char* kMissing =
    "Update MetaData Json file does not exist \n"
    "update-metadata: 'none.json' could not be loaded; check the path\n";

TEST(Diff, OfADocumentThatDoesNotLoadIsTrouble) {
  EXPECT_EQ(runOnSamples({"none.json", kSmall}), (ToolRun{kTrouble, "", kMissing}));
  EXPECT_EQ(runOnSamples({kSmall, "none.json"}), (ToolRun{kTrouble, "", kMissing}));
  EXPECT_EQ(runOnSamples({"none.json", "none.json", "--format=json"}),
            (ToolRun{kTrouble, "", std::string(kMissing) + kMissing}));
}

TEST(Diff, TakesAShareOfMoreThanSixtyFourBitsHold) {
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
                     "Both documents say the same.\n\n"
                     "Growth of the bytes to fetch: 0 bytes; allowed: 180000000000000000 bytes "
                     "(159.9 PiB); within the limit\n",
                     ""}));
  EXPECT_EQ(runTool({"diff", "vast.json", "large.json", "--fail-if-larger", "0%"}, around).exitCode,
            kSame);
  const ToolRun grown =
      runTool({"diff", "large.json", "vast.json", "--fail-if-larger=99%", "--format=json"}, around);
  EXPECT_EQ(grown.exitCode, kDifferent);
  EXPECT_EQ(
      nlohmann::ordered_json::parse(grown.out)["growth"].dump(),
      R"({"bytesToFetch":9000000000000000000,"allowed":8910000000000000000,"tooLarge":true})");
  const ToolRun doubled =
      runTool({"diff", "vast.json", "vast.json", "--fail-if-larger=200%", "--format=json"}, around);
  EXPECT_EQ(nlohmann::ordered_json::parse(doubled.out)["growth"].dump(),
            R"({"bytesToFetch":0,"allowed":null,"tooLarge":false})");
}

TEST(Diff, WhoseOutputIsNotWrittenIsTrouble) {
  ToolSurroundings around;
  around.folder = kSourceDir + "/examples/documents";
  for (const std::string& recent : {kSmall, kRealistic}) {
    for (const char* format : {"--format=text", "--format=json"}) {
      around.outFile = "/dev/full";
      around.isOutClosedPipe = false;
      EXPECT_EQ(runTool({"diff", kSmall, recent, format}, around),
                (ToolRun{kTrouble, "",
                         "update-metadata: standard output could not be written: No space left on "
                         "device; what was written is not complete\n"}));
      around.outFile.reset();
      around.isOutClosedPipe = true;
      EXPECT_EQ(runTool({"diff", kSmall, recent, format}, around),
                (ToolRun{kTrouble, "",
                         "update-metadata: standard output could not be written: Broken pipe; "
                         "what was written is not complete\n"}));
    }
  }
}

class WrongUsagesOfDiff : public ::testing::TestWithParam<WrongUsage> {};

TEST_P(WrongUsagesOfDiff, AreTrouble) {
  EXPECT_EQ(runOnSamples(GetParam().arguments), refusedRun(GetParam()));
}

const WrongUsage kWrongUsages[] = {
    {"OneDocument", {kSmall}, "NEW is required"},
    {"StandardInputTwice", {"-", "-"}, "NEW: standard input (-) can be read only once"},
    {"UnknownFormat", {kSmall, kSmall, "--format=xml"}, "--format: xml not in {text,json}"},
    {"BadLimit",
     {kSmall, kSmall, "--fail-if-larger", "5x"},
     "--fail-if-larger: give a number of bytes, 1048576, or a percentage of the bytes to fetch of "
     "OLD, 2.5%"},
    {"NegativeLimit",
     {kSmall, kSmall, "--fail-if-larger=-1"},
     "--fail-if-larger: give a number of bytes, 1048576, or a percentage of the bytes to fetch of "
     "OLD, 2.5%"},
};
INSTANTIATE_TEST_SUITE_P(Usages, WrongUsagesOfDiff, ::testing::ValuesIn(kWrongUsages),
                         [](const auto& row) { return row.param.name; });

// --- names ----------------------------------------------------------------------------------

// Documents that differ in what odd names belong to.
std::string makeOddDocument(const std::string& size) {
  const std::string name = R"("\u001b[2J\u202e")";
  return R"({"metadata":{"arch":)" + name + R"(,"base":null,"target":null},"components":{)" + name +
         R"(:{"delete":{"":{"size":)" + size + R"(}},"extract":{)" + name + R"(:{"size":)" + size +
         R"(,"uncompressedBytes":0}}}},"products":{)" + name + R"(:{"delete":[)" + name +
         R"(],"extract":[)" + name + R"(]}},"componentsWithFilesDeleted":{"c":{"p":{"size":1,)" +
         R"("files":[")" + size + R"(\u009b"]}}}})";
}

TEST(DiffForPeople, ShowsControlCharactersByTheirCode) {
  const TemporaryFolder folder;
  folder.writeFile("old.json", makeOddDocument("1"));
  folder.writeFile("new.json", makeOddDocument("3"));
  ToolSurroundings around;
  around.folder = folder.nativePath();
  EXPECT_EQ(runTool({"diff", "old.json", "new.json"}, around),
            (ToolRun{kDifferent,
                     "In all\n"
                     "  to fetch: 1 byte -> 3 bytes, +2 bytes, +200.0%\n"
                     "  unpacked: 0 bytes -> 0 bytes\n"
                     "  deleted: 1 byte -> 3 bytes, +2 bytes, +200.0%\n"
                     "  packages to extract: 1 -> 1\n"
                     "  packages to delete: 1 -> 1\n"
                     "  files to delete: 1 -> 1\n"
                     "\n"
                     "Products: 0 added, 0 removed, 1 changed\n"
                     "  * <U+001B>[2J<U+202E>\n"
                     "      to fetch: 1 byte -> 3 bytes, +2 bytes\n"
                     "      deleted: 1 byte -> 3 bytes, +2 bytes\n"
                     "\n"
                     "Components: 0 added, 0 removed, 1 changed\n"
                     "  * <U+001B>[2J<U+202E>\n"
                     "      to fetch: 1 byte -> 3 bytes, +2 bytes\n"
                     "      deleted: 1 byte -> 3 bytes, +2 bytes\n"
                     "\n"
                     "Packages to extract: 0 added, 0 removed, 1 changed\n"
                     "  * <U+001B>[2J<U+202E>_<U+001B>[2J<U+202E>\n"
                     "      to fetch: 1 byte -> 3 bytes, +2 bytes\n"
                     "\n"
                     "Packages to delete: 0 added, 0 removed, 1 changed\n"
                     "  * <U+001B>[2J<U+202E>_\n"
                     "      deleted: 1 byte -> 3 bytes, +2 bytes\n"
                     "\n"
                     "Packages with single files to delete: 0 added, 0 removed, 1 changed\n"
                     "  * c_p: 1 file added, 1 removed\n"
                     "      + 3<U+009B>\n"
                     "      - 1<U+009B>\n",
                     ""}));
}

TEST(DiffForPeople, TellsTheComponentOfAKeyThatSeveralShare) {
  const TemporaryFolder folder;
  test_support::PlainDocument document;
  document.componentsWithFiles["a"]["b_c"] = {1, {"x"}};
  document.componentsWithFiles["a_b"]["c"] = {2, {"y"}};
  folder.writeFile("old.json", document.json());
  document.componentsWithFiles["a_b"]["c"] = {2, {"z"}};
  folder.writeFile("new.json", document.json());
  ToolSurroundings around;
  around.folder = folder.nativePath();
  EXPECT_EQ(runTool({"diff", "old.json", "new.json"}, around),
            (ToolRun{kDifferent,
                     "In all\n"
                     "  to fetch: 0 bytes -> 0 bytes\n"
                     "  unpacked: 0 bytes -> 0 bytes\n"
                     "  deleted: 0 bytes -> 0 bytes\n"
                     "  packages to extract: 0 -> 0\n"
                     "  packages to delete: 0 -> 0\n"
                     "  files to delete: 1 -> 1\n"
                     "\n"
                     "Packages with single files to delete: 0 added, 0 removed, 1 changed\n"
                     "  * a_b_c (of component a_b): 1 file added, 1 removed\n"
                     "      + z\n"
                     "      - y\n",
                     ""}));
}

/// Documents with names and sizes that leave no room for each other.
class DiffOfLongNames : public ::testing::Test {
 protected:
  DiffOfLongNames() {
    folder_.writeFile("old.json", test_support::makeDocumentWithLongNames(-5).json());
    folder_.writeFile("new.json", test_support::makeDocumentWithLongNames(5).json());
    folder_.writeFile("none.json", test_support::PlainDocument().json());
  }

  std::string diff(const std::string& old, const std::string& recent, const std::string& columns) {
    ToolSurroundings around;
    around.folder = folder_.nativePath();
    around.environment = {"COLUMNS=" + columns};
    return runTool({"diff", old, recent, "--fail-if-larger=1"}, around).out;
  }

  TemporaryFolder folder_;
};

TEST_F(DiffOfLongNames, KeepsToTheWidthOfTheTerminal) {
  for (const std::size_t columns : {20U, 30U, 40U, 60U, 80U, 100U, 200U}) {
    for (const char* old : {"old.json", "none.json"}) {
      const std::string text = diff(old, "new.json", std::to_string(columns));
      EXPECT_LE(test_support::widestLine(text), columns) << text;
    }
  }
}

TEST_F(DiffOfLongNames, HasThemWholeWithoutATerminal) {
  const std::string& word = test_support::kLongWord;
  EXPECT_THAT(diff("old.json", "new.json", ""),
              AllOf(HasSubstr("\n  * " + test_support::kLongWords + '\n'),
                    HasSubstr("\n  * " + word + '_' + word + '\n')));
}

TEST(DiffForPeople, TellsApartWhatDiffersInBlanks) {
  const std::string line(12, 'x');
  test_support::PlainDocument document;
  document.componentsWithFiles["c"]["p"] = {1, {"y ", line + "y", line + " y"}};
  const TemporaryFolder folder;
  folder.writeFile("old.json", test_support::PlainDocument().json());
  folder.writeFile("new.json", document.json());
  ToolSurroundings around;
  around.folder = folder.nativePath();
  around.environment = {"COLUMNS=20"};
  const std::string text = runTool({"diff", "old.json", "new.json"}, around).out;
  EXPECT_EQ(text.substr(text.find("  + c_p")),
            "  + c_p: 3 files;\n"
            "      size 1 byte\n"
            "      + xxxxxxxxxxxx\n"
            "           y\n"
            "      + xxxxxxxxxxxx\n"
            "          y\n"
            "      + y<U+0020>\n");
}

// --- sizes that no package can have ---------------------------------------------------------

test_support::PlainDocument makeDoubtfulDocument(std::int64_t size) {
  test_support::PlainDocument document;
  document.components["c"] = {{{"old", {size, 0}}}, {{"p", {1, size}}}};
  document.products["P"] = {{"c"}, {"c"}};
  document.componentsWithFiles["c"]["kept"] = {size, {"file"}};
  return document;
}

TEST(DiffOfDoubtfulSizes, MarksThemAndCountsThemForEachDocument) {
  const TemporaryFolder folder;
  folder.writeFile("none.json", test_support::PlainDocument().json());
  folder.writeFile("negative.json", makeDoubtfulDocument(-5).json());
  folder.writeFile("truncated.json",
                   makeDoubtfulDocument(std::numeric_limits<std::int64_t>::min()).json());
  ToolSurroundings around;
  around.folder = folder.nativePath();
  const auto packagesOf = [&](const char* old, const char* recent) {
    const std::string text = runTool({"diff", old, recent}, around).out;
    return text.substr(text.find("Packages to extract"));
  };
  const std::string negatives =
      " document, '!' marks doubtful sizes: 3 packages with a negative size. Sums take sizes as "
      "they stand.\n";
  EXPECT_EQ(packagesOf("none.json", "negative.json"),
            "Packages to extract: 1 added, 0 removed, 0 changed\n"
            "  + c_p: to fetch 1 byte; unpacked ! -5 bytes\n"
            "\n"
            "Packages to delete: 1 added, 0 removed, 0 changed\n"
            "  + c_old: deleted ! -5 bytes\n"
            "\n"
            "Packages with single files to delete: 1 added, 0 removed, 0 changed\n"
            "  + c_kept: 1 file; size ! -5 bytes\n"
            "      + file\n"
            "\n"
            "Note: In the new" +
                negatives);
  EXPECT_EQ(
      packagesOf("negative.json", "truncated.json"),
      "Packages to extract: 0 added, 0 removed, 1 changed\n"
      "  * c_p\n"
      "      unpacked: ! -5 bytes -> ! -9223372036854775808 bytes (-8.0 EiB), -9223372036854775803 "
      "bytes (-8.0 EiB)\n"
      "\n"
      "Packages to delete: 0 added, 0 removed, 1 changed\n"
      "  * c_old\n"
      "      deleted: ! -5 bytes -> ! -9223372036854775808 bytes (-8.0 EiB), -9223372036854775803 "
      "bytes (-8.0 EiB)\n"
      "\n"
      "Packages with single files to delete: 0 added, 0 removed, 1 changed\n"
      "  * c_kept: 0 files added, 0 removed; size ! -5 bytes -> ! -9223372036854775808 bytes "
      "(-8.0 EiB), -9223372036854775803 bytes (-8.0 EiB)\n"
      "\n"
      "Note: In the old" +
          negatives +
          "\n"
          "Note: In the new document, '!' marks doubtful sizes: 3 packages with a size that does "
          "not fit into 64 bits and was taken for -9223372036854775808. Sums take sizes as they "
          "stand.\n");
  const ToolRun same = runTool({"diff", "negative.json", "negative.json"}, around);
  EXPECT_EQ(same, (ToolRun{kSame, "Both documents say the same.\n", ""}));
}

TEST(DiffOfDoubtfulSizes, ExplainsTheMarkOnlyOfTheDocumentWhereItIsShown) {
  const TemporaryFolder folder;
  test_support::PlainDocument document = makeDoubtfulDocument(-5);
  folder.writeFile("old.json", document.json());
  document.components["d"] = {{}, {{"other", {3, 0}}}};
  document.products["P"].toExtract.push_back("d");
  folder.writeFile("more.json", document.json());
  document.components["c"].toExtract["p"].size = 7;  // its other size is doubtful and stays
  document.componentsWithFiles["c"]["kept"].size = 4;
  folder.writeFile("other.json", document.json());
  ToolSurroundings around;
  around.folder = folder.nativePath();
  const auto notesOf = [&](const char* recent) {
    const std::string text = runTool({"diff", "old.json", recent}, around).out;
    return text.substr(text.find("\nNote: "));
  };
  const auto note = [](const std::string& beginning, const std::string& packages) {
    return "\nNote: " + beginning + " doubtful sizes: " + packages +
           " packages with a negative size. Sums take sizes as they stand.\n";
  };
  EXPECT_EQ(notesOf("more.json"), note("In the old document, there are", "3") +
                                      note("In the new document, there are", "3"));
  EXPECT_EQ(notesOf("other.json"), note("In the old document, '!' marks", "3") +
                                       note("In the new document, there are", "2"));
}

TEST(DiffForPeople, TellsDifferencesBeyondSixtyFourBitsByTheirDirection) {
  constexpr std::int64_t kVast = 9'000'000'000'000'000'000;
  test_support::PlainDocument document;
  document.components["c"] = {{}, {{"a", {kVast, 0}}, {"b", {kVast, 0}}}};
  document.products["P"] = {{}, {"c"}};
  const TemporaryFolder folder;
  folder.writeFile("none.json", test_support::PlainDocument().json());
  folder.writeFile("vast.json", document.json());
  ToolSurroundings around;
  around.folder = folder.nativePath();
  const std::string bound = " by more than 9223372036854775807 bytes (8.0 EiB)";
  const auto diff = [&](const char* old, const char* recent) {
    return runTool({"diff", old, recent, "--fail-if-larger=1"}, around).out;
  };
  EXPECT_THAT(
      diff("none.json", "vast.json"),
      AllOf(
          HasSubstr("  to fetch: 0 bytes -> more than 9223372036854775807 bytes (8.0 EiB), up" +
                    bound + '\n'),
          HasSubstr("Growth of the bytes to fetch: up" + bound + "; allowed: 1 byte; too much\n")));
  EXPECT_THAT(
      diff("vast.json", "none.json"),
      AllOf(HasSubstr("  to fetch: more than 9223372036854775807 bytes (8.0 EiB) -> 0 bytes, down" +
                      bound + '\n'),
            HasSubstr("Growth of the bytes to fetch: down" + bound +
                      "; allowed: 1 byte; within the limit\n")));
}

TEST(DiffOfDoubtfulSizes, CountsThemForPrograms) {
  const TemporaryFolder folder;
  folder.writeFile("negative.json", makeDoubtfulDocument(-5).json());
  folder.writeFile("truncated.json",
                   makeDoubtfulDocument(std::numeric_limits<std::int64_t>::min()).json());
  ToolSurroundings around;
  around.folder = folder.nativePath();
  const ToolRun run = runTool({"diff", "negative.json", "truncated.json", "--format=json"}, around);
  EXPECT_EQ(nlohmann::ordered_json::parse(run.out)["doubtfulSizes"].dump(),
            R"({"before":{"negative":3,"truncated":0},"after":{"negative":0,"truncated":3}})");
}

TEST(DiffHelp, SaysWhatTheExitStatusMeans) {
  const ToolRun help = runTool({"diff", "--help"});
  EXPECT_EQ(help.exitCode, 0);
  EXPECT_THAT(help.out, HasSubstr("  update-metadata diff old.json new.json\n"));
  EXPECT_THAT(help.out, HasSubstr("Exit status: 0 both say the same, 1 they differ, 2 "));
}

}  // namespace
}  // namespace update_metadata_tool::diff
