// What only POSIX systems have: devices, links, pipes, rights, and paths of bytes.

#include <sys/stat.h>

#include <fstream>
#include <ios>
#include <string>
#include <thread>

#include <gtest/gtest.h>

#include "fl/filesystem.h"
#include "platform/fl/Verdict.h"
#include "support/TemporaryFolder.h"
#include "support/WithoutRights.h"

namespace {

using test_support::kAbsent;
using test_support::kReadable;
using test_support::kThereButClosed;
using test_support::readAll;
using test_support::Stream;
using test_support::TemporaryFolder;
using test_support::verdict;
using test_support::WithoutRights;

TEST(FileSystem, SeesAndOpensADevice) {
  EXPECT_EQ(verdict(u"/dev/null"), kReadable);
}

TEST(FileSystem, SeesALinkToAFolderButDoesNotOpenIt) {
  const TemporaryFolder folder;
  EXPECT_EQ(verdict(folder.makeLink("link", ".")), kThereButClosed);
  EXPECT_TRUE(fl::filesystem::is_directory(folder.path("link")));
}

TEST(FileSystem, FollowsLinks) {
  const TemporaryFolder folder;
  folder.writeFile("document.json", "{}");
  folder.makeLink("first", "document.json");
  EXPECT_EQ(verdict(folder.makeLink("second", "first")), kReadable);
}

TEST(FileSystem, SeesASocketButDoesNotOpenIt) {
  const TemporaryFolder folder;
  EXPECT_EQ(verdict(folder.makeSocket("socket")), kThereButClosed);
}

TEST(FileSystem, SeesAFifo) {
  const TemporaryFolder folder;
  EXPECT_TRUE(fl::filesystem::exists(folder.makeFifo("fifo")));
}

TEST(FileSystem, DoesNotSeeADanglingLink) {
  const TemporaryFolder folder;
  EXPECT_EQ(verdict(folder.makeLink("link", "missing")), kAbsent);
}

TEST(FileSystem, DoesNotSeeThroughLinksInACircle) {
  const TemporaryFolder folder;
  folder.makeLink("first", "second");
  EXPECT_EQ(verdict(folder.makeLink("second", "first")), kAbsent);
}

TEST(FileSystem, DoesNotSeeANameThatIsTooLong) {
  const TemporaryFolder folder;
  EXPECT_EQ(verdict(folder.path() + u"/" + std::u16string(300, u'x')), kAbsent);
  EXPECT_EQ(verdict(std::u16string(100'000, u'/') + folder.path()), kAbsent);
}

TEST(FileSystem, DoesNotSeeAnythingBelowAFile) {
  const TemporaryFolder folder;
  const std::u16string file = folder.writeFile("document.json", "{}");
  EXPECT_EQ(verdict(file + u"/x"), kAbsent);
  EXPECT_EQ(verdict(file + u"/"), kAbsent);
  EXPECT_EQ(verdict(file + u"/."), kAbsent);
}

TEST(FileSystem, DoesNotSeeAnythingInAFolderThatMayNotBeSearched) {
  const TemporaryFolder folder;
  const std::u16string file = folder.writeFile("locked/document.json", "{}");
  ASSERT_EQ(::chmod(folder.nativePath("locked").c_str(), 0), 0);
  {
    const WithoutRights withoutRights;
    EXPECT_EQ(verdict(file), kAbsent);
  }
  ASSERT_EQ(::chmod(folder.nativePath("locked").c_str(), 0700), 0);
  EXPECT_EQ(verdict(file), kReadable);
}

TEST(FileSystem, DoesNotReplaceALoneSurrogateInAPath) {
  const TemporaryFolder folder;
  const std::u16string file = folder.writeFile("\xEF\xBF\xBD", "the name that it would get");
  EXPECT_EQ(verdict(file), kReadable);
  EXPECT_EQ(verdict(folder.path() + u"/" + char16_t{0xD83D}), kAbsent);
  EXPECT_EQ(verdict(folder.path() + u"/" + char16_t{0xDE00}), kAbsent);
}

TEST(InputFileStream, ReadsAFifoUntilItsWriterClosesIt) {
  const TemporaryFolder folder;
  const std::u16string fifo = folder.makeFifo("fifo");
  const std::string part(150'000, 'x');
  std::thread writer([&] {
    std::ofstream out(folder.nativePath("fifo"));
    out << part << std::flush << "|" << std::flush << part;
  });
  Stream stream(fifo);
  const bool open = stream.is_open();
  const std::string text = readAll(stream);
  writer.join();
  EXPECT_TRUE(open);
  EXPECT_TRUE(text == part + "|" + part);
}

TEST(InputFileStream, ReadsAFileThatReportsNoSize) {
  Stream stream(u"/proc/self/status");
  ASSERT_TRUE(stream.is_open());
  EXPECT_EQ(readAll(stream).substr(0, 5), "Name:");
}

TEST(InputFileStream, ReadsNothingFromTheNullDevice) {
  Stream stream(u"/dev/null");
  EXPECT_EQ(readAll(stream), "");
}

TEST(InputFileStream, ReportsAReadErrorAsAFailureOfTheBuffer) {
  // The file begins at address 0, where nothing is mapped.
  Stream byIterator(u"/proc/self/mem");
  ASSERT_TRUE(byIterator.is_open());
  EXPECT_THROW(readAll(byIterator), std::ios_base::failure);

  Stream byBlock(u"/proc/self/mem");
  char block[100];
  EXPECT_THROW(byBlock.rdbuf()->sgetn(block, sizeof block), std::ios_base::failure);

  Stream byStream(u"/proc/self/mem");
  byStream.read(block, sizeof block);
  EXPECT_TRUE(byStream.bad());
}

}  // namespace
