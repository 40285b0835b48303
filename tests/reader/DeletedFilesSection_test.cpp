// The section "componentsWithFilesDeleted". FaultyMembers_test.cpp covers faulty members.

#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "foundation/json/Value.h"
#include "json/JsonText.h"
#include "reader/SectionParser.h"
#include "support/Failure.h"
#include "support/LifetimeProbe.h"
#include "support/ModelDump.h"

namespace install::update_metadata_parser {
namespace {

using datamodels::product_update::PkgDataWithFilesToDelete;
using foundation::json::Array;
using foundation::json::Object;
using foundation::json::parseJsonText;
using foundation::json::Value;
using test_support::failureOf;
using test_support::invalidConversion;
using test_support::invalidData;
using test_support::SectionParser;
using ::testing::ElementsAre;

/// The outcome of reading the section: its failure, then the calls of the handler.
std::vector<std::string> readValue(const Value& section) {
  SectionParser parser;
  return parser.outcomeOf([&] { parser.parseComponentsWithFilesDeleted(section); });
}

std::vector<std::string> read(const std::string& text) {
  return readValue(parseJsonText(text));
}

TEST(DeletedFilesSection, MakesThePackagesOfAComponentThenSetsTheComponent) {
  EXPECT_THAT(read(R"({"b": {"y": {"size": 1, "files": ["f", "e"]},
                             "x": {"size": 2, "files": ["g"]}},
                       "a": {"z": {"size": 3, "files": []}}})"),
              ElementsAre("nothing", R"(createPkgDataWithFilesToDelete("z", 3, []))",
                          R"(setComponentDataWithFilesToDelete("a", ["z"]))",
                          R"(createPkgDataWithFilesToDelete("x", 2, ["g"]))",
                          R"(createPkgDataWithFilesToDelete("y", 1, ["f", "e"]))",
                          R"(setComponentDataWithFilesToDelete("b", ["x", "y"]))"));
}

TEST(DeletedFilesSection, IsEmptyWhenItIsNullOrHasNoMembers) {
  EXPECT_THAT(read("null"), ElementsAre("nothing"));
  EXPECT_THAT(read("{}"), ElementsAre("nothing"));
}

TEST(DeletedFilesSection, SetsAComponentWithoutPackages) {
  EXPECT_THAT(read(R"({"c": {}})"),
              ElementsAre("nothing", R"(setComponentDataWithFilesToDelete("c", []))"));
}

TEST(DeletedFilesSection, RejectsANullComponent) {
  EXPECT_THAT(read(R"({"c": null})"), ElementsAre((invalidConversion<std::nullptr_t, Object>())));
}

TEST(DeletedFilesSection, TruncatesASizeTowardZero) {
  EXPECT_THAT(read(R"({"c": {"a": {"size": 10.7, "files": []}, "b": {"size": -3.5, "files": []},
                             "c": {"size": 1e30, "files": []}, "d": {"size": -1e999, "files": []}}})"),
              ElementsAre("nothing", R"(createPkgDataWithFilesToDelete("a", 10, []))",
                          R"(createPkgDataWithFilesToDelete("b", -3, []))",
                          R"(createPkgDataWithFilesToDelete("c", -9223372036854775808, []))",
                          R"(createPkgDataWithFilesToDelete("d", -9223372036854775808, []))",
                          R"(setComponentDataWithFilesToDelete("c", ["a", "b", "c", "d"]))"));
}

TEST(DeletedFilesSection, KeepsTheOrderAndTheRepeatsOfFiles) {
  EXPECT_THAT(
      read(R"({"c": {"p": {"size": 0, "files": ["x", "b", "x", ""]}}})"),
      ElementsAre("nothing", R"(createPkgDataWithFilesToDelete("p", 0, ["x", "b", "x", ""]))",
                  R"(setComponentDataWithFilesToDelete("c", ["p"]))"));
}

