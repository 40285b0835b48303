#include "show/TextOutput.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/Json.h"
#include "support/PlainDocument.h"
#include "support/RunTool.h"
#include "support/ToolCases.h"

namespace update_metadata_tool::show {
namespace {

using test_support::Json;
using test_support::parseJson;
using test_support::PlainDocument;
using test_support::runOnDocument;
using test_support::ToolRun;
using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;

ToolRun show(const std::string& document, std::vector<std::string> options,
             const std::string& products = "") {
  options.insert(options.begin(), "show");
  return runOnDocument(options, document, products);
}

const std::string kNothing =
    R"({"metadata":{"arch":"","base":null,"target":null},"components":null,"products":null,)"
    R"("componentsWithFilesDeleted":null})";

TEST(ShowForPeople, PrintsATotalOfZeroForAnEmptyDocument) {
  EXPECT_EQ(show(kNothing, {}),
            (ToolRun{0,
                     "Base release:   none\n"
                     "Target release: none, update level 0\n"
                     "Architecture:   (empty)\n"
                     "\n"
                     "Products        Delete  Extract  To fetch  Unpacked  Deleted\n"
                     "Total                0        0       0 B       0 B      0 B\n"
                     "  0 components                          0         0        0\n"
                     "Files to delete: 0\n",
                     ""}));
}

TEST(ShowForPrograms, WritesEveryMemberForAnEmptyDocument) {
  EXPECT_EQ(
      show(kNothing, {"--format", "json"}),
      (ToolRun{0,
               R"({"version":1,"base":{"family":"","version":""},)"
               R"("target":{"family":"","version":"","updateLevel":0},"arch":"",)"
               R"("totals":{"components":0,"packagesToDelete":0,"packagesToExtract":0,)"
               R"("bytesToFetch":0,"bytesUnpacked":0,"bytesDeleted":0,"filesToDelete":0},)"
               R"("sharedPackages":{"toDelete":0,"toExtract":0},"packagesWithFiles":0,)"
               R"("doubtfulSizes":{"negative":0,"truncated":0},)"
               R"("products":[],"largestComponents":[],"largestPackages":[],)"
               R"("sha256":"e6168a8a3678587bd02727978a6332ad301ff2f243652ca179548fa9ae26858a"})"
               "\n",
               ""}));
}

// Negative sizes, sizes beyond 64 bits and sums beyond 64 bits, with harmful names.
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

TEST(ShowForPeople, CountsDoubtfulSizesAndMarksSumsThatDoNotFit) {
  EXPECT_EQ(show(makeDoubtfulDocument().json(), {"--top", "3"}).out,
            "Base release:   Old, version 1\n"
            "Target release: New, version 2, update level 3\n"
            "Architecture:   x86_64\n"
            "\n"
            "Products        Delete  Extract              To fetch  Unpacked  Deleted\n"
            "p<U+000A>            1        4              >8.0 EiB      11 B     -5 B\n"
            "  2 components                   >9223372036854775807        11       -5\n"
            "Total                1        4              >8.0 EiB      11 B     -5 B\n"
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
            "size, 1 package with a size that does not fit into 64 bits and is read as\n"
            "-9223372036854775808. Totals include these sizes.\n");
}

TEST(ShowForPeople, MarksDoubtfulSizesAndExplainsTheMark) {
  EXPECT_THAT(
      show(makeDoubtfulDocument().json(), {"--top", "9"}).out,
      AllOf(HasSubstr(
                "\nNote: In this document, '!' marks doubtful sizes: 1 package with a negative"),
            HasSubstr("c<U+001B>[2J_old          delete                ! -5 B\n"
                      "                                                    -5\n"),
            HasSubstr("c<U+001B>[2J_impossible  extract            ! -8.0 EiB       1 B\n"
                      "                                  -9223372036854775808         1\n")));
}

TEST(ShowForPrograms, WritesNullForASumThatDoesNotFit) {
  const Json shown = parseJson(show(makeDoubtfulDocument().json(), {"--format=json"}).out);
  EXPECT_EQ(shown["totals"].dump(),
            R"({"components":2,"packagesToDelete":1,"packagesToExtract":4,"bytesToFetch":null,)"
            R"("bytesUnpacked":11,"bytesDeleted":-5,"filesToDelete":0})");
  EXPECT_EQ(shown["doubtfulSizes"].dump(), R"({"negative":1,"truncated":1})");
}

TEST(Show, PrintsNoBaseCodeForAProductThatTheProductDataDoNotContain) {
  PlainDocument document;
  document.products["Known"] = {{}, {"c"}};
  document.products["Unknown"] = {{}, {"c"}};
  const std::string products = "\nK\tKnown\t1\t\n";
  const Json shown = parseJson(show(document.json(), {"--format=json"}, products).out);
  EXPECT_EQ(shown["products"][0]["baseCode"].dump(), "\"K\"");
  EXPECT_EQ(shown["products"][1]["baseCode"].dump(), "null");
  EXPECT_THAT(show(document.json(), {}, products).out,
              AllOf(HasSubstr("\nKnown "), HasSubstr("\n  K, 1 component "),
                    HasSubstr("\nUnknown "), HasSubstr("\n  1 component ")));
}

TEST(Show, OmitsSmallerProductsForPeopleOnly) {
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
            "Total                     0        7      28 B       0 B      0 B\n"
            "  7 components                              28         0        0\n");
  EXPECT_EQ(productsOf({"--top=2", "--sort=name"}),
            "Products             Delete  Extract  To fetch  Unpacked  Deleted\n"
            "6                         0        1       6 B       0 B      0 B\n"
            "  1 component                                6         0        0\n"
            "7                         0        1       7 B       0 B      0 B\n"
            "  1 component                                7         0        0\n"
            "and 5 more products\n"
            "Total                     0        7      28 B       0 B      0 B\n"
            "  7 components                              28         0        0\n");
  EXPECT_THAT(productsOf({"--top=6"}), HasSubstr("\nand 1 more product\n"));
  EXPECT_THAT(productsOf({"--top=7"}), Not(HasSubstr("more product")));
  EXPECT_THAT(productsOf({"--top=0"}), HasSubstr("  Deleted\n7 products\nTotal "));
  const Json shown = parseJson(show(document.json(), {"--top=2", "--format=json"}).out);
  EXPECT_EQ(shown["products"].size(), 7);
}

TEST(Show, ListsNothingWithATopOfZero) {
  PlainDocument document;
  document.components["c"] = {{}, {{"e", {1, 2}}}};
  document.products["p"] = {{}, {"c"}};
  const Json shown = parseJson(show(document.json(), {"--top=0", "--format=json"}).out);
  EXPECT_EQ(shown["largestComponents"], Json::array());
  EXPECT_EQ(shown["largestPackages"], Json::array());
  EXPECT_EQ(show(document.json(), {"--top=0"}).out,
            "Base release:   Old, version 1\n"
            "Target release: New, version 2, update level 3\n"
            "Architecture:   x86_64\n"
            "\n"
            "Products       Delete  Extract  To fetch  Unpacked  Deleted\n"
            "1 product\n"
            "Total               0        1       1 B       2 B      0 B\n"
            "  1 component                          1         2        0\n"
            "Files to delete: 0\n");
}

}  // namespace
}  // namespace update_metadata_tool::show
