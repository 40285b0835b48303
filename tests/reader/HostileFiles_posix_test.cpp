// Files that only POSIX systems have: links, pipes, devices, and files without rights.

#include <sys/stat.h>
#include <unistd.h>

#include <fstream>
#include <ios>
#include <string>
#include <thread>

#include <gtest/gtest.h>

#include "install/update_metadata_parser/Limits.h"
#include "reader/LoadFile.h"
#include "support/Failure.h"
#include "support/RecordingParser.h"
#include "support/SampleDocument.h"
#include "support/TemporaryFolder.h"
#include "support/WithoutRights.h"

namespace install::update_metadata_parser {
namespace {

using test_support::documentText;
using test_support::failureOf;
using test_support::kMissing;
using test_support::kUnopened;
using test_support::kUnusable;
using test_support::load;
using test_support::readFile;
using test_support::RecordingParser;
using test_support::sampleCalls;
using test_support::TemporaryFolder;
using test_support::WithoutRights;

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

TEST(UnopenedFile, IsALinkToAFolder) {
  const TemporaryFolder folder;
  EXPECT_EQ(load(folder.makeLink("link", ".")), kUnopened);
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

TEST(File, IsUnusableWhenItIsTheNullDevice) {
  EXPECT_EQ(load(u"/dev/null"), kUnusable + "/dev/null");
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

TEST(LimitedParser, ReadsNoMoreThanOneByteBeyondItsLimitOfAnEndlessFile) {
  EXPECT_EQ(failureOf([] {
              LimitedParser(u"/dev/zero", {100, 1, 1, 1}).parseUpdateMetaDataJson();
            }),
            "std::runtime_error: Update MetaData Json file has more than 100 bytes");
}

}  // namespace
}  // namespace install::update_metadata_parser