TEST(DeletedFilesSection, DecodesFilesAndNamesToUtf16) {
  EXPECT_THAT(
      read("{\"\xC3\xA4\": {\"\xFF\": {\"size\": 0, \"files\": "
           "[\"\xC3\xBC/\xF0\x9F\x98\x80\", \"\xED\xA0\x80\", \"\\u0000\\\\\", \"\xC3\"]}}}"),
      ElementsAre("nothing",
                  R"(createPkgDataWithFilesToDelete("\uFFFD", 0, ["\u00FC/\uD83D\uDE00", )"
                  R"("\uFFFD\uFFFD\uFFFD", "\u0000\u005C", "\uFFFD"]))",
                  R"(setComponentDataWithFilesToDelete("\u00E4", ["\uFFFD"]))"));
}

TEST(DeletedFilesSection, MergesNothingWhoseNamesDecodeAlike) {
  EXPECT_THAT(read("{\"\xFF\": {\"a\": {\"size\": 1, \"files\": []}},"
                   "\"\xFE\": {\"\xFF\": {\"size\": 2, \"files\": [\"x\"]},"
                   "\"\xFE\": {\"size\": 3, \"files\": [\"y\"]}}}"),
              ElementsAre("nothing", R"(createPkgDataWithFilesToDelete("\uFFFD", 3, ["y"]))",
                          R"(createPkgDataWithFilesToDelete("\uFFFD", 2, ["x"]))",
                          R"(setComponentDataWithFilesToDelete("\uFFFD", ["\uFFFD", "\uFFFD"]))",
                          R"(createPkgDataWithFilesToDelete("a", 1, []))",
                          R"(setComponentDataWithFilesToDelete("\uFFFD", ["a"]))"));
}

TEST(DeletedFilesSection, OrdersByTheBytesOfTheKeys) {
  EXPECT_THAT(read("{\"\xF0\x9F\x98\x80\": {}, \"\xEF\xBC\xA1\": {}, \"ab\": {}, \"a\": {}}"),
              ElementsAre("nothing", R"(setComponentDataWithFilesToDelete("a", []))",
                          R"(setComponentDataWithFilesToDelete("ab", []))",
                          R"(setComponentDataWithFilesToDelete("\uFF21", []))",
                          R"(setComponentDataWithFilesToDelete("\uD83D\uDE00", []))"));
}

TEST(DeletedFilesSection, ReadsTheSizeBeforeTheFiles) {
  EXPECT_THAT(read(R"({"c": {"p": {"files": []}}})"), ElementsAre(invalidData("size")));
  EXPECT_THAT(read(R"({"c": {"p": {"size": "10", "files": "a.txt"}}})"),
              ElementsAre(invalidData("size")));
  EXPECT_THAT(read(R"({"c": {"p": {"size": null, "files": null}}})"),
              ElementsAre((invalidConversion<std::nullptr_t, double>())));
}

TEST(DeletedFilesSection, TellsNullFilesFromMissingOnes) {
  EXPECT_THAT(read(R"({"c": {"p": {"size": 10}}})"), ElementsAre(invalidData("files")));
  EXPECT_THAT(read(R"({"c": {"p": {"size": 10, "files": null}}})"),
              ElementsAre((invalidConversion<std::nullptr_t, Array>())));
  EXPECT_THAT(read(R"({"c": {"p": {"size": 5, "files": "a.txt"}}})"),
              ElementsAre(invalidData("files")));
}

TEST(DeletedFilesSection, NamesTheKindOfAFileThatIsNotAString) {
  EXPECT_THAT(read(R"({"c": {"p": {"size": 5, "files": ["a", 1]}}})"),
              ElementsAre((invalidConversion<double, std::string>())));
  const Value typed = Array{std::uint64_t{1}};
  EXPECT_THAT(readValue(Object{{"c", Object{{"p", Object{{"size", 5.0}, {"files", typed}}}}}}),
              ElementsAre((invalidConversion<std::uint64_t, std::string>())));
}

