// The section "components". FaultyMembers_test.cpp covers faulty members.

#include <cstdint>
#include <limits>
#include <map>
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
using test_support::failureOf;
using test_support::invalidConversion;
using test_support::invalidData;
using test_support::SectionParser;
using ::testing::ElementsAre;

using PkgsToDelete = UpdateMetaDataHandler::PkgsToDelete;
using PkgsToExtract = UpdateMetaDataHandler::PkgsToExtract;

/// The fields of a package to extract in a form that can be compared and printed: name, size and
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

/// The two tables after reading a section "components", and the failure if there was one.
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

TEST(ComponentsSection, ReadsAComponentThatItThenDrops) {
  EXPECT_EQ(readComponents("{\"\xFE\": {\"delete\": {\"x\": {\"size\": 1}}, \"extract\": {}},"
                           "\"\xFF\": {\"delete\": {\"y\": {}}, \"extract\": {}}}"),
            (Tables{invalidData("size"), {{u"\uFFFD", {{u"x", 1}}}}, {}}));
}

TEST(ComponentsSection, AddsToTheContentsOfTheTables) {
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

TEST(ComponentsSection, ReadsATypedPayloadAmongItsComponentsAsAComponent) {
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

TEST(PkgsToDelete, AreReadEvenIfTheyAreThenDropped) {
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

const Bytes kBytesOfPackages[] = {
    {"CutTowardZero", "12.9", 12},
    {"NegativeCutTowardZero", "-3.5", -3},
    {"OutOfRange", "1e30", kMinimum},
    {"BelowTheRange", "-1e30", kMinimum},
    {"Infinite", "1e999", kMinimum},
    {"TwoTo63", "9223372036854775807", kMinimum},
    {"TheLeast", "-9223372036854775808", kMinimum},
};

class BytesOfAPackage : public ::testing::TestWithParam<Bytes> {};

TEST_P(BytesOfAPackage, AreTruncatedTowardZeroAndAreTheMinimumOutOfRange) {
  const std::string number = GetParam().number;
  EXPECT_THAT(readPkgsToDelete(R"({"delete": {"x": {"size": )" + number + "}}}"),
              ElementsAre(std::pair(u"x", GetParam().bytes)));
  EXPECT_THAT(readPkgsToExtract(R"({"extract": {"x": {"size": )" + number +
                                R"(, "uncompressedBytes": )" + number + "}}}"),
              ElementsAre(PkgFields{u"x", GetParam().bytes, GetParam().bytes}));
}

INSTANTIATE_TEST_SUITE_P(Numbers, BytesOfAPackage, ::testing::ValuesIn(kBytesOfPackages),
                         [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace install::update_metadata_parser
