#include "fl/filesystem.h"

#include <sys/stat.h>
#include <unistd.h>

#include <fstream>
#include <ios>
#include <iterator>
#include <ostream>
#include <string>
#include <thread>
#include <type_traits>

#include <gtest/gtest.h>

#include "support/Locales.h"
#include "support/TemporaryFolder.h"
#include "support/WithoutRights.h"

namespace {

using namespace std::string_literals;
using fl::filesystem::exists;
using test_support::ConvertingLocaleScope;
using test_support::TemporaryFolder;
using test_support::WithoutRights;

using Stream = fl::filesystem::basic_ifstream<char>;

/// Reads as the document loader does.
std::string readAll(Stream& stream) {
  return std::string(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
}

bool opens(const std::u16string& path) {
  return Stream(path).is_open();
}

/// What exists() and the stream say about one path.
struct Verdict {
  bool exists;
  bool opens;
};

bool operator==(const Verdict& left, const Verdict& right) {
  return left.exists == right.exists && left.opens == right.opens;
}

std::ostream& operator<<(std::ostream& out, const Verdict& verdict) {
  return out << (verdict.exists ? "exists" : "does not exist") << ", "
             << (verdict.opens ? "opens" : "does not open");
}

Verdict verdict(const std::u16string& path) {
  return {exists(path), opens(path)};
}

constexpr Verdict kReadable = {true, true};
constexpr Verdict kThereButClosed = {true, false};
constexpr Verdict kAbsent = {false, false};

TEST(FileSystem, SeesAndOpensAFile) {
  const TemporaryFolder folder;
  EXPECT_EQ(verdict(folder.writeFile("document.json", "{}")), kReadable);
}

TEST(FileSystem, SeesAndOpensAFileWithANonAsciiName) {
  const TemporaryFolder folder;
  folder.writeFile("\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80", "{}");
  EXPECT_EQ(verdict(folder.path() + u"/\u00E4\u20AC\U0001F600"), kReadable);
}

TEST(FileSystem, SeesAndOpensADevice) {
  EXPECT_EQ(verdict(u"/dev/null"), kReadable);
}

TEST(FileSystem, FollowsLinks) {
  const TemporaryFolder folder;
  folder.writeFile("document.json", "{}");
  folder.makeLink("first", "document.json");
  EXPECT_EQ(verdict(folder.makeLink("second", "first")), kReadable);
}

TEST(FileSystem, SeesAFolderButDoesNotOpenIt) {
  const TemporaryFolder folder;
  folder.makeLink("link", ".");
  EXPECT_EQ(verdict(folder.path()), kThereButClosed);
  EXPECT_EQ(verdict(folder.path() + u"/"), kThereButClosed);
  EXPECT_EQ(verdict(folder.path("link")), kThereButClosed);
}

TEST(FileSystem, SeesASocketButDoesNotOpenIt) {
  const TemporaryFolder folder;
  EXPECT_EQ(verdict(folder.makeSocket("socket")), kThereButClosed);
}

TEST(FileSystem, SeesAFifo) {
  const TemporaryFolder folder;
  EXPECT_TRUE(exists(folder.makeFifo("fifo")));
}

TEST(FileSystem, DoesNotSeeAMissingFile) {
  const TemporaryFolder folder;
  EXPECT_EQ(verdict(folder.path("document.json")), kAbsent);
  EXPECT_EQ(verdict(folder.path("missing/document.json")), kAbsent);
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

TEST(FileSystem, DoesNotSeeTheEmptyPath) {
  EXPECT_EQ(verdict(u""), kAbsent);
}

TEST(FileSystem, DoesNotCutAPathAtItsNul) {
  const TemporaryFolder folder;
  const std::u16string file = folder.writeFile("document.json", "{}");
  EXPECT_EQ(verdict(file + u"\0"s), kAbsent);
  EXPECT_EQ(verdict(file + u"\0.bak"s), kAbsent);
  EXPECT_EQ(verdict(u"\0"s + file), kAbsent);
}

TEST(FileSystem, DoesNotReplaceALoneSurrogateInAPath) {
  const TemporaryFolder folder;
  const std::u16string file = folder.writeFile("\xEF\xBF\xBD", "the name that it would get");
  EXPECT_EQ(verdict(file), kReadable);
  EXPECT_EQ(verdict(folder.path() + u"/" + char16_t{0xD83D}), kAbsent);
  EXPECT_EQ(verdict(folder.path() + u"/" + char16_t{0xDE00}), kAbsent);
}

TEST(InputFileStream, ReadsTheBytesUnchanged) {
  const TemporaryFolder folder;
  const std::string bytes = "\xEF\xBB\xBF \t{\0}\r\n\xFF\x1A\n\n"s;
  Stream stream(folder.writeFile("document.json", bytes));
  EXPECT_EQ(readAll(stream), bytes);
}

TEST(InputFileStream, ReadsTheBytesUnchangedUnderALocaleThatConvertsThem) {
  const TemporaryFolder folder;
  const std::u16string path = folder.writeFile("document.json", "[1,2,1]");
  const ConvertingLocaleScope locale;
  std::ifstream converted(folder.nativePath("document.json"));
  ASSERT_EQ(std::string(std::istreambuf_iterator<char>(converted), {}), "[2,2,2]");
  Stream stream(path);
  EXPECT_EQ(readAll(stream), "[1,2,1]");
}

TEST(InputFileStream, ReadsAnEmptyFile) {
  const TemporaryFolder folder;
  Stream stream(folder.writeFile("document.json", ""));
  EXPECT_TRUE(stream.is_open());
  EXPECT_EQ(readAll(stream), "");
}

TEST(InputFileStream, ReadsALargeFile) {
  const TemporaryFolder folder;
  std::string bytes;
  while (bytes.size() < 1'000'000) {
    bytes += std::to_string(bytes.size()) + '\n';
  }
  Stream stream(folder.writeFile("document.json", bytes));
  EXPECT_TRUE(readAll(stream) == bytes);
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

TEST(InputFileStream, SetsFailbitWhenNothingWasOpened) {
  const TemporaryFolder folder;
  EXPECT_TRUE(Stream(folder.path("missing")).fail());
  EXPECT_TRUE(Stream(folder.path()).fail());
  EXPECT_TRUE(Stream(u"").fail());
  EXPECT_TRUE(Stream(folder.writeFile("document.json", "")).good());
}

TEST(InputFileStream, AcceptsAnOpenMode) {
  const TemporaryFolder folder;
  Stream stream(folder.writeFile("document.json", "abc"),
                std::ios_base::in | std::ios_base::binary | std::ios_base::ate);
  EXPECT_EQ(stream.tellg(), std::streampos(3));
}

TEST(InputFileStream, IsAStandardFileStreamWithoutImplicitConversionFromAPath) {
  static_assert(std::is_base_of_v<std::ifstream, Stream>);
  static_assert(std::is_constructible_v<Stream, std::u16string>);
  static_assert(!std::is_convertible_v<std::u16string, Stream>);
}

}  // namespace
