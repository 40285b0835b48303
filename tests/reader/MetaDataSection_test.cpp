// The section "metadata". FaultyMembers_test.cpp covers faulty members.

#include <ostream>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "foundation/json/Value.h"
#include "json/JsonText.h"
#include "reader/SectionParser.h"
#include "support/Failure.h"
#include "support/RecordingParser.h"
#include "support/SampleDocument.h"

namespace install::update_metadata_parser {
namespace {

using foundation::json::Array;
using foundation::json::Object;
using foundation::json::parseJsonText;
using foundation::json::Undefined;
using foundation::json::Value;
using test_support::invalidConversion;
using test_support::invalidData;
using test_support::sampleDocument;
using test_support::SectionParser;
using test_support::TextParser;
using test_support::toJson;
using test_support::with;
using test_support::without;
using ::testing::ElementsAre;

const char* const kRelease = R"({"zelvan_version": "9.2", "date": "2024-05-06", "version": "1.1",
    "prerelease": false, "release": "Orchard", "checksum": "5d1c", "description": "second",
    "update": 7})";

/// The outcome of reading the section: its failure, then the calls of the handler.
std::vector<std::string> read(const Value& metadata) {
  SectionParser parser;
  return parser.outcomeOf([&] { parser.parseMetaData(metadata); });
}

/// Like read(), for one release.
std::vector<std::string> readRelease(const Value& release, const std::string& key = "target") {
  SectionParser parser;
  return parser.outcomeOf([&] { parser.parseReleaseData(release, key); });
}

Value releaseWith(const char* field, const Value& value) {
  return with(parseJsonText(kRelease), {field}, value);
}

TEST(MetaDataSection, SetsTheArchThenTheTargetThenTheBase) {
  EXPECT_THAT(
      read(sampleDocument()["metadata"]),
      ElementsAre("nothing", "setMetaDataArch(\"x86\")", "setTargetReleaseFamily(\"Orchard\")",
                  "setTargetReleaseVersion(\"1.1\")", "setTargetUpdateLevelForQorv(7)",
                  "setBaseReleaseFamily(\"Garden\")", "setBaseReleaseVersion(\"1.0\")"));
}

TEST(MetaDataSection, LeavesANullTargetAsItIs) {
  TextParser parser(toJson(with(sampleDocument(), {"metadata", "target"}, nullptr)));
  parser.parseUpdateMetaDataJson();
  const UpdateMetaDataHandler& handler = *parser.handler;
  EXPECT_EQ(handler.getTargetReleaseFamily(), u"");
  EXPECT_EQ(handler.getTargetReleaseVersion(), u"");
  EXPECT_EQ(handler.getTargetUpdateLevelForQorv(), 0);
  EXPECT_EQ(handler.getBaseReleaseFamily(), u"Garden");
  EXPECT_EQ(handler.getBaseReleaseVersion(), u"1.0");
}

TEST(MetaDataSection, SkipsEachReleaseThatIsNull) {
  EXPECT_THAT(read(parseJsonText(R"({"arch": "x86", "target": null, "base": null})")),
              ElementsAre("nothing", "setMetaDataArch(\"x86\")"));
  EXPECT_THAT(
      read(with(sampleDocument()["metadata"], {"base"}, nullptr)),
      ElementsAre("nothing", "setMetaDataArch(\"x86\")", "setTargetReleaseFamily(\"Orchard\")",
                  "setTargetReleaseVersion(\"1.1\")", "setTargetUpdateLevelForQorv(7)"));
}

TEST(MetaDataSection, TellsAnAbsentReleaseFromANullOne) {
  const std::string undefined = invalidConversion<Undefined, Object>();
  EXPECT_THAT(read(without(sampleDocument()["metadata"], {"target"})),
              ElementsAre(undefined, "setMetaDataArch(\"x86\")"));
  EXPECT_THAT(
      read(without(sampleDocument()["metadata"], {"base"})),
      ElementsAre(undefined, "setMetaDataArch(\"x86\")", "setTargetReleaseFamily(\"Orchard\")",
                  "setTargetReleaseVersion(\"1.1\")", "setTargetUpdateLevelForQorv(7)"));
}

