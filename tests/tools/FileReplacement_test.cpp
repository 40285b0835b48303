#include "FileReplacement.h"

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <functional>
#include <ostream>
#include <set>
#include <string>
#include <system_error>

#include <gtest/gtest.h>

#include "support/RunTool.h"
#include "support/TemporaryFolder.h"

namespace update_metadata_tool {
namespace {

namespace fs = std::filesystem;
using test_support::readBytes;
using test_support::TemporaryFolder;

std::set<std::string> namesIn(const std::string& folder) {
  std::set<std::string> names;
  for (const auto& entry : fs::directory_iterator(folder)) {
    names.insert(entry.path().filename().string());
  }
  return names;
}

struct stat statusOf(const std::string& path) {
  struct stat status {};
  EXPECT_EQ(::stat(path.c_str(), &status), 0);
  return status;
}

class FileReplacement : public ::testing::Test {
 protected:
  FileReplacement() : file_(folder_.nativePath("file")) { folder_.writeFile("file", "old"); }

  TemporaryFolder folder_;
  std::string file_;
};

TEST_F(FileReplacement, LeavesOneFileWithTheNewContent) {
  replaceFile(file_, std::string("n\0w", 3));
  EXPECT_EQ(readBytes(file_), std::string("n\0w", 3));
  replaceFile(file_, "");
  EXPECT_EQ(readBytes(file_), "");
  EXPECT_EQ(namesIn(folder_.nativePath()), std::set<std::string>{"file"});
}

TEST_F(FileReplacement, LeavesTheOldContentToWhoHasTheOldFile) {
  fs::create_hard_link(file_, folder_.nativePath("other name"));
  replaceFile(file_, "new");
  EXPECT_EQ(readBytes(file_), "new");
  EXPECT_EQ(readBytes(folder_.nativePath("other name")), "old");
}

TEST_F(FileReplacement, TakesAFileInTheWorkingFolder) {
  const fs::path before = fs::current_path();
  fs::current_path(folder_.nativePath());
  replaceFile("file", "new");
  fs::current_path(before);
  EXPECT_EQ(readBytes(file_), "new");
}

TEST_F(FileReplacement, TakesTheLongestNameThatAFileCanHave) {
  const std::string file = folder_.nativePath(std::string(255, 'n'));
  fs::rename(file_, file);
  replaceFile(file, "new");
  EXPECT_EQ(readBytes(file), "new");
}

class Modes : public FileReplacement, public ::testing::WithParamInterface<unsigned> {};

TEST_P(Modes, AreKept) {
  ASSERT_EQ(::chmod(file_.c_str(), GetParam()), 0);
  const mode_t mask = ::umask(077);
  replaceFile(file_, "new");
  ::umask(mask);
  EXPECT_EQ(statusOf(file_).st_mode & 07777U, GetParam());
}

INSTANTIATE_TEST_SUITE_P(All, Modes, ::testing::Values(0600U, 0644U, 0664U, 0777U, 0640U, 04711U));

TEST_F(FileReplacement, KeepsOwnerAndGroupForAnAdministrator) {
  if (::geteuid() != 0) {
    GTEST_SKIP() << "needs the rights of an administrator";
  }
  ASSERT_EQ(::chown(file_.c_str(), 12, 34), 0);
  ASSERT_EQ(::chmod(file_.c_str(), 02750), 0);
  replaceFile(file_, "new");
  const struct stat status = statusOf(file_);
  EXPECT_EQ(status.st_uid, 12U);
  EXPECT_EQ(status.st_gid, 34U);
  EXPECT_EQ(status.st_mode & 07777U, 02750U);
}

TEST_F(FileReplacement, FollowsLinksAndLeavesThemThere) {
  folder_.makeFolder("below");
  folder_.makeLink("below/first", "../second");
  folder_.makeLink("second", "file");
  replaceFile(folder_.nativePath("below/first"), "new");
  EXPECT_EQ(readBytes(file_), "new");
  EXPECT_EQ(fs::read_symlink(folder_.nativePath("below/first")), "../second");
  EXPECT_EQ(fs::read_symlink(folder_.nativePath("second")), "file");
  EXPECT_EQ(namesIn(folder_.nativePath("below")), std::set<std::string>{"first"});
}

// --- files that may be new ------------------------------------------------------------------

TEST_F(FileReplacement, OfWhatIsNotThereMakesAFileWithTheModeOfNewFiles) {
  const mode_t before = ::umask(0027);
  writeFile(folder_.nativePath("new"), "content");
  ::umask(before);
  EXPECT_EQ(readBytes(folder_.nativePath("new")), "content");
  EXPECT_EQ(statusOf(folder_.nativePath("new")).st_mode & 07777U, 0640U);
  EXPECT_EQ(namesIn(folder_.nativePath()), (std::set<std::string>{"file", "new"}));
}

TEST_F(FileReplacement, OfWhatMayBeThereKeepsItsMode) {
  ASSERT_EQ(::chmod(file_.c_str(), 0604), 0);
  writeFile(file_, "new");
  EXPECT_EQ(readBytes(file_), "new");
  EXPECT_EQ(statusOf(file_).st_mode & 07777U, 0604U);
}

TEST_F(FileReplacement, MakesAFileInTheWorkingFolder) {
  const fs::path before = fs::current_path();
  fs::current_path(folder_.nativePath());
  writeFile("new", "content");
  fs::current_path(before);
  EXPECT_EQ(readBytes(folder_.nativePath("new")), "content");
}

TEST_F(FileReplacement, FollowsALinkToWhatMayBeThere) {
  folder_.makeLink("link", "file");
  writeFile(folder_.nativePath("link"), "new");
  EXPECT_EQ(readBytes(file_), "new");
  EXPECT_EQ(fs::read_symlink(folder_.nativePath("link")), "file");
}

TEST_F(FileReplacement, NeverPutsAFileInPlaceOfALinkThatLeadsNowhere) {
  folder_.makeLink("link", "nowhere");
  EXPECT_THROW(writeFile(folder_.nativePath("link"), "content"), std::system_error);
  EXPECT_EQ(fs::read_symlink(folder_.nativePath("link")), "nowhere");
  EXPECT_EQ(namesIn(folder_.nativePath()), (std::set<std::string>{"file", "link"}));
}

TEST_F(FileReplacement, NeverPutsAFileInPlaceOfSomethingElse) {
  folder_.makeFolder("folder");
  folder_.makeFifo("fifo");
  for (const std::string& path :
       {folder_.nativePath("folder"), folder_.nativePath("fifo"), std::string("/dev/null")}) {
    EXPECT_THROW(writeFile(path, "x"), std::system_error) << path;
  }
  EXPECT_TRUE(fs::is_fifo(folder_.nativePath("fifo")));
}

TEST_F(FileReplacement, NeedsAFolderForANewFile) {
  for (const char* name : {"missing/new", "file/new"}) {
    EXPECT_THROW(writeFile(folder_.nativePath(name), "x"), std::system_error) << name;
  }
  EXPECT_EQ(namesIn(folder_.nativePath()), std::set<std::string>{"file"});
}

// A limit stands for a disk that is full.
TEST_F(FileReplacement, LeavesTheOldFileIfThereIsNoRoomForTheNewOne) {
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

// --- failures -------------------------------------------------------------------------------

struct Irreplaceable {
  const char* name;
  std::function<void(const TemporaryFolder&)> make;  ///< makes the entry "x"
  std::errc error;
};

std::ostream& operator<<(std::ostream& out, const Irreplaceable& row) {
  return out << row.name;
}

class IrreplaceableEntries : public FileReplacement,
                             public ::testing::WithParamInterface<Irreplaceable> {};

TEST_P(IrreplaceableEntries, AreLeftAsTheyAre) {
  GetParam().make(folder_);
  const std::set<std::string> before = namesIn(folder_.nativePath());
  try {
    replaceFile(folder_.nativePath("x"), "new");
    ADD_FAILURE() << "it was replaced";
  } catch (const std::system_error& failure) {
    EXPECT_EQ(failure.code(), GetParam().error) << failure.what();
  }
  EXPECT_EQ(namesIn(folder_.nativePath()), before);
}

const Irreplaceable kIrreplaceables[] = {
    {"Missing", [](const TemporaryFolder&) {}, std::errc::no_such_file_or_directory},
    {"DanglingLink", [](const TemporaryFolder& folder) { folder.makeLink("x", "nowhere"); },
     std::errc::no_such_file_or_directory},
    {"LinkToItself", [](const TemporaryFolder& folder) { folder.makeLink("x", "x"); },
     std::errc::too_many_symbolic_link_levels},
    {"Folder", [](const TemporaryFolder& folder) { folder.makeFolder("x"); },
     std::errc::is_a_directory},
    {"Device", [](const TemporaryFolder& folder) { folder.makeLink("x", "/dev/null"); },
     std::errc::invalid_argument},
    {"Pipe", [](const TemporaryFolder& folder) { folder.makeFifo("x"); },
     std::errc::no_such_device_or_address},
};
INSTANTIATE_TEST_SUITE_P(Entries, IrreplaceableEntries, ::testing::ValuesIn(kIrreplaceables),
                         [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace update_metadata_tool
