// The sections "components" and "products". What each faulty member leads to is in
// FaultyMembers_test.cpp.

#include <cstdint>
#include <limits>
#include <map>
#include <memory>
#include <ostream>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "foundation/json/Value.h"
#include "install/update_metadata_parser/UpdateMetaDataHandler.h"
#include "install/update_metadata_parser/UpdatePkgData.h"
#include "json/JsonText.h"
#include "reader/SectionParser.h"
#include "support/Failure.h"

namespace install::update_metadata_parser {
namespace {

using foundation::json::Array;
using foundation::json::Object;
using foundation::json::parseJsonText;
using foundation::json::Value;
using test_support::failureOf;
using test_support::invalidConversion;
using test_support::invalidData;
using test_support::SectionParser;
using ::testing::ElementsAre;

using PkgsToDelete = UpdateMetaDataHandler::PkgsToDelete;
using PkgsToExtract = UpdateMetaDataHandler::PkgsToExtract;

/// The fields of a package to extract, which can be compared and printed: its name, its size, its
/// unpacked size.
using PkgFields = std::tuple<std::u16string, std::int64_t, std::int64_t>;

std::vector<PkgFields> fieldsOf(const std::vector<UpdatePkgData>& pkgs) {
  std::vector<PkgFields> fields;
  for (const UpdatePkgData& pkg : pkgs) {
    fields.emplace_back(pkg.name, pkg.size, pkg.uncompressedBytes);
  }
  return fields;
}

std::map<std::u16string, std::vector<PkgFields>> fieldsOf(const PkgsToExtract& table) {
  std::map<std::u16string, std::vector<PkgFields>> fields;
  for (const auto& [component, pkgs] : table) {
    fields[component] = fieldsOf(pkgs);
  }
  return fields;
}

constexpr std::int64_t kMinimum = std::numeric_limits<std::int64_t>::min();

/// The two tables after a section "components" was read, and how that ended.
struct Tables {
  std::string failure;
  PkgsToDelete toDelete;
  std::map<std::u16string, std::vector<PkgFields>> toExtract;
};

bool operator==(const Tables& left, const Tables& right) {
  return std::tie(left.failure, left.toDelete, left.toExtract) ==
         std::tie(right.failure, right.toDelete, right.toExtract);
}

std::ostream& operator<<(std::ostream& out, const Tables& tables) {
  return out << ::testing::PrintToString(
             std::tie(tables.failure, tables.toDelete, tables.toExtract));
}

Tables readComponents(const std::string& text) {
  SectionParser parser;
  const auto outcome = parser.outcomeOf([&] { parser.parseComponentData(parseJsonText(text)); });
  EXPECT_EQ(outcome.size(), 1U) << "the handler is not called";
  return {outcome.front(), parser.componentPkgsToDelete, fieldsOf(parser.componentPkgsToExtract)};
}

std::map<std::u16string, std::int64_t> readPkgsToDelete(const std::string& text) {
  const SectionParser parser;
  return parser.parsePkgsForComponentsToDelete(parseJsonText(text));
}

std::vector<PkgFields> readPkgsToExtract(const std::string& text) {
  const SectionParser parser;
  return fieldsOf(parser.parsePkgsForComponentsToExtract(parseJsonText(text)));
}

/// The outcome of reading a section "products" with empty tables.
std::vector<std::string> readProducts(const std::string& text) {
  SectionParser parser;
  return parser.outcomeOf([&] { parser.parseProductData(parseJsonText(text)); });
}

TEST(ComponentsSection, FillsBothTables) {
  EXPECT_EQ(readComponents(R"({
              "ui": {"delete": {}, "extract": {"b": {"size": 1, "uncompressedBytes": 2}}},
              "core": {"delete": {"y": {"size": 3}, "x": {"size": 4}},
                       "extract": {"z": {"size": 5, "uncompressedBytes": 6},
                                   "a": {"size": 7, "uncompressedBytes": 8}}}})"),
            (Tables{"nothing",
                    {{u"core", {{u"x", 4}, {u"y", 3}}}},
                    {{u"core", {{u"a", 7, 8}, {u"z", 5, 6}}}, {u"ui", {{u"b", 1, 2}}}}}));
}

TEST(ComponentsSection, LeavesNoTraceOfAComponentWithoutPackages) {
  EXPECT_EQ(readComponents(R"({"core": {"delete": {}, "extract": {}}})"),
            (Tables{"nothing", {}, {}}));
}

TEST(ComponentsSection, IsEmptyWhenItIsNullOrHasNoMembers) {
  EXPECT_EQ(readComponents("null"), (Tables{"nothing", {}, {}}));
  EXPECT_EQ(readComponents("{}"), (Tables{"nothing", {}, {}}));
}

TEST(ComponentsSection, KeepsWhatItReadBeforeAFault) {
  EXPECT_EQ(readComponents(R"({
              "b": {"delete": {"x": {"size": 1}},
                    "extract": {"y": {"size": 2, "uncompressedBytes": null}}},
              "a": {"delete": {"x": {"size": 3}},
                    "extract": {"y": {"size": 4, "uncompressedBytes": 5}}},
              "c": {"delete": {"x": {"size": 6}}, "extract": {}}})"),
            (Tables{invalidConversion<std::nullptr_t, double>(),
                    {{u"a", {{u"x", 3}}}, {u"b", {{u"x", 1}}}},
                    {{u"a", {{u"y", 4, 5}}}}}));
}

