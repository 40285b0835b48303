#include "install/update_metadata_parser/UpdateMetaDataJsonParser.h"

#include <algorithm>
#include <cstdint>
#include <exception>
#include <map>
#include <memory>
#include <ostream>
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

using foundation::json::Array;
using foundation::json::Object;
using foundation::json::Value;
using test_support::failureOf;
using test_support::RecordingParser;
using test_support::sampleCalls;
using test_support::sampleDocument;
using test_support::TemporaryFolder;
using test_support::TextParser;
using test_support::toJson;
using test_support::with;
using test_support::without;
using ::testing::ElementsAre;

/// The failure of a parser whose document is "document.json".
const std::string kParseFailure = "std::runtime_error: Error while parsing document.json";

TEST(Construction, ReadsNothingAndMakesNoHandler) {
  RecordingParser parser(u"/missing/document.json");
  EXPECT_EQ(parser.handler, nullptr);
  EXPECT_TRUE(parser.componentPkgsToDelete.empty());
  EXPECT_TRUE(parser.componentPkgsToExtract.empty());
}

TEST(Construction, CopiesThePath) {
  const TemporaryFolder folder;
  std::u16string path = folder.writeFile("document.json", toJson(sampleDocument()));
  RecordingParser parser(path);
  path = u"/missing";
  EXPECT_EQ(failureOf([&] { parser.parseUpdateMetaDataJson(); }), "nothing");
}

TEST(Load, ReadsADocumentFromDisk) {
  const TemporaryFolder folder;
  RecordingParser parser(folder.writeFile("document.json", toJson(sampleDocument())));
  const auto facade = parser.parseUpdateMetaDataJson();
  EXPECT_EQ(parser.takeCalls(), sampleCalls());
  EXPECT_EQ(facade->getTargetReleaseFamily(), u"Orchard");
}

TEST(Load, ReadsTheSectionsInItsOwnOrderWhateverTheirOrderInTheFile) {
  std::vector<std::string> keys = {"components", "componentsWithFilesDeleted", "metadata",
                                   "products"};
  std::set<std::vector<std::string>> logs;
  int orders = 0;
  do {
    std::string text;
    for (const std::string& key : keys) {
      text += (text.empty() ? "{\"" : ",\"") + key + "\":" + toJson(sampleDocument()[key]);
    }
    TextParser parser(text + "}");
    parser.parseUpdateMetaDataJson();
    logs.insert(parser.takeCalls());
    ++orders;
  } while (std::next_permutation(keys.begin(), keys.end()));
  EXPECT_EQ(orders, 24);
  EXPECT_THAT(logs, ElementsAre(sampleCalls()));
}

TEST(Load, IgnoresOtherMembersAtTheTop) {
  Value document = sampleDocument();
  for (const char* key : {"", "Metadata", "metadata ", "component", "componentsX", "PRODUCTS"}) {
    document = with(document, {key}, Array{nullptr});
  }
  TextParser parser(toJson(document));
  parser.parseUpdateMetaDataJson();
  EXPECT_EQ(parser.takeCalls(), sampleCalls());
}

/// A document without one of its sections.
struct MissingSection {
  const char* key;
  std::size_t callsBefore;
};

void PrintTo(const MissingSection& section, std::ostream* stream) {
  *stream << section.key;
}

const MissingSection kMissingSections[] = {
    {"metadata", 3}, {"components", 9}, {"products", 9}, {"componentsWithFilesDeleted", 11}};

class LoadWithout : public ::testing::TestWithParam<MissingSection> {};

TEST_P(LoadWithout, FailsWhenItReachesTheSection) {
  Value document = without(sampleDocument(), {GetParam().key});
  document = with(document, {std::string(GetParam().key) + "2"}, nullptr);
  TextParser parser(toJson(document));
  EXPECT_EQ(failureOf([&] { parser.parseUpdateMetaDataJson(); }), "std::out_of_range: map::at");
  EXPECT_EQ(parser.takeCalls(), sampleCalls(GetParam().callsBefore));
}

INSTANTIATE_TEST_SUITE_P(Sections, LoadWithout, ::testing::ValuesIn(kMissingSections),
                         [](const auto& row) { return row.param.key; });

TEST(LoadWithoutProducts, StillFillsTheTablesOfComponents) {
  TextParser parser(toJson(without(sampleDocument(), {"products"})));
  EXPECT_EQ(failureOf([&] { parser.parseUpdateMetaDataJson(); }), "std::out_of_range: map::at");
  const std::map<std::u16string, std::map<std::u16string, std::int64_t>> expected = {
      {u"core", {{u"old", 10}}}, {u"extra", {{u"out", 50}, {u"shed", 60}}}};
  EXPECT_EQ(parser.componentPkgsToDelete, expected);
}

