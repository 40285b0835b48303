// The section "products". FaultyMembers_test.cpp covers faulty members.

#include <cstdint>
#include <memory>
#include <string>
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

/// The outcome of reading a section "products" with empty tables.
std::vector<std::string> readProducts(const std::string& text) {
  SectionParser parser;
  return parser.outcomeOf([&] { parser.parseProductData(parseJsonText(text)); });
}

TEST(ProductsSection, SetsTheProductsInTheByteOrderOfTheirUtf8Names) {
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

TEST(ProductsSection, PassesBothTablesWholeToEveryProduct) {
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

/// A handler that records the addresses of the tables.
class TableHandler : public UpdateMetaDataHandler {
 public:
  void setProductDeltaData(const std::u16string&, const std::vector<std::u16string>&,
                           const std::vector<std::u16string>&, const PkgsToDelete& pkgsToDelete,
                           const PkgsToExtract& pkgsToExtract) const override {
    seen.emplace_back(&pkgsToDelete, &pkgsToExtract);
  }

  mutable std::vector<std::pair<const PkgsToDelete*, const PkgsToExtract*>> seen;
};

TEST(ProductsSection, PassesItsOwnTablesAndNotCopies) {
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

TEST(ProductsSection, KeepsTheProductsSetBeforeAFault) {
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

TEST(ProductsSection, ReadsATypedPayloadAmongItsProductsAsAProduct) {
  EXPECT_THAT(readProducts(R"({"qzdata": [1], "qztype": "uint8",
                               "a": {"delete": ["x"], "extract": []}})"),
              ElementsAre((invalidConversion<Array, Object>()),
                          R"(setProductDeltaData("a", ["x"], [], {}, {}))"));
}

TEST(ProductsSection, RejectsATypedIntegerAsAComponentName) {
  SectionParser parser;
  const Value products =
      Object{{"p", Object{{"delete", Array{"x", std::int64_t{1}}}, {"extract", Array()}}}};
  EXPECT_THAT(parser.outcomeOf([&] { parser.parseProductData(products); }),
              ElementsAre((invalidConversion<std::int64_t, std::string>())));
}

TEST(CompsOfAProduct, AreReadFromTheRequestedMember) {
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
