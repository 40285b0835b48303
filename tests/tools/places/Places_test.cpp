#include "places/LoadedDocument.h"

#include <cstddef>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "places/Place.h"
#include "places/ProductLookUp.h"
#include "support/TemporaryFolder.h"

namespace update_metadata_tool::places {
namespace {

using ::testing::ElementsAreArray;

// A place in one line, for instance "delete P(C) c_p 7: all used, one used".
std::string describe(const Place& place) {
  std::string text = nameOf(place.side);
  if (place.product != nullptr) {
    text += ' ' + std::string(place.product->name);
    text += place.product->baseCode ? '(' + *place.product->baseCode + ')' : "";
  }
  text += ' ' + (place.package ? keyOf(place) : std::string(place.component) + "_*");
  text += place.size ? ' ' + std::to_string(*place.size) : "";
  text += place.uncompressedBytes ? '/' + std::to_string(*place.uncompressedBytes) : "";
  text += ':';
  for (const auto& [answer, use] : {std::pair(" all ", place.verdicts.allProducts.use),
                                    {" one ", place.verdicts.oneProduct.use},
                                    {" sizes ", place.verdicts.sizes.use},
                                    {" files ", place.verdicts.files.use}}) {
    text += use == Use::kNotAsked ? "" : std::string(answer) + nameOf(use);
  }
  return text;
}

/// A document, the sections after "metadata", and its places.
struct PlacesCase {
  const char* name;
  std::string_view components;
  std::string_view products;
  std::string_view files;
  std::vector<std::string> places;
  std::string_view productData = {};
};

std::ostream& operator<<(std::ostream& out, const PlacesCase& row) {
  return out << row.name;
}

class PlacesOf : public ::testing::TestWithParam<PlacesCase> {};

TEST_P(PlacesOf, HaveOneUseForEachAnswer) {
  const PlacesCase& row = GetParam();
  const test_support::TemporaryFolder folder;
  const std::optional<std::u16string> location =
      row.productData.empty()
          ? std::nullopt
          : std::optional(folder.writeFile(
                "products.tsv",
                "base code\tname\tnumber\tcontrolling product\n" + std::string(row.productData)));
  const LoadedDocument document(
      "update.json", R"({"metadata":{"arch":"","base":null,"target":null},"components":)" +
                         std::string(row.components) + R"(,"products":)" +
                         std::string(row.products) + R"(,"componentsWithFilesDeleted":)" +
                         std::string(row.files) + '}');
  std::vector<std::string> places;
  document.forEachPlace(ProductLookUp(location),
                        [&](const Place& place) { places.push_back(describe(place)); });
  EXPECT_THAT(places, ElementsAreArray(row.places));
}

constexpr std::string_view kOneEach =
    R"({"c":{"delete":{"p":{"size":1}},"extract":{"q":{"size":2,"uncompressedBytes":3}}}})";

const PlacesCase kCases[] = {
    {"NoSections", "null", "null", "null", {}},
    {"APackageToDeleteAndOneToExtract",
     kOneEach,
     R"({"P":{"delete":["c"],"extract":["c"]}})",
     "null",
     {"delete P c_p 1: all used one used", "extract P c_q 2/3: all used one used sizes used"}},
    {"ProductsInTheOrderOfTheirBytes",
     kOneEach,
     R"({"b":{"delete":["c"],"extract":[]},"a":{"delete":["c"],"extract":[]}})",
     "null",
     {"delete a c_p 1: all used one used", "delete b c_p 1: all used one used",
      "extract c_q 2/3: all unused-component one unused-component sizes unused-component"}},
    {"TheEarlierProductGivesTheSizes",
     kOneEach,
     R"({"P":{"delete":[],"extract":["c"]},"Q":{"delete":[],"extract":["c"]}})",
     "null",
     {"extract P c_q 2/3: all used one used sizes used",
      "extract Q c_q 2/3: all used one used sizes earlier-product",
      "delete c_p 1: all unused-component one unused-component"}},
    {"TheEarlierProductHasTheBaseCode",
     kOneEach,
     R"({"P":{"delete":["c"],"extract":["c"]},"Q":{"delete":["c"],"extract":["c"]}})",
     "null",
     {"delete P(X) c_p 1: all used one used", "extract P(X) c_q 2/3: all used one used sizes used",
      "delete Q(X) c_p 1: all earlier-product one other-product",
      "extract Q(X) c_q 2/3: all earlier-product one other-product sizes earlier-product"},
     "X\tP\t1\t\nX\tQ\t2\t\n"},
    {"AProductWithNothingToDeleteTakesNoBaseCode",
     kOneEach,
     R"({"P":{"delete":[],"extract":["c"]},"Q":{"delete":["c"],"extract":[]}})",
     "null",
     {"extract P(X) c_q 2/3: all used one used sizes used",
      "delete Q(X) c_p 1: all used one other-product"},
     "X\tP\t1\t\nX\tQ\t2\t\n"},
    {"UnknownProductsShareTheEmptyBaseCode",
     kOneEach,
     R"({"P":{"delete":["c"],"extract":["c"]},"Q":{"delete":["c"],"extract":[]}})",
     "null",
     {"delete P c_p 1: all used one unknown-product",
      "extract P c_q 2/3: all used one unknown-product sizes used",
      "delete Q c_p 1: all unknown-product one unknown-product"},
     "X\tOther\t1\t\n"},
    {"AComponentNamedTwice",
     kOneEach,
     R"({"P":{"delete":["c","c"],"extract":["c","c"]}})",
     "null",
     {"delete P c_p 1: all used one used",
      "delete P c_p 1: all repeated-component one repeated-component",
      "extract P c_q 2/3: all used one used sizes used",
      "extract P c_q 2/3: all repeated-component one repeated-component sizes "
      "repeated-component"}},
    {"EqualKeysOfTwoComponents",
     R"({"a":{"delete":{"b_c":{"size":1}},"extract":{}},"a_b":{"delete":{"c":{"size":2}},"extract":{}}})",
     R"({"P":{"delete":["a_b","a"],"extract":[]}})",
     "null",
     {"delete P a_b_c 2: all used one used", "delete P a_b_c 1: all equal-key one equal-key"}},
    {"EqualKeysInTwoProducts",
     R"({"a":{"delete":{},"extract":{"b_c":{"size":1,"uncompressedBytes":1}}},)"
     R"("a_b":{"delete":{},"extract":{"c":{"size":2,"uncompressedBytes":2}}}})",
     R"({"P":{"delete":[],"extract":["a_b"]},"Q":{"delete":[],"extract":["a"]}})",
     "null",
     {"extract P a_b_c 2/2: all used one used sizes used",
      "extract Q a_b_c 1/1: all used one used sizes equal-key"}},
    {"PackageNamesThatAreReadAlike",
     "{\"c\":{\"delete\":{},\"extract\":{\"\xFF\":{\"size\":1,\"uncompressedBytes\":1},"
     "\"\xFE\":{\"size\":2,\"uncompressedBytes\":2}}}}",
     R"({"P":{"delete":[],"extract":["c"]}})",
     "null",
     {"extract P c_\xEF\xBF\xBD 2/2: all used one used sizes used",
      "extract P c_\xEF\xBF\xBD 1/1: all equal-key one equal-key sizes equal-key"}},
    {"ComponentNamesThatAreReadAlike",
     "{\"\xFF\":{\"delete\":{\"p\":{\"size\":1}},\"extract\":{}},"
     "\"\xFE\":{\"delete\":{\"q\":{\"size\":2}},\"extract\":{}}}",
     "{\"P\":{\"delete\":[\"\xFD\"],\"extract\":[]}}",
     "null",
     {"delete P \xEF\xBF\xBD_q 2: all used one used",
      "delete \xEF\xBF\xBD_p 1: all repeated-component one repeated-component"}},
    {"ProductNamesThatAreReadAlike",
     kOneEach,
     "{\"\xFF\":{\"delete\":[\"c\"],\"extract\":[]},\"\xFE\":{\"delete\":[\"c\"],\"extract\":[]}}",
     "null",
     {"delete \xEF\xBF\xBD c_p 1: all used one used",
      "delete \xEF\xBF\xBD c_p 1: all earlier-product one earlier-product",
      "extract c_q 2/3: all unused-component one unused-component sizes unused-component"}},
    {"AComponentThatIsNotDescribed",
     "{}",
     R"({"P":{"delete":["c"],"extract":[]}})",
     "null",
     {"delete P c_*: all undescribed-component one undescribed-component"}},
    {"ADescribedComponentWithoutPackages",
     R"({"c":{"delete":{},"extract":{}}})",
     R"({"P":{"delete":["c"],"extract":[]}})",
     "null",
     {}},
    {"ADuplicatePackage",
     R"({"c":{"delete":{"p":{"size":1},"p":{"size":2}},"extract":{}}})",
     R"({"P":{"delete":["c"],"extract":[]}})",
     "null",
     {"delete P c_p 1: all used one used", "delete c_p 2: all repeated-key one repeated-key"}},
    {"ADuplicateComponentOfAnyShape",
     R"({"c":{"delete":{"p":{"size":1}},"extract":{}},"c":{"delete":{"q":null,"r":{"size":"x"}}},"c":7})",
     R"({"P":{"delete":["c"],"extract":[]}})",
     "null",
     {"delete P c_p 1: all used one used", "delete c_q: all repeated-key one repeated-key",
      "delete c_r: all repeated-key one repeated-key"}},
    {"ADuplicateProduct",
     kOneEach,
     R"({"P":{"delete":["c"],"extract":["c"]},"P":{"delete":["c",5,"d"],"delete":[],"extract":7}})",
     "null",
     {"delete P c_p 1: all used one used", "extract P c_q 2/3: all used one used sizes used",
      "delete P c_p 1: all repeated-key one repeated-key",
      "delete P d_*: all repeated-key one repeated-key"}},
    {"ADuplicateListOfAProduct",
     kOneEach,
     R"({"P":{"delete":["c"],"extract":[],"extract":["c"]}})",
     "null",
     {"delete P c_p 1: all used one used",
      "extract c_q 2/3: all unused-component one unused-component sizes unused-component",
      "extract P c_q 2/3: all repeated-key one repeated-key sizes repeated-key"}},
    {"ADuplicateSection",
     R"({},"components":{"c":{"delete":{"p":{"size":1}},"extract":{}}})",
     "null",
     "null",
     {"delete c_p 1: all repeated-key one repeated-key"}},
    {"FilesToDelete",
     "null",
     "null",
     R"({"c":{"p":{"size":4,"files":["x","x"]}},"b":{"q":{"size":5,"files":[]}}})",
     {"files b_q 5: files used", "files c_p 4: files used"}},
    {"EqualKeysOfFiles",
     "null",
     "null",
     R"({"a_b":{"c":{"size":1,"files":[]}},"a":{"b_c":{"size":2,"files":[]}}})",
     {"files a_b_c 2: files used", "files a_b_c 1: files equal-key"}},
    {"ComponentsWithFilesThatAreReadAlike",
     "null",
     "null",
     "{\"\xFF\":{\"p\":{\"size\":1,\"files\":[]},\"q\":{\"size\":2,\"files\":[]}},"
     "\"\xFE\":{\"p\":{\"size\":3,\"files\":[]}}}",
     {"files \xEF\xBF\xBD_p 3: files used", "files \xEF\xBF\xBD_p 1: files repeated-component",
      "files \xEF\xBF\xBD_q 2: files used"}},
    {"DuplicateFilesOfAPackage",
     "null",
     "null",
     R"({"c":{"p":{"size":1,"files":[]},"p":{"size":2,"files":["x"]}}})",
     {"files c_p 1: files used", "files c_p 2: files repeated-key"}},
    // U+1F600 comes before U+E000 by UTF-16 code units, and after it by the bytes of UTF-8.
    {"PackagesToDeleteByCodeUnitsAndToExtractByBytes",
     "{\"c\":{\"delete\":{\"\xEE\x80\x80\":{\"size\":1},\"\xF0\x9F\x98\x80\":{\"size\":2}},"
     "\"extract\":{\"\xEE\x80\x80\":{\"size\":1,\"uncompressedBytes\":1},"
     "\"\xF0\x9F\x98\x80\":{\"size\":2,\"uncompressedBytes\":2}}}}",
     R"({"P":{"delete":["c"],"extract":["c"]}})",
     "null",
     {"delete P c_\xF0\x9F\x98\x80 2: all used one used",
      "delete P c_\xEE\x80\x80 1: all used one used",
      "extract P c_\xEE\x80\x80 1/1: all used one used sizes used",
      "extract P c_\xF0\x9F\x98\x80 2/2: all used one used sizes used"}},
};
INSTANTIATE_TEST_SUITE_P(Documents, PlacesOf, ::testing::ValuesIn(kCases),
                         [](const auto& row) { return row.param.name; });

TEST(PlacesOfADocument, HaveTheLinesOfThePackageAndOfTheNaming) {
  const LoadedDocument document("update.json",
                                "{\"metadata\":{\"arch\":\"\",\"base\":null,\"target\":null},\n"
                                "\"components\":{\"c\":{\"delete\":{\n"
                                "\"p\":{\"size\":1}},\"extract\":{}}},\n"
                                "\"products\":{\"P\":{\"delete\":[\n"
                                "\n"
                                "\"c\",\"d\"],\"extract\":[]}},\n"
                                "\"componentsWithFilesDeleted\":null}");
  std::vector<std::pair<std::size_t, std::optional<std::size_t>>> lines;
  document.forEachPlace(ProductLookUp(std::nullopt), [&](const Place& place) {
    lines.emplace_back(place.line, place.namingLine);
  });
  EXPECT_EQ(lines,
            (std::vector<std::pair<std::size_t, std::optional<std::size_t>>>{{3, 6}, {6, 6}}));
}

}  // namespace
}  // namespace update_metadata_tool::places