TEST(LoadWithoutComponents, ReportsTheirAbsenceBeforeALaterFault) {
  Value document = without(sampleDocument(), {"components"});
  document = with(document, {"products"}, true);
  TextParser parser(toJson(document));
  EXPECT_EQ(failureOf([&] { parser.parseUpdateMetaDataJson(); }), "std::out_of_range: map::at");
}

/// A text that is not a document.
struct UnusableText {
  const char* name;
  std::string text;
};

void PrintTo(const UnusableText& text, std::ostream* stream) {
  *stream << text.name;
}

const UnusableText kUnusableTexts[] = {
    {"Empty", ""},
    {"Array", "[]"},
    {"ArrayWithADocument", "[" + toJson(sampleDocument()) + "]"},
    {"String", "\"{}\""},
    {"Number", "1"},
    {"True", "true"},
    {"False", "false"},
    {"Null", "null"},
    {"NoJson", "document"},
    {"FinalLineFeed", toJson(sampleDocument()) + "\n"},
    {"FinalNul", toJson(sampleDocument()) + std::string(1, '\0')},
    {"FinalBrace", toJson(sampleDocument()) + "}"},
    {"LeadingBlank", " " + toJson(sampleDocument())},
    {"LeadingByteOrderMark", "\xEF\xBB\xBF" + toJson(sampleDocument())},
    {"Utf16", std::string("{\0}\0", 4)},
    {"Comment", "/**/" + toJson(sampleDocument())},
    {"InnerComment", "{/**/" + toJson(sampleDocument()).substr(1)},
    {"TrailingComma", "{\"metadata\": null,}"},
    {"HalfADocument", toJson(sampleDocument()).substr(0, toJson(sampleDocument()).size() / 2)},
    {"LastBraceMissing", toJson(sampleDocument()).substr(0, toJson(sampleDocument()).size() - 1)},
    {"QztypeThatIsNoString", R"({"qztype": 1})"},
    {"QztypeThatIsNoStringInside", R"({"x": [{"qztype": null}]})"},
    {"PayloadThatIsNone", R"({"qztype": "int8", "qzdata": [1.5]})"},
    {"FaultInAnIgnoredMember", "{\"ignored\": +1," + toJson(sampleDocument()).substr(1)},
    {"FaultInARepeatedMember", "{\"a\": 1, \"a\": nul," + toJson(sampleDocument()).substr(1)},
};

class UnusableDocument : public ::testing::TestWithParam<UnusableText> {};

TEST_P(UnusableDocument, IsReportedByItsPathAlone) {
  TextParser parser(GetParam().text);
  EXPECT_EQ(failureOf([&] { parser.parseUpdateMetaDataJson(); }), kParseFailure);
  EXPECT_EQ(parser.takeCalls(), sampleCalls(3));
}

TEST_P(UnusableDocument, IsReportedFromDiskWithTheWholePath) {
  const TemporaryFolder folder;
  RecordingParser parser(folder.writeFile("document.json", GetParam().text));
  EXPECT_EQ(failureOf([&] { parser.parseUpdateMetaDataJson(); }),
            "std::runtime_error: Error while parsing " + folder.nativePath("document.json"));
}

INSTANTIATE_TEST_SUITE_P(Texts, UnusableDocument, ::testing::ValuesIn(kUnusableTexts),
                         [](const auto& row) { return row.param.name; });

TEST(UnusableDocument, IsNotNestedInTheReport) {
  TextParser parser("[");
  try {
    parser.parseUpdateMetaDataJson();
    FAIL();
  } catch (const std::exception& failure) {
    EXPECT_EQ(dynamic_cast<const std::nested_exception*>(&failure), nullptr);
  }
}

TEST(TopLevelObject, IsTheWholeDocument) {
  TextParser parser(toJson(sampleDocument()));
  const Object document = parser.getJsonObjFromFile(u"elsewhere.json");
  EXPECT_EQ(document, sampleDocument().as<Object>());
}

TEST(TopLevelObject, IsOrderedByTheBytesOfTheKeysAndKeepsTheFirstOfEqualOnes) {
  TextParser parser(R"({"b": 1, "\u00E9": 2, "": 3, "a": 4, "ab": 5, "b": 6, "Z": 7})");
  std::vector<std::pair<std::string, double>> members;
  for (const auto& [key, value] : parser.getJsonObjFromFile(u"document.json")) {
    members.emplace_back(key, value.as<double>());
  }
  EXPECT_THAT(members,
              ElementsAre(std::pair("", 3), std::pair("Z", 7), std::pair("a", 4),
                          std::pair("ab", 5), std::pair("b", 1), std::pair("\xC3\xA9", 2)));
}

TEST(TopLevelObject, OutlivesTheParser) {
  auto parser = std::make_unique<TextParser>(toJson(sampleDocument()));
  const Object document = parser->getJsonObjFromFile(u"document.json");
  parser.reset();
  EXPECT_EQ(document, sampleDocument().as<Object>());
}

