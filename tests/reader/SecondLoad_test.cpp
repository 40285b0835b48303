// A parser that loads more than once.

#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "foundation/json/Value.h"
#include "install/update_metadata_parser/UpdateMetaData.h"
#include "install/update_metadata_parser/UpdateMetaDataHandler.h"
#include "support/Failure.h"
#include "support/RecordingParser.h"
#include "support/SampleDocument.h"
#include "support/TemporaryFolder.h"

namespace install::update_metadata_parser {
namespace {

using test_support::failureOf;
using test_support::RecordingParser;
using test_support::sampleCalls;
using test_support::sampleDocument;
using test_support::TemporaryFolder;
using test_support::TextParser;
using test_support::toJson;
using test_support::with;
using ::testing::ElementsAre;

using Sizes = std::map<std::u16string, std::pair<std::int64_t, std::int64_t>>;

/// A document whose releases are null and whose other sections are given as text.
std::string document(const std::string& components, const std::string& products) {
  return R"({"metadata": {"arch": "x86", "target": null, "base": null}, "components": )" +
         components + ", \"products\": " + products + ", \"componentsWithFilesDeleted\": null}";
}

const char* const kProducts = R"({"p": {"delete": ["a", "b"], "extract": ["a", "b"]}})";

TEST(SecondLoad, MakesTheSameCallsForTheSameDocument) {
  TextParser parser(toJson(sampleDocument()));
  parser.parseUpdateMetaDataJson();
  parser.takeCalls();
  parser.parseUpdateMetaDataJson();
  EXPECT_EQ(parser.takeCalls(), sampleCalls());
}

TEST(SecondLoad, MakesANewHandlerAndANewFacade) {
  TextParser parser(toJson(sampleDocument()));
  const auto firstFacade = parser.parseUpdateMetaDataJson();
  const std::weak_ptr<UpdateMetaDataHandler> firstHandler = parser.handler;
  const auto secondFacade = parser.parseUpdateMetaDataJson();
  EXPECT_NE(firstFacade, secondFacade);
  EXPECT_NE(firstHandler.lock(), parser.handler);
  EXPECT_EQ(firstHandler.use_count(), 1) << "the first facade alone keeps it";
  EXPECT_EQ(parser.handler.use_count(), 2);
}

TEST(SecondLoad, ReleasesAHandlerThatNoFacadeKeeps) {
  TextParser parser(toJson(sampleDocument()));
  parser.parseUpdateMetaDataJson();
  const std::weak_ptr<UpdateMetaDataHandler> firstHandler = parser.handler;
  parser.parseUpdateMetaDataJson();
  EXPECT_TRUE(firstHandler.expired());
}

TEST(SecondLoad, LeavesTheAnswersOfTheFirstFacadeAsTheyWere) {
  TextParser parser(document(R"({"a": {"delete": {}, "extract":
                                 {"x": {"size": 1, "uncompressedBytes": 2}}}})",
                             kProducts));
  const auto facade = parser.parseUpdateMetaDataJson();
  parser.text = document(R"({"b": {"delete": {}, "extract":
                             {"x": {"size": 3, "uncompressedBytes": 4}}}})",
                         kProducts);
  parser.parseUpdateMetaDataJson();
  EXPECT_EQ(facade->getUpdateSizeForComponentsToExtract(), (Sizes{{u"a_x", {1, 2}}}));
}

