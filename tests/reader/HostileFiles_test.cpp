// Paths that lead to no document, and files of every kind.

#include <cstddef>
#include <ostream>
#include <string>
#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "reader/LoadFile.h"
#include "support/Failure.h"
#include "support/Locales.h"
#include "support/RecordingParser.h"
#include "support/TemporaryFolder.h"

namespace install::update_metadata_parser {
namespace {

using namespace std::string_literals;
using test_support::ConvertingLocaleScope;
using test_support::documentText;
using test_support::failureOf;
using test_support::kMissing;
using test_support::kUnopened;
using test_support::kUnusable;
using test_support::load;
using test_support::readFile;
using test_support::RecordingParser;
using test_support::TemporaryFolder;
using ::testing::ElementsAre;

TEST(MissingFile, IsReportedWithoutItsPath) {
  const TemporaryFolder folder;
  EXPECT_EQ(load(folder.path("document.json")), kMissing);
  EXPECT_EQ(load(folder.path("missing/document.json")), kMissing);
  EXPECT_EQ(load(u""), kMissing);
}

TEST(MissingFile, IsReportedAfterTheHandlerIsReady) {
  RecordingParser parser(u"");
  EXPECT_EQ(failureOf([&] { parser.parseUpdateMetaDataJson(); }), kMissing);
  EXPECT_THAT(parser.takeCalls(), ElementsAre("initializeReleaseData()", "initializeBaseRelease()",
                                              "initializeTargetRelease()"));
}

TEST(MissingFile, IsWhatAPathWithANulIs) {
  const TemporaryFolder folder;
  const std::u16string path = folder.writeFile("document.json", documentText());
  EXPECT_EQ(load(path + u"\0"s), kMissing);
  EXPECT_EQ(load(path + u"\0.bak"s), kMissing);
}

TEST(UnopenedFile, IsAFolder) {
  const TemporaryFolder folder;
  EXPECT_EQ(load(folder.path()), kUnopened);
  EXPECT_EQ(load(folder.makeFolder("document.json")), kUnopened);
  EXPECT_EQ(load(u"/"), kUnopened);
}

TEST(File, IsReadUnderANameInAnyLanguage) {
  const TemporaryFolder folder;
  folder.writeFile("\xC3\xA4 \xE2\x82\xAC\xF0\x9F\x98\x80.json", documentText());
  EXPECT_EQ(load(folder.path() + u"/\u00E4 \u20AC\U0001F600.json"), "nothing");
}

TEST(File, IsNamedInUtf8WhenItIsUnusable) {
  const TemporaryFolder folder;
  folder.writeFile("\xC3\xA4 \xE2\x82\xAC\xF0\x9F\x98\x80.json", "[");
  EXPECT_EQ(load(folder.path() + u"/./\u00E4 \u20AC\U0001F600.json"),
            kUnusable + folder.nativePath() + "/./\xC3\xA4 \xE2\x82\xAC\xF0\x9F\x98\x80.json");
}

TEST(File, IsUnusableWhenItIsEmpty) {
  const TemporaryFolder folder;
  EXPECT_EQ(load(folder.writeFile("document.json", "")),
            kUnusable + folder.nativePath("document.json"));
}

/// Bytes around a document that make the file unusable.
struct Surroundings {
  const char* name;
  std::string before;
  std::string after;
};

void PrintTo(const Surroundings& surroundings, std::ostream* stream) {
  *stream << surroundings.name;
}

const Surroundings kSurroundings[] = {
    {"FinalLineFeed", "", "\n"},
    {"FinalCarriageReturnAndLineFeed", "", "\r\n"},
    {"FinalBlank", "", " "},
    {"FinalNul", "", "\0"s},
    {"EndOfFileCharacter", "", "\x1A"},
    {"LeadingBlank", " ", ""},
    {"LeadingLineFeed", "\n", ""},
    {"ByteOrderMark", "\xEF\xBB\xBF", ""},
};

class FileWithMoreThanADocument : public ::testing::TestWithParam<Surroundings> {};

TEST_P(FileWithMoreThanADocument, IsUnusable) {
  const TemporaryFolder folder;
  const std::string bytes = GetParam().before + documentText() + GetParam().after;
  const std::u16string path = folder.writeFile("document.json", bytes);
  EXPECT_EQ(readFile(path), bytes) << "nothing is skipped or converted";
  EXPECT_EQ(load(path), kUnusable + folder.nativePath("document.json"));
}

INSTANTIATE_TEST_SUITE_P(Bytes, FileWithMoreThanADocument, ::testing::ValuesIn(kSurroundings),
                         [](const auto& row) { return row.param.name; });

TEST(ReadFile, ReturnsTheBytesUnchanged) {
  const TemporaryFolder folder;
  const std::string bytes = "\xEF\xBB\xBF \t\v\f{\0}\r\n\xFF\x1A\r\r\n\n\0"s;
  EXPECT_EQ(readFile(folder.writeFile("document.json", bytes)), bytes);
  EXPECT_EQ(readFile(folder.writeFile("document.json", "")), "");
}

TEST(ReadFile, ReturnsTheBytesUnchangedUnderALocaleThatConvertsThem) {
  const TemporaryFolder folder;
  const std::u16string path = folder.writeFile("document.json", "[1,2,1]");
  const ConvertingLocaleScope locale;
  EXPECT_EQ(readFile(path), "[1,2,1]");
}

TEST(ReadFile, ReturnsFilesOfEverySizeWhole) {
  const TemporaryFolder folder;
  std::string bytes;
  while (bytes.size() < 300'000) {
    bytes += std::to_string(bytes.size()) + '\n';
  }
  for (const std::size_t size : {1U, 8191U, 8192U, 65535U, 65536U, 65537U, 131072U, 262145U}) {
    SCOPED_TRACE(size);
    const std::string part = bytes.substr(0, size);
    EXPECT_TRUE(readFile(folder.writeFile("document.json", part)) == part);
  }
}

TEST(ReadFile, ReservesAMegabyteOrSixteenAndNothingBeyondALongerFile) {
  const TemporaryFolder folder;
  constexpr std::size_t kFirstRoom = std::size_t{1} << 20;
  const std::pair<std::size_t, std::size_t> sizesAndRooms[] = {
      {100, kFirstRoom},
      {kFirstRoom - 1, kFirstRoom},
      {kFirstRoom, 16 * kFirstRoom},
      {16 * kFirstRoom - 1, 16 * kFirstRoom},
      {17 * kFirstRoom, 17 * kFirstRoom}};
  for (const auto& [size, room] : sizesAndRooms) {
    const std::u16string path = folder.writeFile("document.json", std::string(size, 'x'));
    EXPECT_LE(readFile(path).capacity(), room + 16) << size;
  }
}

TEST(ReadFile, ReadsTheGivenFileAndNotTheParsersOwn) {
  const TemporaryFolder folder;
  RecordingParser parser(folder.writeFile("own.json", "own"));
  EXPECT_EQ(parser.readFile(folder.writeFile("other.json", "other")), "other");
}

}  // namespace
}  // namespace install::update_metadata_parser