TEST(TopLevelObject, IsReportedByThePathThatWasGiven) {
  TextParser parser("1");
  EXPECT_EQ(failureOf([&] { parser.getJsonObjFromFile(u"./a/../\"b\" "); }),
            "std::runtime_error: Error while parsing ./a/../\"b\" ");
  EXPECT_EQ(failureOf([&] { parser.getJsonObjFromFile(u""); }),
            "std::runtime_error: Error while parsing ");
}

TEST(TopLevelObject, IsReportedByThePathInUtf8) {
  TextParser parser("1");
  EXPECT_EQ(failureOf([&] { parser.getJsonObjFromFile(u"\u00FC/\u20AC/\U0001F600"); }),
            "std::runtime_error: Error while parsing \xC3\xBC/\xE2\x82\xAC/\xF0\x9F\x98\x80");
  const std::u16string unpaired = {u'a', char16_t{0xD83D}, u'b', char16_t{0xDE00}};
  EXPECT_EQ(failureOf([&] { parser.getJsonObjFromFile(unpaired); }),
            "std::runtime_error: Error while parsing a\xEF\xBF\xBD"
            "b\xEF\xBF\xBD");
}

TEST(Facade, SharesTheHandlerWithTheParserAlone) {
  TextParser parser(toJson(sampleDocument()));
  const auto facade = parser.parseUpdateMetaDataJson();
  EXPECT_EQ(facade.use_count(), 1);
  EXPECT_EQ(parser.handler.use_count(), 2);
}

TEST(Facade, OutlivesTheParserAndAnswersEveryQuestion) {
  const TemporaryFolder folder;
  const std::u16string catalogue =
      folder.writeFile("products.tsv", "header\nPR\tPress\t1\t\nSC\tScale\t2\t\n");
  auto parser = std::make_unique<TextParser>(toJson(sampleDocument()));
  const auto facade = parser->parseUpdateMetaDataJson();
  const std::weak_ptr<UpdateMetaDataHandler> handler = parser->handler;
  parser.reset();
  EXPECT_EQ(handler.use_count(), 1);

  EXPECT_EQ(facade->getBaseReleaseFamily(), u"Garden");
  EXPECT_EQ(facade->getTargetReleaseFamily(), u"Orchard");
  EXPECT_EQ(facade->getBaseReleaseVersion(), u"1.0");
  EXPECT_EQ(facade->getTargetReleaseVersion(), u"1.1");
  EXPECT_EQ(facade->getTargetUpdateLevelForQorv(), 7);

  using KeySet = std::set<std::u16string>;
  const KeySet extracted = {u"core_new", u"extra_gain", u"extra_in"};
  EXPECT_EQ(facade->getComponentsToExtract(catalogue),
            (std::map<std::u16string, KeySet>{{u"PR", extracted}, {u"SC", extracted}}));
  EXPECT_EQ(facade->getComponentsToExtract(u"PR", catalogue), extracted);
  const KeySet deleted = {u"core_old", u"extra_out", u"extra_shed"};
  EXPECT_EQ(facade->getComponentsToDelete(catalogue),
            (std::map<std::u16string, KeySet>{{u"PR", {u"core_old"}}, {u"SC", deleted}}));
  EXPECT_EQ(facade->getComponentsToDelete(u"SC", catalogue), deleted);
  EXPECT_EQ(facade->getComponentsWithFilesToDelete(),
            (std::map<std::u16string, std::pair<KeySet, std::int64_t>>{
                {u"docs_guide", {{u"guide/old.txt"}, 30}},
                {u"help_index", {{}, 31}},
                {u"help_pages", {{u"a.html", u"b.html"}, 32}}}));
  EXPECT_EQ(facade->getUpdateSizeForComponentsToExtract(),
            (std::map<std::u16string, std::pair<std::int64_t, std::int64_t>>{
                {u"core_new", {20, 40}}, {u"extra_gain", {70, 140}}, {u"extra_in", {80, 160}}}));
}

TEST(Failure, LeavesTheNewHandlerWithTheParserAlone) {
  TextParser parser(toJson(with(sampleDocument(), {"products", "Scale", "delete"}, nullptr)));
  EXPECT_EQ(failureOf([&] { parser.parseUpdateMetaDataJson(); }),
            (test_support::invalidConversion<std::nullptr_t, Array>()));
  EXPECT_EQ(parser.handler.use_count(), 1);
  EXPECT_EQ(parser.takeCalls(), sampleCalls(10));
  EXPECT_EQ(parser.handler->getTargetReleaseVersion(), u"1.1");
  EXPECT_EQ(parser.handler->getUpdateSizeForComponentsToExtract().size(), 3U);
}

}  // namespace
}  // namespace install::update_metadata_parser