TEST(SecondLoad, KeepsTheTablesSoThatTheirFirstEntriesWin) {
  TextParser parser(document(R"({
      "a": {"delete": {"x": {"size": 1}}, "extract": {}},
      "b": {"delete": {}, "extract": {"y": {"size": 2, "uncompressedBytes": 3}}}})",
                             kProducts));
  parser.parseUpdateMetaDataJson();
  parser.takeCalls();
  parser.text = document(R"({
      "a": {"delete": {"z": {"size": 4}},
            "extract": {"z": {"size": 5, "uncompressedBytes": 6}}},
      "b": {"delete": {"z": {"size": 7}},
            "extract": {"z": {"size": 8, "uncompressedBytes": 9}}}})",
                         kProducts);
  const auto facade = parser.parseUpdateMetaDataJson();
  EXPECT_EQ(parser.takeCalls().back(),
            R"(setProductDeltaData("p", ["a", "b"], ["a", "b"], )"
            R"({"a": {"x": 1}, "b": {"z": 7}}, {"a": [("z", 5, 6)], "b": [("y", 2, 3)]}))");
  EXPECT_EQ(facade->getUpdateSizeForComponentsToExtract(),
            (Sizes{{u"a_z", {5, 6}}, {u"b_y", {2, 3}}}));
}

TEST(SecondLoad, UsesTheComponentsOfTheFirstWithoutReadingThemAgain) {
  TextParser parser(document(R"({"a": {"delete": {"x": {"size": 1}}, "extract": {}}})", "null"));
  parser.parseUpdateMetaDataJson();
  parser.text = document("null", kProducts);
  parser.parseUpdateMetaDataJson();
  EXPECT_EQ(parser.takeCalls().back(), R"(setProductDeltaData("p", ["a", "b"], ["a", "b"], )"
                                       R"({"a": {"x": 1}}, {}))");
}

TEST(SecondLoad, KeepsWhatAFailedLoadPutInTheTables) {
  TextParser parser(document(R"({"a": {"delete": {"x": {"size": 1}}, "extract": null}})", "null"));
  EXPECT_NE(failureOf([&] { parser.parseUpdateMetaDataJson(); }), "nothing");
  parser.text = document(R"({"a": {"delete": {"y": {"size": 2}}, "extract": {}}})", kProducts);
  parser.parseUpdateMetaDataJson();
  EXPECT_EQ(parser.takeCalls().back(), R"(setProductDeltaData("p", ["a", "b"], ["a", "b"], )"
                                       R"({"a": {"x": 1}}, {}))");
}

TEST(SecondLoad, StartsOverWithEmptyReleases) {
  TextParser parser(toJson(sampleDocument()));
  parser.parseUpdateMetaDataJson();
  parser.text = toJson(with(sampleDocument(), {"metadata", "target"}, nullptr));
  const auto facade = parser.parseUpdateMetaDataJson();
  EXPECT_EQ(facade->getTargetReleaseFamily(), u"");
  EXPECT_EQ(facade->getTargetUpdateLevelForQorv(), 0);
}

TEST(SecondLoad, ReadsTheFileAgain) {
  const TemporaryFolder folder;
  RecordingParser parser(folder.path("document.json"));
  std::vector<std::string> failures;
  const auto load = [&] {
    failures.push_back(failureOf([&] { parser.parseUpdateMetaDataJson(); }));
  };
  load();
  folder.writeFile("document.json", "{}");
  load();
  folder.writeFile("document.json", toJson(sampleDocument()));
  load();
  EXPECT_THAT(failures, ElementsAre("std::runtime_error: Update MetaData Json file does not exist ",
                                    "std::out_of_range: map::at", "nothing"));
}

TEST(SecondLoad, ReplacesTheHandlerEvenIfItFails) {
  TextParser parser(toJson(sampleDocument()));
  const auto facade = parser.parseUpdateMetaDataJson();
  const auto firstHandler = parser.handler;
  parser.text = "";
  EXPECT_NE(failureOf([&] { parser.parseUpdateMetaDataJson(); }), "nothing");
  EXPECT_NE(parser.handler, firstHandler);
  EXPECT_THAT(parser.takeCalls(), ElementsAre("initializeReleaseData()", "initializeBaseRelease()",
                                              "initializeTargetRelease()"));
  EXPECT_EQ(facade->getBaseReleaseVersion(), u"1.0");
}

}  // namespace
}  // namespace install::update_metadata_parser