TEST(ComponentsSection, KeepsNothingOfAFaultyTable) {
  EXPECT_EQ(readComponents(R"({"a": {"delete": {"x": {"size": 1}, "y": {}}, "extract": {}}})"),
            (Tables{invalidData("size"), {}, {}}));
}

// The names "\xFE" and "\xFF" are ill-formed and decode alike.

TEST(ComponentsSection, KeepsInEachTableTheFirstOfTwoComponentsWhoseNamesDecodeAlike) {
  EXPECT_EQ(readComponents("{\"\xFF\": {\"delete\": {\"x\": {\"size\": 1}}, \"extract\": "
                           "{\"y\": {\"size\": 2, \"uncompressedBytes\": 3}}},"
                           "\"\xFE\": {\"delete\": {\"z\": {\"size\": 4}}, \"extract\": {}}}"),
            (Tables{"nothing", {{u"\uFFFD", {{u"z", 4}}}}, {{u"\uFFFD", {{u"y", 2, 3}}}}}));
}

TEST(ComponentsSection, ReadsAComponentThatIsToBeDropped) {
  EXPECT_EQ(readComponents("{\"\xFE\": {\"delete\": {\"x\": {\"size\": 1}}, \"extract\": {}},"
                           "\"\xFF\": {\"delete\": {\"y\": {}}, \"extract\": {}}}"),
            (Tables{invalidData("size"), {{u"\uFFFD", {{u"x", 1}}}}, {}}));
}

TEST(ComponentsSection, AddsToWhatTheTablesHoldAlready) {
  SectionParser parser;
  parser.componentPkgsToDelete = {{u"core", {{u"kept", 1}}}};
  parser.componentPkgsToExtract = {{u"ui", {{u"kept", 2, 3}}}};
  parser.parseComponentData(parseJsonText(R"({
      "core": {"delete": {"x": {"size": 4}},
               "extract": {"y": {"size": 5, "uncompressedBytes": 6}}},
      "ui": {"delete": {"z": {"size": 7}},
             "extract": {"w": {"size": 8, "uncompressedBytes": 9}}}})"));
  EXPECT_EQ(parser.componentPkgsToDelete,
            (PkgsToDelete{{u"core", {{u"kept", 1}}}, {u"ui", {{u"z", 7}}}}));
  EXPECT_EQ(fieldsOf(parser.componentPkgsToExtract),
            (std::map<std::u16string, std::vector<PkgFields>>{{u"core", {{u"y", 5, 6}}},
                                                              {u"ui", {{u"kept", 2, 3}}}}));
}

TEST(ComponentsSection, IgnoresOtherMembers) {
  EXPECT_EQ(readComponents(R"({"core": {"checksum": 1, "qzdata": [1], "qztype": "int8",
              "delete": {"x": {"size": 1, "uncompressedBytes": "?", "checksum": null}},
              "extract": {"y": {"size": 2, "uncompressedBytes": 3, "files": 4}}}})"),
            (Tables{"nothing", {{u"core", {{u"x", 1}}}}, {{u"core", {{u"y", 2, 3}}}}}));
}