TEST(MetaDataSection, FailsWithoutAnArchBeforeEitherReleaseIsRead) {
  EXPECT_THAT(read(parseJsonText(R"({"target": 1, "base": 2})")), ElementsAre(invalidData("arch")));
}

TEST(MetaDataSection, SetsAnEmptyArch) {
  EXPECT_THAT(read(parseJsonText(R"({"arch": "", "target": null, "base": null})")),
              ElementsAre("nothing", "setMetaDataArch(\"\")"));
}

TEST(MetaDataSection, IgnoresOtherMembers) {
  const Value metadata = parseJsonText(
      R"({"Arch": 1, "arch": "x86", "checksum": null, "target": null, "base": null, "x": [{}]})");
  EXPECT_THAT(read(metadata), ElementsAre("nothing", "setMetaDataArch(\"x86\")"));
}

TEST(ReleaseSection, SetsFamilyVersionAndLevelOfTheTarget) {
  EXPECT_THAT(readRelease(parseJsonText(kRelease), "target"),
              ElementsAre("nothing", "setTargetReleaseFamily(\"Orchard\")",
                          "setTargetReleaseVersion(\"1.1\")", "setTargetUpdateLevelForQorv(7)"));
}

TEST(ReleaseSection, SetsNoLevelForTheBase) {
  EXPECT_THAT(readRelease(parseJsonText(kRelease), "base"),
              ElementsAre("nothing", "setBaseReleaseFamily(\"Orchard\")",
                          "setBaseReleaseVersion(\"1.1\")"));
}

TEST(ReleaseSection, TreatsEveryKeyExceptTargetAsTheBase) {
  const auto base = readRelease(parseJsonText(kRelease), "base");
  for (const std::string& key : {std::string(), std::string("Target"), std::string("target "),
                                 std::string("targe"), std::string("target\0", 7)}) {
    EXPECT_EQ(readRelease(parseJsonText(kRelease), key), base) << key;
  }
}

TEST(ReleaseSection, SkipsANullWhateverItsKey) {
  EXPECT_THAT(readRelease(nullptr, "target"), ElementsAre("nothing"));
  EXPECT_THAT(readRelease(nullptr, "base"), ElementsAre("nothing"));
}

TEST(ReleaseSection, NamesTheFieldsInTheOrderOfReading) {
  std::vector<std::string> failures;
  Value release = Object();
  for (const char* field : {"zelvan_version", "date", "version", "prerelease", "release",
                            "checksum", "description", "update"}) {
    const auto result = readRelease(release, "base");
    EXPECT_EQ(result.size(), 1U) << "the handler is not called";
    failures.push_back(result.front());
    release = with(release, {field}, parseJsonText(kRelease)[field]);
  }
  EXPECT_THAT(failures, ElementsAre(invalidData("zelvan_version"), invalidData("date"),
                                    invalidData("version"), invalidData("prerelease"),
                                    invalidData("release"), invalidData("checksum"),
                                    invalidData("description"), invalidData("update")));
  EXPECT_EQ(readRelease(release, "base").front(), "nothing");
}

TEST(ReleaseSection, ReportsTheDateOfTwoMissingFields) {
  const Value release = without(without(parseJsonText(kRelease), {"checksum"}), {"date"});
  EXPECT_THAT(readRelease(release), ElementsAre(invalidData("date")));
}

TEST(ReleaseSection, TellsANullVersionFromAMissingOne) {
  EXPECT_THAT(readRelease(releaseWith("version", nullptr)),
              ElementsAre((invalidConversion<std::nullptr_t, std::string>())));
  EXPECT_THAT(readRelease(without(parseJsonText(kRelease), {"version"})),
              ElementsAre(invalidData("version")));
}

TEST(ReleaseSection, ChecksThePrereleaseAlthoughItIsNotStored) {
  EXPECT_THAT(readRelease(releaseWith("prerelease", "no")), ElementsAre(invalidData("prerelease")));
  EXPECT_THAT(readRelease(releaseWith("prerelease", nullptr)),
              ElementsAre((invalidConversion<std::nullptr_t, bool>())));
  EXPECT_EQ(readRelease(releaseWith("prerelease", true)), readRelease(parseJsonText(kRelease)));
}