TEST(DeletedFilesSection, KeepsWhatWasReadBeforeAFault) {
  SectionParser parser;
  const auto outcome = parser.outcomeOf([&] {
    parser.parseComponentsWithFilesDeleted(parseJsonText(
        R"({"a": {"p": {"size": 1, "files": ["f"]}},
            "b": {"q": {"size": 2, "files": []}, "r": {"size": 3, "files": {}}},
            "c": {}})"));
  });
  EXPECT_THAT(outcome,
              ElementsAre(invalidData("files"), R"(createPkgDataWithFilesToDelete("p", 1, ["f"]))",
                          R"(setComponentDataWithFilesToDelete("a", ["p"]))",
                          R"(createPkgDataWithFilesToDelete("q", 2, []))"));
  EXPECT_EQ(test_support::dump(parser.handler->getProductUpdateMetaDataModel()),
            "release data\n"
            "  architecture \"\"\n"
            "  base release: family \"\", version \"\", level 0\n"
            "  target release: family \"\", version \"\", level 0\n"
            "component with files to delete \"a\"\n"
            "  package \"p\": size 1\n"
            "    file \"f\"\n");
}

TEST(DeletedFilesSection, IgnoresOtherMembers) {
  EXPECT_THAT(read(R"({"c": {"p": {"Size": "", "size": 1, "files": [], "uncompressedBytes": "",
                                   "qztype": "int8", "qzdata": [1]}}})"),
              ElementsAre("nothing", R"(createPkgDataWithFilesToDelete("p", 1, []))",
                          R"(setComponentDataWithFilesToDelete("c", ["p"]))"));
}

/// A handler that watches the packages that it makes.
class WatchingHandler : public UpdateMetaDataHandler {
 public:
  PkgDataWithFilesToDelete createPkgDataWithFilesToDelete(
      const std::u16string& name, std::int64_t size,
      const std::vector<std::u16string>& files) const override {
    const auto pkg = UpdateMetaDataHandler::createPkgDataWithFilesToDelete(name, size, files);
    probes.emplace_back(pkg);
    return pkg;
  }
  void setComponentDataWithFilesToDelete(
      const std::u16string&, const std::vector<PkgDataWithFilesToDelete>&) const override {
    aliveWhenSet.push_back(aliveNow());
  }

  /// Reports for each package made so far whether it still exists.
  std::vector<bool> aliveNow() const {
    std::vector<bool> alive;
    for (const test_support::LifetimeProbe& probe : probes) {
      alive.push_back(probe.alive());
    }
    return alive;
  }

  mutable std::vector<test_support::LifetimeProbe> probes;
  mutable std::vector<std::vector<bool>> aliveWhenSet;
};

TEST(DeletedFilesSection, HoldsThePackagesOfAComponentUntilItIsSet) {
  SectionParser parser;
  const auto handler = std::make_shared<WatchingHandler>();
  parser.handler = handler;
  parser.parseComponentsWithFilesDeleted(
      parseJsonText(R"({"a": {"p": {"size": 1, "files": []}, "q": {"size": 1, "files": []}},
                        "b": {"r": {"size": 1, "files": []}}})"));
  EXPECT_THAT(handler->aliveWhenSet,
              ElementsAre(ElementsAre(true, true), ElementsAre(false, false, true)));
  EXPECT_THAT(handler->aliveNow(), ElementsAre(false, false, false));
}

TEST(DeletedFilesSection, ReleasesThePackagesOfAComponentThatFails) {
  SectionParser parser;
  const auto handler = std::make_shared<WatchingHandler>();
  parser.handler = handler;
  const Value section = parseJsonText(R"({"a": {"p": {"size": 1, "files": []}, "q": 0}})");
  EXPECT_EQ(failureOf([&] { parser.parseComponentsWithFilesDeleted(section); }),
            (invalidConversion<double, Object>()));
  EXPECT_THAT(handler->aliveNow(), ElementsAre(false));
}

}  // namespace
}  // namespace install::update_metadata_parser
