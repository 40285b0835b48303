#include "show/ShowCommand.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <map>
#include <ostream>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "support/LongNames.h"
#include "support/PlainDocument.h"
#include "support/PlainTotals.h"
#include "support/RunTool.h"
#include "support/TemporaryFolder.h"
#include "support/ToolCases.h"

namespace update_metadata_tool::show {
namespace {

using Json = nlohmann::ordered_json;
using test_support::kRealistic;
using test_support::kRealisticProducts;
using test_support::kSmall;
using test_support::kSmallProducts;
using test_support::PlainDocument;
using test_support::PlainTotals;
using test_support::readBytes;
using test_support::refusedRun;
using test_support::runSample;
using test_support::runTool;
using test_support::SampleRun;
using test_support::storedRun;
using test_support::TemporaryFolder;
using test_support::ToolRun;
using test_support::ToolSurroundings;
using test_support::widestLine;
using test_support::WrongUsage;
using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;

const std::string kSourceDir = UMP_SOURCE_DIR;

// --- the sample documents -------------------------------------------------------------------

class SamplesShown : public ::testing::TestWithParam<SampleRun> {};

TEST_P(SamplesShown, AreAsStored) {
  const ToolRun run = runSample(GetParam());
  EXPECT_EQ(run, storedRun(GetParam(), run));
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
INSTANTIATE_TEST_SUITE_P(Samples, SamplesShown, ::testing::ValuesIn(kSamplesShown),
                         [](const auto& row) { return row.param.name; });

TEST(WhatIsShown, KeepsToTheWidthOfTheTerminal) {
  ToolSurroundings around;
  around.folder = kSourceDir + "/examples/documents";
  for (const std::size_t columns : {40U, 45U, 50U, 55U, 60U, 65U, 70U, 80U, 100U, 200U}) {
    around.environment = {"COLUMNS=" + std::to_string(columns)};
    const ToolRun run =
        runTool({"show", kRealistic, "--product-data", kRealisticProducts, "--top=99"}, around);
    EXPECT_LE(widestLine(run.out), columns) << run.out;
  }
}

TEST(WhatIsShown, KeepsToTheWidthOfTheTerminalWhateverTheNamesAndSizes) {
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

TEST(WhatIsShown, HasWholeNamesWithoutATerminal) {
  const TemporaryFolder folder;
  folder.writeFile("update.json", test_support::makeDocumentWithLongNames(5).json());
  ToolSurroundings around;
  around.folder = folder.nativePath();
  around.environment = {"COLUMNS="};
  const std::string& word = test_support::kLongWord;
  EXPECT_THAT(runTool({"show", "update.json"}, around).out,
              AllOf(HasSubstr('\n' + test_support::kLongWords + "  "),
                    HasSubstr('\n' + test_support::kLongWideName + "  "),
                    HasSubstr('\n' + word + '_' + word + "  "),
                    HasSubstr("\nNote: Several products name 1 package to extract: in all, each "
                              "counts once.\n")));
}

TEST(WhatIsShown, AsksTheTerminalForItsWidth) {
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

TEST(WhatIsShown, KeepsToEightyColumnsOnATerminalThatDoesNotTell) {
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

class ColumnsThatAreNoNumber : public ::testing::TestWithParam<Columns> {};

TEST_P(ColumnsThatAreNoNumber, LeaveNoLimitWithoutATerminal) {
  ToolSurroundings around;
  around.folder = kSourceDir + "/examples/documents";
  const auto showWith = [&](const std::string& columns) {
    around.environment = {"COLUMNS=" + columns};
    return runTool({"show", kRealistic}, around).out;
  };
  EXPECT_EQ(showWith(GetParam().columns), showWith("1000"));
}

const Columns kColumnsThatAreNoNumber[] = {

    {"Empty", ""},       {"Zero", "0"},
    {"Word", "many"},    {"NumberAndMore", "40 wide"},
    {"Negative", "-40"}, {"TooLarge", "99999999999999999999999"},
};
INSTANTIATE_TEST_SUITE_P(Columns, ColumnsThatAreNoNumber,
                         ::testing::ValuesIn(kColumnsThatAreNoNumber),
                         [](const auto& row) { return row.param.name; });

// --- single properties ----------------------------------------------------------------------

ToolRun show(const std::string& document, std::vector<std::string> options,
             const std::string& products = "") {
  const TemporaryFolder folder;
  folder.writeFile("update.json", document);
  options.insert(options.begin(), {"show", "update.json"});
  if (!products.empty()) {
    folder.writeFile("products.tsv", products);
    options.insert(options.end(), {"--product-data", "."});
  }
  ToolSurroundings around;
  around.folder = folder.nativePath();
  around.environment = {"COLUMNS=80"};
  return runTool(options, around);
}

const std::string kNothing =
    R"({"metadata":{"arch":"","base":null,"target":null},"components":null,"products":null,)"
    R"("componentsWithFilesDeleted":null})";

TEST(ShownForPeople, IsOneRowOfNothingForAnEmptyDocument) {
  EXPECT_EQ(show(kNothing, {}),
            (ToolRun{0,
                     "Base release:   none\n"
                     "Target release: none, update level 0\n"
                     "Architecture:   (empty)\n"
                     "\n"
                     "Products        Delete  Extract  To fetch  Unpacked  Deleted\n"
                     "In all               0        0       0 B       0 B      0 B\n"
                     "  0 components                          0         0        0\n"
                     "Files to delete: 0\n",
                     ""}));
}

TEST(ShownForPrograms, HasEveryMemberForAnEmptyDocument) {
  EXPECT_EQ(show(kNothing, {"--format", "json"}),
            (ToolRun{0,
                     R"({"version":1,"base":{"family":"","version":""},)"
                     R"("target":{"family":"","version":"","updateLevel":0},"arch":"",)"
                     R"("totals":{"components":0,"packagesToDelete":0,"packagesToExtract":0,)"
                     R"("bytesToFetch":0,"bytesUnpacked":0,"bytesDeleted":0,"filesToDelete":0},)"
                     R"("sharedPackages":{"toDelete":0,"toExtract":0},"packagesWithFiles":0,)"
                     R"("doubtfulSizes":{"negative":0,"truncated":0},)"
                     R"("products":[],"largestComponents":[],"largestPackages":[]})"
                     "\n",
                     ""}));
}

// Sizes below zero, beyond 64 bits and, added up, beyond 64 bits, under names that could do harm.
PlainDocument makeDoubtfulDocument() {
  PlainDocument document;
  document.components["c\\u001b[2J"] = {
      {{"old", {-5, 0}}},
      {{"huge", {9'000'000'000'000'000'000, 3}},
       {"huge too", {9'000'000'000'000'000'000, 4}},
       {"impossible", {std::numeric_limits<std::int64_t>::min(), 1}}}};
  document.components["d"] = {{}, {{"huge three", {9'000'000'000'000'000'000, 3}}}};
  document.products["p\\n"] = {{"c\\u001b[2J"}, {"c\\u001b[2J", "d"}};
  return document;
}

TEST(ShownForPeople, CountsDoubtfulSizesAndSaysWhereASumDoesNotFit) {
  EXPECT_EQ(show(makeDoubtfulDocument().json(), {"--top", "3"}).out,
            "Base release:   Old, version 1\n"
            "Target release: New, version 2, update level 3\n"
            "Architecture:   x86_64\n"
            "\n"
            "Products        Delete  Extract              To fetch  Unpacked  Deleted\n"
            "p<U+000A>            1        4              >8.0 EiB      11 B     -5 B\n"
            "  2 components                   >9223372036854775807        11       -5\n"
            "In all               1        4              >8.0 EiB      11 B     -5 B\n"
            "  2 components                   >9223372036854775807        11       -5\n"
            "Files to delete: 0\n"
            "\n"
            "Largest components  Delete  Extract             To fetch  Unpacked  Deleted\n"
            "d                        0        1              7.8 EiB       3 B      0 B\n"
            "                                     9000000000000000000         3        0\n"
            "c<U+001B>[2J             1        3              7.6 EiB       8 B     -5 B\n"
            "                                     8776627963145224192         8       -5\n"
            "\n"
            "Largest packages        Action                 Size  Unpacked\n"
            "c<U+001B>[2J_huge too  extract              7.8 EiB       4 B\n"
            "                                9000000000000000000         4\n"
            "c<U+001B>[2J_huge      extract              7.8 EiB       3 B\n"
            "                                9000000000000000000         3\n"
            "d_huge three           extract              7.8 EiB       3 B\n"
            "                                9000000000000000000         3\n"
            "\n"
            "Note: In this document, there are doubtful sizes: 1 package with a negative\n"
            "size, 1 package with a size that does not fit into 64 bits and was taken for\n"
            "-9223372036854775808. Sums take sizes as they stand.\n");
}

TEST(ShownForPeople, PutsTheMarkInFrontOfTheSizeAndExplainsIt) {
  EXPECT_THAT(
      show(makeDoubtfulDocument().json(), {"--top", "9"}).out,
      AllOf(HasSubstr(
                "\nNote: In this document, '!' marks doubtful sizes: 1 package with a negative"),
            HasSubstr("c<U+001B>[2J_old          delete                ! -5 B\n"
                      "                                                    -5\n"),
            HasSubstr("c<U+001B>[2J_impossible  extract            ! -8.0 EiB       1 B\n"
                      "                                  -9223372036854775808         1\n")));
}

TEST(ShownForPrograms, HasNullForASumThatDoesNotFit) {
  const Json shown = Json::parse(show(makeDoubtfulDocument().json(), {"--format=json"}).out);
  EXPECT_EQ(shown["totals"].dump(),
            R"({"components":2,"packagesToDelete":1,"packagesToExtract":4,"bytesToFetch":null,)"
            R"("bytesUnpacked":11,"bytesDeleted":-5,"filesToDelete":0})");
  EXPECT_EQ(shown["doubtfulSizes"].dump(), R"({"negative":1,"truncated":1})");
}

TEST(WhatIsShown, HasNoBaseCodeForAProductInNoCatalogue) {
  PlainDocument document;
  document.products["Known"] = {{}, {"c"}};
  document.products["Unknown"] = {{}, {"c"}};
  const std::string products = "\nK\tKnown\t1\t\n";
  const Json shown = Json::parse(show(document.json(), {"--format=json"}, products).out);
  EXPECT_EQ(shown["products"][0]["baseCode"].dump(), "\"K\"");
  EXPECT_EQ(shown["products"][1]["baseCode"].dump(), "null");
  EXPECT_THAT(show(document.json(), {}, products).out,
              AllOf(HasSubstr("\nKnown "), HasSubstr("\n  K, 1 component "),
                    HasSubstr("\nUnknown "), HasSubstr("\n  1 component ")));
}

TEST(WhatIsShown, LeavesOutTheSmallerProductsForPeopleOnly) {
  PlainDocument document;
  for (int size = 1; size <= 7; ++size) {
    const std::string name = std::to_string(size);
    document.components[name] = {{}, {{"p", {size, 0}}}};
    document.products[name] = {{}, {name}};
  }
  const auto productsOf = [&](std::vector<std::string> options) {
    const std::string text = show(document.json(), options).out;
    const std::size_t begin = text.find("Products ");
    return text.substr(begin, text.find("Files to delete") - begin);
  };
  EXPECT_EQ(productsOf({"--top=2"}),
            "Products             Delete  Extract  To fetch  Unpacked  Deleted\n"
            "7                         0        1       7 B       0 B      0 B\n"
            "  1 component                                7         0        0\n"
            "6                         0        1       6 B       0 B      0 B\n"
            "  1 component                                6         0        0\n"
            "and 5 more products\n"
            "In all                    0        7      28 B       0 B      0 B\n"
            "  7 components                              28         0        0\n");
  EXPECT_EQ(productsOf({"--top=2", "--sort=name"}),
            "Products             Delete  Extract  To fetch  Unpacked  Deleted\n"
            "6                         0        1       6 B       0 B      0 B\n"
            "  1 component                                6         0        0\n"
            "7                         0        1       7 B       0 B      0 B\n"
            "  1 component                                7         0        0\n"
            "and 5 more products\n"
            "In all                    0        7      28 B       0 B      0 B\n"
            "  7 components                              28         0        0\n");
  EXPECT_THAT(productsOf({"--top=6"}), HasSubstr("\nand 1 more product\n"));
  EXPECT_THAT(productsOf({"--top=7"}), Not(HasSubstr("more product")));
  EXPECT_THAT(productsOf({"--top=0"}), HasSubstr("  Deleted\n7 products\nIn all "));
  const Json shown = Json::parse(show(document.json(), {"--top=2", "--format=json"}).out);
  EXPECT_EQ(shown["products"].size(), 7);
}

TEST(WhatIsShown, LeavesOutTheLargestOnesOnDemand) {
  PlainDocument document;
  document.components["c"] = {{}, {{"e", {1, 2}}}};
  document.products["p"] = {{}, {"c"}};
  const Json shown = Json::parse(show(document.json(), {"--top=0", "--format=json"}).out);
  EXPECT_EQ(shown["largestComponents"], Json::array());
  EXPECT_EQ(shown["largestPackages"], Json::array());
  EXPECT_EQ(show(document.json(), {"--top=0"}).out,
            "Base release:   Old, version 1\n"
            "Target release: New, version 2, update level 3\n"
            "Architecture:   x86_64\n"
            "\n"
            "Products       Delete  Extract  To fetch  Unpacked  Deleted\n"
            "1 product\n"
            "In all              0        1       1 B       2 B      0 B\n"
            "  1 component                          1         2        0\n"
            "Files to delete: 0\n");
}

// --- made-up documents against a plain computation -------------------------------------------

Json toJson(const PlainTotals::Sums& sums) {
  return {{"components", sums.components},
          {"packagesToDelete", sums.packagesToDelete},
          {"packagesToExtract", sums.packagesToExtract},
          {"bytesToFetch", sums.bytesToFetch},
          {"bytesUnpacked", sums.bytesUnpacked},
          {"bytesDeleted", sums.bytesDeleted}};
}

// How many packages more than one product names.
std::size_t countShared(const PlainTotals& plain, bool isDeleted) {
  std::map<std::string, int> products;
  for (const std::string& product : plain.products()) {
    for (const auto& entry : isDeleted ? plain.toDelete({product}) : plain.toExtract({product})) {
      ++products[entry.first];
    }
  }
  return static_cast<std::size_t>(std::count_if(
      products.begin(), products.end(), [](const auto& entry) { return entry.second > 1; }));
}

// The members of an overview that are numbers, made from the plain tables.
Json expectedNumbers(const PlainDocument& document) {
  const PlainTotals plain(document);
  Json expected;
  expected["totals"] = toJson(plain.of(plain.products()));
  expected["totals"]["filesToDelete"] = plain.files();
  expected["sharedPackages"] = {{"toDelete", countShared(plain, true)},
                                {"toExtract", countShared(plain, false)}};
  std::set<std::string> keys;
  for (const auto& [component, packages] : document.componentsWithFiles) {
    for (const auto& entry : packages) {
      keys.insert(component + '_' + entry.first);
    }
  }
  expected["packagesWithFiles"] = keys.size();
  expected["products"] = Json::array();
  for (const std::string& name : plain.products()) {
    Json product = {{"name", name}, {"baseCode", nullptr}};
    product.update(toJson(plain.of({name})));
    expected["products"].push_back(std::move(product));
  }
  Json& packages = expected["largestPackages"] = Json::array();
  for (const auto& [key, sizes] : plain.toDelete(plain.products())) {
    packages.push_back({{"key", key}, {"action", "delete"}, {"size", sizes.size}});
  }
  for (const auto& [key, sizes] : plain.toExtract(plain.products())) {
    packages.push_back({{"key", key},
                        {"action", "extract"},
                        {"size", sizes.size},
                        {"uncompressedBytes", sizes.uncompressedBytes}});
  }
  const auto precedes = [](const Json& left, const Json& right) {
    return left["key"] != right["key"] ? left["key"] < right["key"] : left["size"] > right["size"];
  };
  std::sort(packages.begin(), packages.end(), precedes);
  return expected;
}

TEST(ShownForPrograms, AgreesWithAPlainComputationForMadeUpDocuments) {
  std::mt19937 random(7);
  for (int round = 0; round < 50; ++round) {
    const PlainDocument document = test_support::makeRandomDocument(random);
    const ToolRun run = show(document.json(), {"--format=json", "--sort=name", "--top=1000"});
    const Json shown = Json::parse(run.out);
    Json numbers;
    for (const char* member :
         {"totals", "sharedPackages", "packagesWithFiles", "products", "largestPackages"}) {
      numbers[member] = shown[member];
    }
    EXPECT_EQ(numbers.dump(1), expectedNumbers(document).dump(1)) << document.json();
  }
}

TEST(WhatIsShown, IsOrderedBySizeAndThenByName) {
  std::mt19937 random(8);
  for (int round = 0; round < 20; ++round) {
    const std::string text = test_support::makeRandomDocument(random).json();
    const Json bySize = Json::parse(show(text, {"--format=json", "--top=3"}).out);
    const Json all = Json::parse(show(text, {"--format=json", "--top=1000"}).out);
    const Json byName = Json::parse(show(text, {"--format=json", "--top=3", "--sort=name"}).out);
    for (const char* rows : {"products", "largestComponents"}) {
      EXPECT_TRUE(std::is_sorted(all[rows].begin(), all[rows].end(),
                                 [](const Json& left, const Json& right) {
                                   return left["bytesToFetch"] > right["bytesToFetch"];
                                 }))
          << all[rows];
      EXPECT_TRUE(std::is_sorted(
          byName[rows].begin(), byName[rows].end(),
          [](const Json& left, const Json& right) { return left["name"] < right["name"]; }))
          << byName[rows];
    }
    for (const char* rows : {"largestComponents", "largestPackages"}) {
      const auto top = static_cast<std::ptrdiff_t>(std::min<std::size_t>(3, all[rows].size()));
      EXPECT_EQ(bySize[rows], Json(Json::array_t(all[rows].begin(), all[rows].begin() + top)));
      Json kept = byName[rows];
      EXPECT_TRUE(
          std::is_permutation(kept.begin(), kept.end(), bySize[rows].begin(), bySize[rows].end()));
    }
  }
}

// --- what does not work ---------------------------------------------------------------------

TEST(Showing, EndsWithTheCodeTwoIfTheDocumentCannotBeLoaded) {
  EXPECT_EQ(runTool({"show", "no-such-file"}),
            (ToolRun{2, "",
                     "Update MetaData Json file does not exist \n"
                     "update-metadata: 'no-such-file' could not be loaded; check the path\n"}));
}

TEST(Showing, EndsWithTheCodeTwoIfTheProductDataCannotBeRead) {
  PlainDocument document;
  document.products["p"] = {{}, {"c"}};
  EXPECT_EQ(show(document.json(), {}, "\nx\n"),
            (ToolRun{2, "",
                     "./products.tsv:2: expected 4 tab-separated fields, found 1\n"
                     "update-metadata: 'update.json' was loaded, but the questions about it could "
                     "not be answered; check the product data at '.'\n"}));
}

class WrongUsages : public ::testing::TestWithParam<WrongUsage> {};

TEST_P(WrongUsages, EndWithTheCodeTwoAndAPointerToTheHelp) {
  EXPECT_EQ(runTool(GetParam().arguments), refusedRun(GetParam()));
}

const WrongUsage kWrongUsages[] = {
    {"NoFile", {"show"}, "FILE is required"},
    {"UnknownOrder", {"show", "x", "--sort", "date"}, "--sort: date not in {size,name}"},
    {"UnknownFormat", {"show", "x", "--format", "xml"}, "--format: xml not in {text,json}"},
    {"NegativeTop", {"show", "x", "--top=-1"}, "--top: '-1' is no whole number, or is too large"},
    {"TopThatIsNoNumber",
     {"show", "x", "--top", "5 or so"},
     "--top: '5 or so' is no whole number, or is too large"},
    {"TopTooLarge",
     {"show", "x", "--top", "18446744073709551616"},
     "--top: '18446744073709551616' is no whole number, or is too large"},
    {"FileNotUtf8", {"show", "\xFF"}, "FILE: the argument is not UTF-8"},
    {"ProductDataNotUtf8",
     {"show", "x", "--product-data", "\xFF"},
     "--product-data: the argument is not UTF-8"},
};
INSTANTIATE_TEST_SUITE_P(Usages, WrongUsages, ::testing::ValuesIn(kWrongUsages),
                         [](const auto& row) { return row.param.name; });

TEST(Showing, NoticesThatItsOutputIsNotWritten) {
  for (const char* format : {"--format=text", "--format=json"}) {
    ToolSurroundings around;
    around.folder = kSourceDir + "/examples/documents";
    around.outFile = "/dev/full";
    EXPECT_EQ(runTool({"show", kSmall, format}, around),
              (ToolRun{1, "",
                       "update-metadata: standard output could not be written: No space left on "
                       "device; what was written is not complete\n"}));
    around.outFile.reset();
    around.isOutClosedPipe = true;
    EXPECT_EQ(runTool({"show", kSmall, format}, around),
              (ToolRun{1, "",
                       "update-metadata: standard output could not be written: Broken pipe; what "
                       "was written is not complete\n"}));
  }
}

TEST(HelpOfShow, TellsExamplesAndExitCodes) {
  const ToolRun help = runTool({"show", "--help"});
  EXPECT_EQ(help.exitCode, 0);
  EXPECT_THAT(help.out, AllOf(HasSubstr("Usage: update-metadata show [OPTIONS] FILE\n"),
                              HasSubstr("Examples:\n  update-metadata show update.json\n"),
                              HasSubstr("Exit status: 0 shown, 1 ")));
}

}  // namespace
}  // namespace update_metadata_tool::show
