// Files that writeFile() creates or replaces.

#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>
#include <filesystem>
#include <set>
#include <string>
#include <system_error>

#include <gtest/gtest.h>

#include "support/FileReplacementFixture.h"
#include "support/RunTool.h"

namespace update_metadata_tool::output {
namespace {

namespace fs = std::filesystem;
using test_support::namesIn;
using test_support::readBytes;
using test_support::statusOf;

using WriteFile = test_support::FileReplacement;

TEST_F(WriteFile, CreatesAFileWithTheModeOfNewFiles) {
  const mode_t before = ::umask(0027);
  writeFile(folder_.nativePath("new"), "content");
  ::umask(before);
  EXPECT_EQ(readBytes(folder_.nativePath("new")), "content");
  EXPECT_EQ(statusOf(folder_.nativePath("new")).st_mode & 07777U, 0640U);
  EXPECT_EQ(namesIn(folder_.nativePath()), (std::set<std::string>{"file", "new"}));
}

TEST_F(WriteFile, KeepsTheModeOfAnExistingFile) {
  ASSERT_EQ(::chmod(file_.c_str(), 0604), 0);
  writeFile(file_, "new");
  EXPECT_EQ(readBytes(file_), "new");
  EXPECT_EQ(statusOf(file_).st_mode & 07777U, 0604U);
}

TEST_F(WriteFile, CreatesAFileInTheWorkingFolder) {
  const fs::path before = fs::current_path();
  fs::current_path(folder_.nativePath());
  writeFile("new", "content");
  fs::current_path(before);
  EXPECT_EQ(readBytes(folder_.nativePath("new")), "content");
}

TEST_F(WriteFile, FollowsALinkToAnExistingFile) {
  folder_.makeLink("link", "file");
  writeFile(folder_.nativePath("link"), "new");
  EXPECT_EQ(readBytes(file_), "new");
  EXPECT_EQ(fs::read_symlink(folder_.nativePath("link")), "file");
}

TEST_F(WriteFile, NeverReplacesADanglingLink) {
  folder_.makeLink("link", "nowhere");
  EXPECT_THROW(writeFile(folder_.nativePath("link"), "content"), std::system_error);
  EXPECT_EQ(fs::read_symlink(folder_.nativePath("link")), "nowhere");
  EXPECT_EQ(namesIn(folder_.nativePath()), (std::set<std::string>{"file", "link"}));
}

TEST_F(WriteFile, NeverReplacesAnythingButFiles) {
  folder_.makeFolder("folder");
  folder_.makeFifo("fifo");
  for (const std::string& path :
       {folder_.nativePath("folder"), folder_.nativePath("fifo"), std::string("/dev/null")}) {
    EXPECT_THROW(writeFile(path, "x"), std::system_error) << path;
  }
  EXPECT_TRUE(fs::is_fifo(folder_.nativePath("fifo")));
}

TEST_F(WriteFile, NeedsAFolderForANewFile) {
  for (const char* name : {"missing/new", "file/new"}) {
    EXPECT_THROW(writeFile(folder_.nativePath(name), "x"), std::system_error) << name;
  }
  EXPECT_EQ(namesIn(folder_.nativePath()), std::set<std::string>{"file"});
}

// A limit of the file size simulates a full disk.
TEST_F(WriteFile, KeepsTheOldFileIfThereIsNoRoomForTheNewOne) {
  rlimit before{};
  ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &before), 0);
  const rlimit small{100, before.rlim_max};
  const auto handler = std::signal(SIGXFSZ, SIG_IGN);
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
  EXPECT_THROW(writeFile(file_, std::string(1000, 'x')), std::system_error);
  EXPECT_THROW(writeFile(folder_.nativePath("new"), std::string(1000, 'x')), std::system_error);
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &before), 0);
  std::signal(SIGXFSZ, handler);
  EXPECT_EQ(readBytes(file_), "old");
  EXPECT_EQ(namesIn(folder_.nativePath()), std::set<std::string>{"file"});
}

}  // namespace
}  // namespace update_metadata_tool::output