TEST(ComponentsSection, TakesATypedPayloadAmongItsComponentsForAComponent) {
  EXPECT_EQ(readComponents(R"({"qztype": "int8", "qzdata": [1],
                               "a": {"delete": {"x": {"size": 1}}, "extract": {}}})"),
            (Tables{invalidConversion<Array, Object>(), {{u"a", {{u"x", 1}}}}, {}}));
}

TEST(PkgsToDelete, AreOrderedByTheirUtf16Names) {
  const auto pkgs = readPkgsToDelete(
      "{\"delete\": {\"\xF0\x9F\x98\x80\": {\"size\": 1}, \"\xEF\xBC\xA1\": {\"size\": 2},"
      "\"z\": {\"size\": 3}, \"\": {\"size\": 4}}}");
  EXPECT_EQ(pkgs, (std::map<std::u16string, std::int64_t>{
                      {u"", 4}, {u"z", 3}, {u"\U0001F600", 1}, {u"\uFF21", 2}}));
}

TEST(PkgsToDelete, KeepTheFirstOfTwoWhoseNamesDecodeAlike) {
  EXPECT_EQ(readPkgsToDelete("{\"delete\": {\"\xFF\": {\"size\": 1}, \"\xFE\": {\"size\": 2}}}"),
            (std::map<std::u16string, std::int64_t>{{u"\uFFFD", 2}}));
}

TEST(PkgsToDelete, AreReadEvenIfTheyAreToBeDropped) {
  EXPECT_EQ(
      failureOf([] { readPkgsToDelete("{\"delete\": {\"\xFE\": {\"size\": 1}, \"\xFF\": {}}}"); }),
      invalidData("size"));
}

TEST(PkgsToDelete, KeepTheFirstOfARepeatedKey) {
  EXPECT_EQ(readPkgsToDelete(R"({"delete": {"x": {"size": 1}, "\u0078": {"size": 2}},
                                 "delete": {"y": {"size": 3}}})"),
            (std::map<std::u16string, std::int64_t>{{u"x", 1}}));
}

TEST(PkgsToExtract, AreInTheByteOrderOfTheirUtf8Names) {
  EXPECT_THAT(readPkgsToExtract(
                  "{\"extract\": {\"\xF0\x9F\x98\x80\": {\"size\": 1, \"uncompressedBytes\": 2},"
                  "\"\xEF\xBC\xA1\": {\"size\": 3, \"uncompressedBytes\": 4},"
                  "\"z\": {\"size\": 5, \"uncompressedBytes\": 6},"
                  "\"a\": {\"size\": 7, \"uncompressedBytes\": 8}}}"),
              ElementsAre(PkgFields{u"a", 7, 8}, PkgFields{u"z", 5, 6}, PkgFields{u"\uFF21", 3, 4},
                          PkgFields{u"\U0001F600", 1, 2}));
}

TEST(PkgsToExtract, KeepAllWhoseNamesDecodeAlike) {
  EXPECT_THAT(readPkgsToExtract("{\"extract\": {\"\xFF\": {\"size\": 1, \"uncompressedBytes\": 2},"
                                "\"\xFE\": {\"size\": 3, \"uncompressedBytes\": 4}}}"),
              ElementsAre(PkgFields{u"\uFFFD", 3, 4}, PkgFields{u"\uFFFD", 1, 2}));
}

TEST(PkgsToExtract, NameTheSizeWhenBothNumbersAreFaulty) {
  const std::string text = R"({"extract": {"x": {"size": "1", "uncompressedBytes": "2"}}})";
  EXPECT_EQ(failureOf([&] { readPkgsToExtract(text); }), invalidData("size"));
}

/// A number of a package, as a document writes it.
struct Bytes {
  const char* name;
  const char* number;
  std::int64_t bytes;
};

void PrintTo(const Bytes& bytes, std::ostream* stream) {
  *stream << bytes.name;
}

const Bytes kBytes[] = {
    {"CutTowardZero", "12.9", 12},
    {"NegativeCutTowardZero", "-3.5", -3},
    {"OutOfRange", "1e30", kMinimum},
    {"BelowTheRange", "-1e30", kMinimum},
    {"Infinite", "1e999", kMinimum},
    {"TwoTo63", "9223372036854775807", kMinimum},
    {"TheLeast", "-9223372036854775808", kMinimum},
};

