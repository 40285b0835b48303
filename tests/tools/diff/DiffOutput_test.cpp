#include "diff/TextOutput.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/Json.h"
#include "support/LongNames.h"
#include "support/PlainDocument.h"
#include "support/RunTool.h"
#include "support/TemporaryFolder.h"

namespace update_metadata_tool::diff {
namespace {

using test_support::parseJson;
using test_support::PlainDocument;
using test_support::runTool;
using test_support::TemporaryFolder;
using test_support::ToolRun;
using test_support::ToolSurroundings;
using ::testing::AllOf;
using ::testing::HasSubstr;

// Compares the texts of two documents, in lines of `columns` if that is not empty.
ToolRun diffTexts(const std::string& old, const std::string& recent,
                  std::vector<std::string> options = {}, const std::string& columns = "") {
  const TemporaryFolder folder;
  folder.writeFile("old.json", old);
  folder.writeFile("new.json", recent);
  ToolSurroundings around;
  around.folder = folder.nativePath();
  around.environment = {"COLUMNS=" + columns};
  options.insert(options.begin(), {"diff", "old.json", "new.json"});
  return runTool(options, around);
}

std::string diff(const PlainDocument& old, const PlainDocument& recent,
                 std::vector<std::string> options = {}, const std::string& columns = "") {
  return diffTexts(old.json(), recent.json(), std::move(options), columns).out;
}

// The end of a text, starting with `beginning`.
std::string startingAt(const std::string& beginning, const std::string& text) {
  return text.substr(std::min(text.find(beginning), text.size()));
}

// Documents with odd names that differ in sizes and files.
std::string makeOddDocument(const std::string& size) {
  const std::string name = R"("\u001b[2J\u202e")";
  return R"({"metadata":{"arch":)" + name + R"(,"base":null,"target":null},"components":{)" + name +
         R"(:{"delete":{"":{"size":)" + size + R"(}},"extract":{)" + name + R"(:{"size":)" + size +
         R"(,"uncompressedBytes":0}}}},"products":{)" + name + R"(:{"delete":[)" + name +
         R"(],"extract":[)" + name + R"(]}},"componentsWithFilesDeleted":{"c":{"p":{"size":1,)" +
         R"("files":[")" + size + R"(\u009b"]}}}})";
}

TEST(DiffForPeople, ShowsControlCharactersByTheirCode) {
  EXPECT_EQ(diffTexts(makeOddDocument("1"), makeOddDocument("3")),
            (ToolRun{1,
                     "Total\n"
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

TEST(DiffForPeople, NamesTheComponentOfASharedKey) {
  PlainDocument old;
  old.componentsWithFiles["a"]["b_c"] = {1, {"x"}};
  old.componentsWithFiles["a_b"]["c"] = {2, {"y"}};
  PlainDocument recent = old;
  recent.componentsWithFiles["a_b"]["c"] = {2, {"z"}};
  EXPECT_EQ(diff(old, recent),
            "Total\n"
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
            "      - y\n");
}

// Names and sizes that compete for room.
std::string diffLongNames(const PlainDocument& old, const std::string& columns) {
  return diff(old, test_support::makeDocumentWithLongNames(5), {"--fail-if-larger=1"}, columns);
}

TEST(DiffOfLongNames, FitsTheTerminal) {
  const PlainDocument other = test_support::makeDocumentWithLongNames(-5);
  for (const std::size_t columns : {20U, 30U, 40U, 60U, 80U, 100U, 200U}) {
    for (const PlainDocument& old : {other, PlainDocument()}) {
      const std::string text = diffLongNames(old, std::to_string(columns));
      EXPECT_LE(test_support::widestLine(text), columns) << text;
    }
  }
}

TEST(DiffOfLongNames, WrapsNoneWithoutATerminal) {
  const std::string& word = test_support::kLongWord;
  EXPECT_THAT(diffLongNames(test_support::makeDocumentWithLongNames(-5), ""),
              AllOf(HasSubstr("\n  * " + test_support::kLongWords + '\n'),
                    HasSubstr("\n  * " + word + '_' + word + '\n')));
}

TEST(DiffForPeople, DistinguishesNamesThatDifferInBlanks) {
  const std::string line(12, 'x');
  PlainDocument document;
  document.componentsWithFiles["c"]["p"] = {1, {"y ", line + "y", line + " y"}};
  EXPECT_EQ(startingAt("  + c_p", diff(PlainDocument(), document, {}, "20")),
            "  + c_p: 3 files;\n"
            "      size 1 byte\n"
            "      + xxxxxxxxxxxx\n"
            "           y\n"
            "      + xxxxxxxxxxxx\n"
            "          y\n"
            "      + y<U+0020>\n");
}

// --- sizes that no package can have ---------------------------------------------------------

constexpr std::int64_t kTruncated = std::numeric_limits<std::int64_t>::min();

PlainDocument makeDoubtfulDocument(std::int64_t size) {
  PlainDocument document;
  document.components["c"] = {{{"old", {size, 0}}}, {{"p", {1, size}}}};
  document.products["P"] = {{"c"}, {"c"}};
  document.componentsWithFiles["c"]["kept"] = {size, {"file"}};
  return document;
}

TEST(DiffOfDoubtfulSizes, MarksAndCountsThemForEachDocument) {
  const PlainDocument negative = makeDoubtfulDocument(-5);
  const PlainDocument truncated = makeDoubtfulDocument(kTruncated);
  const auto packagesOf = [](const PlainDocument& old, const PlainDocument& recent) {
    return startingAt("Packages to extract", diff(old, recent));
  };
  const std::string negatives =
      " document, '!' marks doubtful sizes: 3 packages with a negative size. Totals include "
      "these sizes.\n";
  EXPECT_EQ(packagesOf(PlainDocument(), negative),
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
      packagesOf(negative, truncated),
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
          "not fit into 64 bits and is read as -9223372036854775808. Totals include these "
          "sizes.\n");
  EXPECT_EQ(diff(negative, negative), "No differences found.\n");
}

TEST(DiffOfDoubtfulSizes, ExplainsTheMarkOnlyForADocumentWithMarkedSizes) {
  const PlainDocument old = makeDoubtfulDocument(-5);
  PlainDocument more = old;
  more.components["d"] = {{}, {{"other", {3, 0}}}};
  more.products["P"].toExtract.push_back("d");
  PlainDocument other = more;
  other.components["c"].toExtract["p"].size = 7;  // its other size stays doubtful
  other.componentsWithFiles["c"]["kept"].size = 4;
  const auto note = [](const std::string& beginning, const std::string& packages) {
    return "\nNote: " + beginning + " doubtful sizes: " + packages +
           " packages with a negative size. Totals include these sizes.\n";
  };
  EXPECT_EQ(
      startingAt("\nNote: ", diff(old, more)),
      note("In the old document, there are", "3") + note("In the new document, there are", "3"));
  EXPECT_EQ(
      startingAt("\nNote: ", diff(old, other)),
      note("In the old document, '!' marks", "3") + note("In the new document, there are", "2"));
}

TEST(DiffForPeople, ShowsTheDirectionOfDifferencesBeyondSixtyFourBits) {
  constexpr std::int64_t kVast = 9'000'000'000'000'000'000;
  PlainDocument document;
  document.components["c"] = {{}, {{"a", {kVast, 0}}, {"b", {kVast, 0}}}};
  document.products["P"] = {{}, {"c"}};
  const std::string bound = " by more than 9223372036854775807 bytes (8.0 EiB)";
  EXPECT_THAT(
      diff(PlainDocument(), document, {"--fail-if-larger=1"}),
      AllOf(HasSubstr("  to fetch: 0 bytes -> more than 9223372036854775807 bytes (8.0 EiB), up" +
                      bound + '\n'),
            HasSubstr("Growth in bytes to fetch: up" + bound +
                      "; allowed: 1 byte; over the limit\n")));
  EXPECT_THAT(
      diff(document, PlainDocument(), {"--fail-if-larger=1"}),
      AllOf(HasSubstr("  to fetch: more than 9223372036854775807 bytes (8.0 EiB) -> 0 bytes, down" +
                      bound + '\n'),
            HasSubstr("Growth in bytes to fetch: down" + bound +
                      "; allowed: 1 byte; within the limit\n")));
}

TEST(DiffOfDoubtfulSizes, CountsThemForPrograms) {
  const std::string json =
      diff(makeDoubtfulDocument(-5), makeDoubtfulDocument(kTruncated), {"--format=json"});
  EXPECT_EQ(parseJson(json)["doubtfulSizes"].dump(),
            R"({"before":{"negative":3,"truncated":0},"after":{"negative":0,"truncated":3}})");
}

}  // namespace
}  // namespace update_metadata_tool::diff
