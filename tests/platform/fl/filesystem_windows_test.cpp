// Paths as Windows understands them.

#include <windows.h>

#include <filesystem>
#include <fstream>
#include <string>

#include <gtest/gtest.h>

#include "fl/filesystem.h"
#include "platform/fl/Verdict.h"
#include "support/TemporaryFolder.h"

namespace {

namespace fs = std::filesystem;
using fl::filesystem::is_directory;
using fl::filesystem::join;
using test_support::kAbsent;
using test_support::kReadable;
using test_support::kThereButClosed;
using test_support::readAll;
using test_support::Stream;
using test_support::TemporaryFolder;
using test_support::verdict;

/// The path of a folder in the form that the system takes without any interpretation.
std::u16string verbatim(const TemporaryFolder& folder) {
  return u"\\\\?\\" + fs::absolute(fs::path(folder.path())).make_preferred().u16string();
}

std::wstring wide(const std::u16string& path) {
  return {path.begin(), path.end()};
}

/// Returns whether the file could be written.
bool write(const std::u16string& path, const char* bytes) {
  std::ofstream file(fs::path(wide(path)), std::ios_base::binary);
  return static_cast<bool>(file << bytes);
}

/// The bytes of a file, which is closed again.
std::string contentOf(const std::u16string& path) {
  Stream stream(path);
  return readAll(stream);
}

/// Makes another folder the working directory while it lives.
class WorkingDirectory {
 public:
  explicit WorkingDirectory(const std::u16string& folder) : before_(fs::current_path()) {
    fs::current_path(folder);
  }
  WorkingDirectory(const WorkingDirectory&) = delete;
  WorkingDirectory& operator=(const WorkingDirectory&) = delete;
  ~WorkingDirectory() { fs::current_path(before_); }

 private:
  fs::path before_;
};

TEST(WindowsPath, MayUseEitherSeparator) {
  const TemporaryFolder folder;
  folder.writeFile("sub/document.json", "{}");
  EXPECT_EQ(verdict(folder.path() + u"/sub/document.json"), kReadable);
  EXPECT_EQ(verdict(folder.path() + u"\\sub\\document.json"), kReadable);
  EXPECT_EQ(verdict(folder.path() + u"\\sub\\..\\sub/.\\document.json"), kReadable);
  EXPECT_EQ(verdict(folder.path() + u"\\SUB\\Document.JSON"), kReadable);
}

TEST(WindowsPath, MayHaveMoreThan260Units) {
  const TemporaryFolder folder;
  std::u16string path = verbatim(folder);
  for (int level = 0; level != 4; ++level) {
    path += u'\\' + std::u16string(100, static_cast<char16_t>(u'a' + level));
    ASSERT_NE(::CreateDirectoryW(wide(path).c_str(), nullptr), 0);
  }
  EXPECT_GT(path.size(), 400u);
  EXPECT_EQ(verdict(path), kThereButClosed);
  const std::u16string file = join(path, u"document.json");
  EXPECT_EQ(verdict(file), kAbsent);
  ASSERT_TRUE(write(file, "{}"));
  EXPECT_EQ(verdict(file), kReadable);
  Stream stream(file);
  EXPECT_EQ(readAll(stream), "{}");
}

TEST(WindowsPath, MayBeTooLongForTheSystem) {
  EXPECT_EQ(verdict(verbatim(TemporaryFolder()) + u"\\" + std::u16string(300, u'x')), kAbsent);
  EXPECT_EQ(verdict(u"\\\\?\\C:\\" + std::u16string(100'000, u'x')), kAbsent);
}

TEST(WindowsPath, MayBeAReservedName) {
  const TemporaryFolder folder;
  const WorkingDirectory here(folder.path());
  for (const char16_t* name : {u"NUL", u"nul"}) {
    EXPECT_EQ(verdict(name), kReadable) << fs::path(name);
    Stream stream(name);
    EXPECT_EQ(readAll(stream), "") << fs::path(name);
  }
  EXPECT_TRUE(fs::is_empty(folder.path())) << "no file has been made";
}

TEST(WindowsPath, MayBeAReservedNameThatIsAFileForThePrefixOfVerbatimPaths) {
  const TemporaryFolder folder;
  const std::u16string file = verbatim(folder) + u"\\NUL";
  EXPECT_EQ(verdict(file), kAbsent);
  ASSERT_TRUE(write(file, "{}"));
  EXPECT_EQ(verdict(file), kReadable);
  EXPECT_EQ(contentOf(file), "{}");
  EXPECT_NE(::DeleteFileW(wide(file).c_str()), 0);
}

TEST(WindowsPath, MayBeRelativeToTheWorkingDirectoryOfADrive) {
  const TemporaryFolder folder;
  folder.writeFile("document.json", "{}");
  const WorkingDirectory here(folder.path());
  const std::u16string drive = fs::current_path().root_name().u16string();
  ASSERT_EQ(drive.size(), 2u) << "a letter and a colon";
  EXPECT_EQ(verdict(drive + u"document.json"), kReadable);
  EXPECT_EQ(verdict(drive + u"/document.json"), kAbsent);
  EXPECT_EQ(verdict(drive + u"missing.json"), kAbsent);
  EXPECT_TRUE(is_directory(drive));
  EXPECT_EQ(verdict(join(drive, u"document.json")), kReadable);
}

TEST(WindowsPath, MayBeRelativeToTheRootOfTheDrive) {
  const TemporaryFolder folder;
  const WorkingDirectory here(folder.path());
  folder.writeFile("document.json", "{}");
  const std::u16string rooted = fs::path(folder.path()).relative_path().u16string();
  EXPECT_EQ(verdict(u"\\" + rooted + u"\\document.json"), kReadable);
}

TEST(WindowsPath, MayContainAnUnpairedSurrogate) {
  const TemporaryFolder folder;
  const std::u16string high = folder.path() + u"/" + char16_t{0xD83D};
  const std::u16string low = folder.path() + u"/" + char16_t{0xDE00};
  folder.writeFile("\xEF\xBF\xBD", "the name that a conversion would give it");
  EXPECT_EQ(verdict(high), kAbsent);
  EXPECT_EQ(verdict(low), kAbsent);
  if (!write(high, "high")) {
    GTEST_SKIP() << "this file system has no such names";
  }
  EXPECT_EQ(verdict(low), kAbsent);
  EXPECT_EQ(verdict(high), kReadable);
  EXPECT_EQ(contentOf(high), "high");
  EXPECT_NE(::DeleteFileW(wide(high).c_str()), 0);
}

TEST(WindowsPath, IsJoinedWithTheSeparatorThatItIsWrittenWith) {
  EXPECT_EQ(join(u"C:\\data", u"name"), u"C:\\data\\name");
  EXPECT_EQ(join(u"C:\\data\\", u"name"), u"C:\\data\\name");
  EXPECT_EQ(join(u"C:/data", u"name"), u"C:/data/name");
  EXPECT_EQ(join(u"\\\\?\\C:\\data", u"name"), u"\\\\?\\C:\\data\\name");
  EXPECT_EQ(join(u"C:", u"name"), u"C:name");
}

TEST(WindowsFile, IsNeverReadAsText) {
  const TemporaryFolder folder;
  const std::string bytes = "a\r\nb\n\x1A\r\nc\x1A";
  for (const auto mode : {std::ios_base::in, std::ios_base::in | std::ios_base::binary}) {
    Stream stream(folder.writeFile("document.json", bytes), mode);
    EXPECT_EQ(readAll(stream), bytes);
  }
}

}  // namespace