class BytesOfAPackage : public ::testing::TestWithParam<Bytes> {};

TEST_P(BytesOfAPackage, AreCutTowardZeroAndAreTheMinimumOutOfRange) {
  const std::string number = GetParam().number;
  EXPECT_THAT(readPkgsToDelete(R"({"delete": {"x": {"size": )" + number + "}}}"),
              ElementsAre(std::pair(u"x", GetParam().bytes)));
  EXPECT_THAT(readPkgsToExtract(R"({"extract": {"x": {"size": )" + number +
                                R"(, "uncompressedBytes": )" + number + "}}}"),
              ElementsAre(PkgFields{u"x", GetParam().bytes, GetParam().bytes}));
}

INSTANTIATE_TEST_SUITE_P(Numbers, BytesOfAPackage, ::testing::ValuesIn(kBytes),
                         [](const auto& row) { return row.param.name; });

TEST(ProductsSection, HandsTheProductsOverInTheByteOrderOfTheirUtf8Names) {
  EXPECT_THAT(readProducts("{\"b\": {\"delete\": [\"x\"], \"extract\": []},"
                           "\"\xF0\x9F\x98\x80\": {\"delete\": [], \"extract\": [\"y\"]},"
                           "\"\xEF\xBC\xA1\": {\"delete\": [], \"extract\": [\"z\"]},"
                           "\"a\": {\"delete\": [\"w\"], \"extract\": []}}"),
              ElementsAre("nothing", R"(setProductDeltaData("a", ["w"], [], {}, {}))",
                          R"(setProductDeltaData("b", ["x"], [], {}, {}))",
                          R"(setProductDeltaData("\uFF21", [], ["z"], {}, {}))",
                          R"(setProductDeltaData("\uD83D\uDE00", [], ["y"], {}, {}))"));
}

TEST(ProductsSection, SkipsAProductThatNamesNoComponent) {
  EXPECT_THAT(readProducts(R"({"a": {"delete": [], "extract": []},
                               "b": {"delete": [], "extract": ["c"]}})"),
              ElementsAre("nothing", R"(setProductDeltaData("b", [], ["c"], {}, {}))"));
}

TEST(ProductsSection, IsEmptyWhenItIsNullOrHasNoMembers) {
  EXPECT_THAT(readProducts("null"), ElementsAre("nothing"));
  EXPECT_THAT(readProducts("{}"), ElementsAre("nothing"));
}

TEST(ProductsSection, HandsBothTablesWholeToEveryProduct) {
  SectionParser parser;
  parser.componentPkgsToDelete = {{u"a", {{u"p", 1}}}, {u"b", {{u"q", 2}}}};
  parser.componentPkgsToExtract = {{u"c", {{u"r", 3, 4}, {u"r", 5, 6}}}};
  EXPECT_THAT(
      parser.outcomeOf([&] {
        parser.parseProductData(parseJsonText(R"({"one": {"delete": ["a"], "extract": []},
                                                  "two": {"delete": [], "extract": ["x"]}})"));
      }),
      ElementsAre("nothing",
                  R"(setProductDeltaData("one", ["a"], [], {"a": {"p": 1}, "b": {"q": 2}}, )"
                  R"({"c": [("r", 3, 4), ("r", 5, 6)]}))",
                  R"(setProductDeltaData("two", [], ["x"], {"a": {"p": 1}, "b": {"q": 2}}, )"
                  R"({"c": [("r", 3, 4), ("r", 5, 6)]}))"));
}

/// A handler that notes where the tables are.
class TableHandler : public UpdateMetaDataHandler {
 public:
  void setProductDeltaData(const std::u16string&, const std::vector<std::u16string>&,
                           const std::vector<std::u16string>&, const PkgsToDelete& pkgsToDelete,
                           const PkgsToExtract& pkgsToExtract) const override {
    seen.emplace_back(&pkgsToDelete, &pkgsToExtract);
  }

  mutable std::vector<std::pair<const PkgsToDelete*, const PkgsToExtract*>> seen;
};

