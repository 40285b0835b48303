// Paths that lead to no document, and files of every kind.

#include <sys/stat.h>
#include <unistd.h>

#include <fstream>
#include <memory>
#include <ostream>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "foundation/json/Value.h"
#include "install/update_metadata_parser/UpdateMetaData.h"
#include "support/Failure.h"
#include "support/Locales.h"
#include "support/RecordingParser.h"
#include "support/SampleDocument.h"
#include "support/TemporaryFolder.h"
#include "support/WithoutRights.h"

namespace install::update_metadata_parser {
namespace {

using namespace std::string_literals;
using test_support::ConvertingLocaleScope;
using test_support::failureOf;
using test_support::RecordingParser;
using test_support::sampleCalls;
using test_support::sampleDocument;
using test_support::TemporaryFolder;
using test_support::toJson;
using test_support::WithoutRights;
using ::testing::ElementsAre;

const std::string kMissing = "std::runtime_error: Update MetaData Json file does not exist ";
const std::string kUnopened = "std::runtime_error: Error opening Update MetaData Json File";
const std::string kUnusable = "std::runtime_error: Error while parsing ";

std::string load(const std::u16string& path) {
  RecordingParser parser(path);
  return failureOf([&] { parser.parseUpdateMetaDataJson(); });
}

std::string readFile(const std::u16string& path) {
  return RecordingParser(u"").readFile(path);
}

std::string documentText() {
  return toJson(sampleDocument());
}

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

TEST(MissingFile, IsWhatALinkToNowhereIs) {
  const TemporaryFolder folder;
  EXPECT_EQ(load(folder.makeLink("dangling", "missing")), kMissing);
  folder.makeLink("first", "second");
  EXPECT_EQ(load(folder.makeLink("second", "first")), kMissing);
}

TEST(MissingFile, IsWhatANameThatIsTooLongIs) {
  const TemporaryFolder folder;
  EXPECT_EQ(load(folder.path(std::string(300, 'x'))), kMissing);
  EXPECT_EQ(load(std::u16string(100'000, u'/')), kMissing);
}

TEST(MissingFile, IsWhatAPathWithANulIs) {
  const TemporaryFolder folder;
  const std::u16string path = folder.writeFile("document.json", documentText());
  EXPECT_EQ(load(path + u"\0"s), kMissing);
  EXPECT_EQ(load(path + u"\0.bak"s), kMissing);
}

TEST(MissingFile, IsWhatAPathWithAnUnpairedSurrogateIs) {
  const TemporaryFolder folder;
  folder.writeFile("\xEF\xBF\xBD", documentText());
  EXPECT_EQ(load(folder.path() + u"/" + char16_t{0xD83D}), kMissing);
  EXPECT_EQ(load(folder.path() + u"/" + char16_t{0xDE00}), kMissing);
  EXPECT_EQ(load(folder.path() + u"/\uFFFD"), "nothing");
}

TEST(MissingFile, IsWhatAnythingBelowAFileIs) {
  const TemporaryFolder folder;
  EXPECT_EQ(load(folder.writeFile("document.json", documentText()) + u"/"), kMissing);
}

TEST(UnopenedFile, IsAFolder) {
  const TemporaryFolder folder;
  EXPECT_EQ(load(folder.path()), kUnopened);
  EXPECT_EQ(load(folder.makeFolder("document.json")), kUnopened);
  EXPECT_EQ(load(folder.makeLink("link", "document.json")), kUnopened);
  EXPECT_EQ(load(u"/"), kUnopened);
}

TEST(UnopenedFile, IsASocket) {
  const TemporaryFolder folder;
  EXPECT_EQ(load(folder.makeSocket("document.json")), kUnopened);
}

TEST(UnopenedFile, IsOneThatMayNotBeRead) {
  const TemporaryFolder folder;
  const std::u16string path = folder.writeFile("document.json", documentText());
  const std::string nativePath = folder.nativePath("document.json");
  ASSERT_EQ(::chmod(folder.nativePath().c_str(), 0755), 0);
  ASSERT_EQ(::chmod(nativePath.c_str(), 0), 0);
  const WithoutRights withoutRights;
  ASSERT_FALSE(std::ifstream(nativePath).is_open()) << "the test needs a file that it cannot read";
  EXPECT_EQ(load(path), kUnopened);
}

TEST(File, IsReadThroughLinks) {
  const TemporaryFolder folder;
  folder.writeFile("document.json", documentText());
  folder.makeLink("first", "document.json");
  EXPECT_EQ(load(folder.makeLink("second", "first")), "nothing");
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
  EXPECT_EQ(load(u"/dev/null"), kUnusable + "/dev/null");
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
  constexpr std::size_t kMegabyte = std::size_t{1} << 20;
  const std::pair<std::size_t, std::size_t> sizesAndRooms[] = {{100, kMegabyte},
                                                               {kMegabyte - 1, kMegabyte},
                                                               {kMegabyte, 16 * kMegabyte},
                                                               {16 * kMegabyte - 1, 16 * kMegabyte},
                                                               {17 * kMegabyte, 17 * kMegabyte}};
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

TEST(ReadFile, ReadsAFileThatReportsNoSize) {
  EXPECT_EQ(readFile(u"/proc/self/status").substr(0, 5), "Name:");
}

TEST(ReadFile, ClosesTheFile) {
  // A newly opened file gets the lowest free descriptor.
  const TemporaryFolder folder;
  const std::u16string path = folder.writeFile("document.json", documentText());
  const auto nextDescriptor = [] {
    const int descriptor = ::dup(STDERR_FILENO);
    ::close(descriptor);
    return descriptor;
  };
  const int before = nextDescriptor();
  readFile(path);
  EXPECT_EQ(load(path), "nothing");
  EXPECT_EQ(load(folder.path()), kUnopened);
  EXPECT_EQ(nextDescriptor(), before);
}

TEST(Fifo, IsReadUntilItsWriterClosesIt) {
  const TemporaryFolder folder;
  const std::u16string fifo = folder.makeFifo("document.json");
  const std::string text = documentText();
  std::thread writer([&] {
    std::ofstream out(folder.nativePath("document.json"));
    for (const char byte : text) {
      out << byte << std::flush;
    }
  });
  RecordingParser parser(fifo);
  const std::string failure = failureOf([&] { parser.parseUpdateMetaDataJson(); });
  writer.join();
  EXPECT_EQ(failure, "nothing");
  EXPECT_EQ(parser.takeCalls(), sampleCalls());
}

TEST(Fifo, IsUnusableWhenItsWriterWritesNothing) {
  const TemporaryFolder folder;
  const std::u16string fifo = folder.makeFifo("document.json");
  std::thread writer([&] { const std::ofstream out(folder.nativePath("document.json")); });
  const std::string failure = load(fifo);
  writer.join();
  EXPECT_EQ(failure, kUnusable + folder.nativePath("document.json"));
}

TEST(ReadError, IsReportedByTheStreamAndNeverMistakenForTheEnd) {
  // The file begins at address 0, where nothing is mapped.
  RecordingParser parser(u"/proc/self/mem");
  EXPECT_THROW(parser.readFile(u"/proc/self/mem"), std::ios_base::failure);
  EXPECT_THROW(parser.getJsonObjFromFile(u"/proc/self/mem"), std::ios_base::failure);
  EXPECT_THROW(parser.parseUpdateMetaDataJson(), std::ios_base::failure);
}

}  // namespace
}  // namespace install::update_metadata_parser