TEST(ReleaseSection, ChecksTheUpdateOfTheBaseAlthoughItIsNotStored) {
  EXPECT_THAT(readRelease(releaseWith("update", "7"), "base"), ElementsAre(invalidData("update")));
  EXPECT_THAT(readRelease(without(parseJsonText(kRelease), {"update"}), "base"),
              ElementsAre(invalidData("update")));
  EXPECT_THAT(readRelease(releaseWith("update", nullptr), "base"),
              ElementsAre((invalidConversion<std::nullptr_t, double>())));
  EXPECT_THAT(readRelease(releaseWith("update", std::int64_t{7}), "base"),
              ElementsAre(invalidData("update")));
}

TEST(ReleaseSection, NamesAFieldWithoutTheReleaseItBelongsTo) {
  for (const char* key : {"target", "base"}) {
    EXPECT_THAT(readRelease(releaseWith("checksum", 1.0), key),
                ElementsAre(invalidData("checksum")));
  }
}

TEST(ReleaseSection, NamesTheKindOfAReleaseThatIsNotAnObject) {
  EXPECT_THAT(readRelease(Array()), ElementsAre((invalidConversion<Array, Object>())));
  EXPECT_THAT(readRelease("target"), ElementsAre((invalidConversion<std::string, Object>())));
}

/// An update as a document writes it, the level that the handler receives, and the level that it
/// returns.
struct Update {
  const char* name;
  const char* number;
  const char* handedOver;
  int level;
};

void PrintTo(const Update& update, std::ostream* stream) {
  *stream << update.name;
}

const Update kUpdates[] = {
    {"Zero", "0", "0", 0},
    {"CutTowardZero", "7.9", "7", 7},
    {"NegativeCutTowardZero", "-1.5", "-1", -1},
    {"AlmostMinusOne", "-0.5", "0", 0},
    {"AboveASignedByte", "200", "200", -56},
    {"AboveAByte", "300.7", "300", 44},
    {"BelowASignedByte", "-129", "-129", 127},
    {"OutOfRange", "2147483648", "-2147483648", 0},
    {"BelowTheRange", "-1e30", "-2147483648", 0},
    {"Infinite", "1e999", "-2147483648", 0},
};

class UpdateOfTheTarget : public ::testing::TestWithParam<Update> {};

TEST_P(UpdateOfTheTarget, IsTruncatedTowardZeroAndKeptAsASignedByte) {
  SectionParser parser;
  parser.parseReleaseData(releaseWith("update", parseJsonText(GetParam().number)), "target");
  EXPECT_EQ(parser.takeCalls().back(),
            std::string("setTargetUpdateLevelForQorv(") + GetParam().handedOver + ")");
  EXPECT_EQ(parser.handler->getTargetUpdateLevelForQorv(), GetParam().level);
}

INSTANTIATE_TEST_SUITE_P(Numbers, UpdateOfTheTarget, ::testing::ValuesIn(kUpdates),
                         [](const auto& row) { return row.param.name; });

TEST(ReleaseSection, PassesTextsOnUnchangedInUtf16) {
  const Value release = parseJsonText(
      R"({"zelvan_version": "", "date": "", "version": " \u0000\ud83d\ude00\ude00 ",)"
      R"( "prerelease": false, "release": "", "checksum": "", "description": "", "update": 0})");
  EXPECT_THAT(readRelease(release, "base"),
              ElementsAre("nothing", "setBaseReleaseFamily(\"\")",
                          R"(setBaseReleaseVersion(" \u0000\uD83D\uDE00\uFFFD "))"));
  EXPECT_THAT(readRelease(releaseWith("release", "\xFF\xC3\xA4"), "base"),
              ElementsAre("nothing", R"(setBaseReleaseFamily("\uFFFD\u00E4"))",
                          "setBaseReleaseVersion(\"1.1\")"));
}

TEST(ReleaseSection, IgnoresOtherFields) {
  EXPECT_EQ(readRelease(releaseWith("Version", nullptr)), readRelease(parseJsonText(kRelease)));
}

TEST(ReleaseSection, LeavesTheHandlerUntouchedByAFailingRelease) {
  EXPECT_EQ(read(with(sampleDocument()["metadata"], {"target", "update"}, "7")),
            (std::vector<std::string>{invalidData("update"), "setMetaDataArch(\"x86\")"}));
}

}  // namespace
}  // namespace install::update_metadata_parser