TEST(ProductsSection, HandsItsOwnTablesOverAndNoCopies) {
  SectionParser parser;
  const auto handler = std::make_shared<TableHandler>();
  parser.handler = handler;
  parser.parseProductData(parseJsonText(R"({"a": {"delete": ["c"], "extract": []},
                                            "b": {"delete": ["c"], "extract": []}})"));
  const std::pair<const PkgsToDelete*, const PkgsToExtract*> tables = {
      &parser.componentPkgsToDelete, &parser.componentPkgsToExtract};
  EXPECT_THAT(handler->seen, ElementsAre(tables, tables));
}

TEST(ProductsSection, KeepsTheOrderAndTheRepeatsOfComponentNames) {
  EXPECT_THAT(
      readProducts(R"({"p": {"delete": ["c1", "a", "c1"], "extract": ["b", "", "b", "a"]}})"),
      ElementsAre("nothing",
                  R"(setProductDeltaData("p", ["c1", "a", "c1"], ["b", "", "b", "a"], {}, {}))"));
}

TEST(ProductsSection, DecodesComponentNamesAsItDecodesKeys) {
  EXPECT_THAT(readProducts("{\"\xFF\xE4\": {\"delete\": [\"\xFF\", \"\\u0000\"],"
                           "\"extract\": [\"\xED\xA0\x80\", \"\xC3\xA4\"]}}"),
              ElementsAre("nothing", R"(setProductDeltaData("\uFFFD\uFFFD", ["\uFFFD", "\u0000"], )"
                                     R"(["\uFFFD\uFFFD\uFFFD", "\u00E4"], {}, {}))"));
}

TEST(ProductsSection, KeepsTheProductsHandedOverBeforeAFault) {
  EXPECT_THAT(readProducts(R"({"a": {"delete": ["x"], "extract": []}, "b": null,
                               "c": {"delete": ["y"], "extract": []}})"),
              ElementsAre((invalidConversion<std::nullptr_t, Object>()),
                          R"(setProductDeltaData("a", ["x"], [], {}, {}))"));
}

TEST(ProductsSection, ReadsTheComponentsToDeleteFirst) {
  EXPECT_THAT(readProducts(R"({"p": {"extract": 1}})"), ElementsAre(invalidData("delete")));
  EXPECT_THAT(readProducts(R"({"p": {"delete": ["c", 5], "extract": 1}})"),
              ElementsAre((invalidConversion<double, std::string>())));
  EXPECT_THAT(readProducts(R"({"p": {"delete": [], "extract": {}}})"),
              ElementsAre(invalidData("extract")));
}

TEST(ProductsSection, IgnoresOtherMembers) {
  EXPECT_THAT(readProducts(R"({"p": {"Delete": 1, "delete": ["c"], "extract": [], "size": null}})"),
              ElementsAre("nothing", R"(setProductDeltaData("p", ["c"], [], {}, {}))"));
}

TEST(ProductsSection, TakesATypedPayloadAmongItsProductsForAProduct) {
  EXPECT_THAT(readProducts(R"({"qzdata": [1], "qztype": "uint8",
                               "a": {"delete": ["x"], "extract": []}})"),
              ElementsAre((invalidConversion<Array, Object>()),
                          R"(setProductDeltaData("a", ["x"], [], {}, {}))"));
}

TEST(ProductsSection, RefusesATypedIntegerAsAComponentName) {
  SectionParser parser;
  const Value products =
      Object{{"p", Object{{"delete", Array{"x", std::int64_t{1}}}, {"extract", Array()}}}};
  EXPECT_THAT(parser.outcomeOf([&] { parser.parseProductData(products); }),
              ElementsAre((invalidConversion<std::int64_t, std::string>())));
}

TEST(CompsOfAProduct, AreReadFromTheMemberThatIsAskedFor) {
  const SectionParser parser;
  const Value product = parseJsonText(R"({"delete": ["a"], "other": ["b", "b"], "none": []})");
  EXPECT_THAT(parser.parseCompsFromProductData("delete", product), ElementsAre(u"a"));
  EXPECT_THAT(parser.parseCompsFromProductData("other", product), ElementsAre(u"b", u"b"));
  EXPECT_THAT(parser.parseCompsFromProductData("none", product), ElementsAre());
  EXPECT_EQ(failureOf([&] { parser.parseCompsFromProductData("lacking", product); }),
            invalidData("lacking"));
}

}  // namespace
}  // namespace install::update_metadata_parser
