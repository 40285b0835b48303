#include "fl/filesystem.h"

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <ios>
#include <iterator>
#include <string>
#include <type_traits>

#include <gtest/gtest.h>

#include "platform/fl/Verdict.h"
#include "support/Locales.h"
#include "support/TemporaryFolder.h"

namespace {

using namespace std::string_literals;
using fl::filesystem::is_directory;
using fl::filesystem::join;
using test_support::ConvertingLocaleScope;
using test_support::kAbsent;
using test_support::kReadable;
using test_support::kThereButClosed;
using test_support::readAll;
using test_support::Stream;
using test_support::TemporaryFolder;
using test_support::verdict;

TEST(FileSystem, SeesAndOpensAFile) {
  const TemporaryFolder folder;
  EXPECT_EQ(verdict(folder.writeFile("document.json", "{}")), kReadable);
}

TEST(FileSystem, SeesAndOpensAFileWithANonAsciiName) {
  const TemporaryFolder folder;
  folder.writeFile("\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80", "{}");
  EXPECT_EQ(verdict(folder.path() + u"/\u00E4\u20AC\U0001F600"), kReadable);
}

// Its size does not fit into 32 bits. It takes no room on most file systems.
TEST(FileSystem, SeesAndOpensAFileOfFiveGigabytes) {
  const TemporaryFolder folder;
  const std::u16string path = folder.writeFile("document.json", "{}");
  std::filesystem::resize_file(path, std::uintmax_t{5} << 30);
  EXPECT_EQ(fl::filesystem::exists(path), true);
  EXPECT_EQ(Stream(path).get(), '{');
}

TEST(FileSystem, SeesAFolderButDoesNotOpenIt) {
  const TemporaryFolder folder;
  EXPECT_EQ(verdict(folder.path()), kThereButClosed);
  EXPECT_EQ(verdict(folder.path() + u"/"), kThereButClosed);
}

TEST(FileSystem, KnowsAFolderFromAFile) {
  const TemporaryFolder folder;
  EXPECT_TRUE(is_directory(folder.path()));
  EXPECT_TRUE(is_directory(folder.path() + u"/"));
  EXPECT_FALSE(is_directory(folder.writeFile("document.json", "{}")));
  EXPECT_FALSE(is_directory(folder.path("missing")));
  EXPECT_FALSE(is_directory(u""));
}

TEST(FileSystem, JoinsAFolderAndTheNameOfAnEntry) {
  EXPECT_EQ(join(u"folder", u"name"), u"folder/name");
  EXPECT_EQ(join(u"folder/", u"name"), u"folder/name");
  EXPECT_EQ(join(u"/", u"name"), u"/name");
}

TEST(FileSystem, DoesNotSeeAMissingFile) {
  const TemporaryFolder folder;
  EXPECT_EQ(verdict(folder.path("document.json")), kAbsent);
  EXPECT_EQ(verdict(folder.path("missing/document.json")), kAbsent);
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

TEST(InputFileStream, SetsFailbitWhenNothingWasOpened) {
  const TemporaryFolder folder;
  EXPECT_TRUE(Stream(folder.path("missing")).fail());
  EXPECT_TRUE(Stream(folder.path()).fail());
  EXPECT_TRUE(Stream(u"").fail());
  EXPECT_TRUE(Stream(folder.writeFile("document.json", "")).good());
}

TEST(InputFileStream, ReadsTheSameInEveryMode) {
  const TemporaryFolder folder;
  Stream stream(folder.writeFile("document.json", "abc"), std::ios_base::in | std::ios_base::ate);
  EXPECT_EQ(readAll(stream), "abc");
}

TEST(InputFileStream, GivesBlocksAfterSingleBytes) {
  const TemporaryFolder folder;
  const std::string text = std::string(10'000, 'a') + std::string(10'000, 'b') + "c";
  Stream stream(folder.writeFile("document.json", text));
  std::string read(1, static_cast<char>(stream.get()));
  for (const std::size_t count : {5U, 8186U, 1U, 9000U, 100'000U}) {
    std::string block(count, '-');
    block.resize(static_cast<std::size_t>(
        stream.rdbuf()->sgetn(block.data(), static_cast<std::streamsize>(count))));
    read += block;
  }
  EXPECT_TRUE(read == text);
}

TEST(InputFileStream, IsAnInputStreamWithoutImplicitConversionFromAPath) {
  static_assert(std::is_base_of_v<std::istream, Stream>);
  static_assert(std::is_constructible_v<Stream, std::u16string>);
  static_assert(!std::is_convertible_v<std::u16string, Stream>);
}

}  // namespace
