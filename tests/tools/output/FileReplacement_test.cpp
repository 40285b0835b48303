#include "output/FileReplacement.h"

#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <ostream>
#include <set>
#include <string>
#include <system_error>

#include <gtest/gtest.h>

#include "support/RunTool.h"
#include "support/TemporaryFolder.h"

namespace update_metadata_tool::output {
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

void replaceFile(const std::string& path, const std::string& content) {
  OpenedFile(path).replace(content);
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

TEST_F(FileReplacement, ReadsTheBytesThatItReplaces) {
  const std::string content = std::string("a\0b", 3) + std::string(3 << 20, 'c');
  folder_.writeFile("file", content);
  EXPECT_EQ(OpenedFile(file_).read(), content);
}

// --- access control lists -------------------------------------------------------------------

constexpr const char* kAccess = "system.posix_acl_access";
constexpr const char* kDefault = "system.posix_acl_default";

// A list in the form of the attribute: rights of the owner, user 12, the group, the mask, others.
std::string accessList(unsigned char owner, unsigned char user, unsigned char group,
                       unsigned char mask, unsigned char others) {
  std::string list("\2\0\0\0", 4);
  const auto add = [&list](char tag, unsigned char rights, const char* id) {
    list += {tag, '\0', static_cast<char>(rights), '\0'};
    list.append(id, 4);
  };
  constexpr const char* kNobody = "\xFF\xFF\xFF\xFF";
  add(0x01, owner, kNobody);
  add(0x02, user, "\x0C\0\0\0");
  add(0x04, group, kNobody);
  add(0x10, mask, kNobody);
  add(0x20, others, kNobody);
  return list;
}

std::string attributeOf(const std::string& path, const char* name) {
  std::string value(256, '\0');
  const ssize_t size = ::getxattr(path.c_str(), name, value.data(), value.size());
  value.resize(size > 0 ? static_cast<std::size_t>(size) : 0);
  return value;
}

class AccessLists : public FileReplacement {
 protected:
  // False if the file system has none.
  static bool set(const std::string& path, const char* name, const std::string& list) {
    return ::setxattr(path.c_str(), name, list.data(), list.size(), 0) == 0;
  }
};

TEST_F(AccessLists, AreKept) {
  const std::string list = accessList(6, 4, 0, 4, 0);
  if (!set(file_, kAccess, list)) {
    GTEST_SKIP() << "the file system has no access control lists";
  }
  ASSERT_EQ(statusOf(file_).st_mode & 0777U, 0640U);
  replaceFile(file_, "new");
  EXPECT_EQ(readBytes(file_), "new");
  EXPECT_EQ(attributeOf(file_, kAccess), list);
  EXPECT_EQ(statusOf(file_).st_mode & 0777U, 0640U);
}

TEST_F(AccessLists, OfTheFolderGiveAReplacedFileNothing) {
  ASSERT_EQ(::chmod(file_.c_str(), 0660), 0);
  if (!set(folder_.nativePath(), kDefault, accessList(7, 6, 7, 7, 4))) {
    GTEST_SKIP() << "the file system has no access control lists";
  }
  replaceFile(file_, "new");
  EXPECT_EQ(attributeOf(file_, kAccess), "");
  EXPECT_EQ(statusOf(file_).st_mode & 0777U, 0660U);
}

TEST_F(AccessLists, OfTheFolderAreThoseOfANewFile) {
  if (!set(folder_.nativePath(), kDefault, accessList(7, 6, 5, 7, 4))) {
    GTEST_SKIP() << "the file system has no access control lists";
  }
  writeFile(folder_.nativePath("new"), "content");
  EXPECT_EQ(attributeOf(folder_.nativePath("new"), kAccess), accessList(6, 6, 5, 6, 4));
}

// --- changes between opening and replacing --------------------------------------------------

struct Change {
  const char* name;
  std::function<void(const TemporaryFolder&)> make;  ///< of "file", which was opened
  std::string left;                                  ///< its content afterwards
};

std::ostream& operator<<(std::ostream& out, const Change& row) {
  return out << row.name;
}

class ChangesMeanwhile : public FileReplacement, public ::testing::WithParamInterface<Change> {};

TEST_P(ChangesMeanwhile, AreLeftAsTheyAre) {
  folder_.writeFile("other", "other");
  const OpenedFile opened(file_);
  GetParam().make(folder_);
  const std::set<std::string> before = namesIn(folder_.nativePath());
  try {
    opened.replace("new");
    ADD_FAILURE() << "it was replaced";
  } catch (const std::system_error& failure) {
    EXPECT_EQ(failure.code(), std::errc::operation_canceled) << failure.what();
  }
  EXPECT_EQ(namesIn(folder_.nativePath()), before);
  if (fs::is_regular_file(file_)) {
    EXPECT_EQ(readBytes(file_), GetParam().left);
  }
  if (before.count("other") != 0) {
    EXPECT_EQ(readBytes(folder_.nativePath("other")), "other");
  }
}

const Change kChanges[] = {
    {"Longer", [](const TemporaryFolder& folder) { folder.writeFile("file", "longer"); }, "longer"},
    {"OfTheSameSize",
     [](const TemporaryFolder& folder) {
       folder.writeFile("file", "odl");
       fs::last_write_time(folder.nativePath("file"),
                           fs::file_time_type::clock::now() + std::chrono::seconds(2));
     },
     "odl"},
    {"AnotherFile",
     [](const TemporaryFolder& folder) {
       fs::rename(folder.nativePath("other"), folder.nativePath("file"));
     },
     "other"},
    {"LinkToAnotherFile",
     [](const TemporaryFolder& folder) {
       fs::remove(folder.nativePath("file"));
       folder.makeLink("file", "other");
     },
     "other"},
    {"LinkToTheSameFile",
     [](const TemporaryFolder& folder) {
       fs::rename(folder.nativePath("file"), folder.nativePath("moved"));
       folder.makeLink("file", "moved");
     },
     "old"},
    {"Gone", [](const TemporaryFolder& folder) { fs::remove(folder.nativePath("file")); }, ""},
    {"Folder",
     [](const TemporaryFolder& folder) {
       fs::remove(folder.nativePath("file"));
       folder.makeFolder("file");
     },
     ""},
    {"Pipe",
     [](const TemporaryFolder& folder) {
       fs::remove(folder.nativePath("file"));
       folder.makeFifo("file");
     },
     ""},
};
INSTANTIATE_TEST_SUITE_P(All, ChangesMeanwhile, ::testing::ValuesIn(kChanges),
                         [](const auto& row) { return row.param.name; });

TEST_F(FileReplacement, StaysInTheFolderThatWasOpened) {
  folder_.makeFolder("there");
  folder_.writeFile("there/file", "old");
  const OpenedFile opened(folder_.nativePath("there/file"));
  fs::rename(folder_.nativePath("there"), folder_.nativePath("moved"));
  folder_.makeFolder("there");
  folder_.writeFile("there/file", "another");
  opened.replace("new");
  EXPECT_EQ(readBytes(folder_.nativePath("moved/file")), "new");
  EXPECT_EQ(readBytes(folder_.nativePath("there/file")), "another");
}

TEST_F(FileReplacement, FollowsTheLinkAsItWasWhenItWasOpened) {
  folder_.writeFile("other", "other");
  folder_.makeLink("link", "file");
  const OpenedFile opened(folder_.nativePath("link"));
  fs::remove(folder_.nativePath("link"));
  folder_.makeLink("link", "other");
  opened.replace("new");
  EXPECT_EQ(readBytes(file_), "new");
  EXPECT_EQ(readBytes(folder_.nativePath("other")), "other");
}

// --- signals --------------------------------------------------------------------------------

class EndingSignals : public FileReplacement, public ::testing::WithParamInterface<int> {
 protected:
  bool hasTemporaryFile() const { return namesIn(folder_.nativePath()).size() > 1; }
};

// The signal comes while the new file is there, unless that is gone too soon.
TEST_P(EndingSignals, LeaveNoOtherFile) {
  const std::string content(std::size_t{16} << 20U, 'n');
  const pid_t child = ::fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    std::signal(GetParam(), SIG_DFL);
    replaceFile(file_, content);
    ::_exit(0);
  }
  int status = 0;
  pid_t ended = 0;
  while (ended == 0 && !hasTemporaryFile()) {
    ended = ::waitpid(child, &status, WNOHANG);
  }
  if (ended == 0) {
    ::kill(child, GetParam());
    ended = ::waitpid(child, &status, 0);
  }
  EXPECT_EQ(ended, child);
  EXPECT_TRUE(WIFEXITED(status) || WTERMSIG(status) == GetParam()) << status;
  EXPECT_EQ(namesIn(folder_.nativePath()), std::set<std::string>{"file"});
  EXPECT_TRUE(readBytes(file_) == content);
}

INSTANTIATE_TEST_SUITE_P(All, EndingSignals, ::testing::Values(SIGHUP, SIGINT, SIGQUIT, SIGTERM));

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
     std::errc::invalid_argument},
    {"Device", [](const TemporaryFolder& folder) { folder.makeLink("x", "/dev/null"); },
     std::errc::invalid_argument},
    {"Pipe", [](const TemporaryFolder& folder) { folder.makeFifo("x"); },
     std::errc::invalid_argument},
};
INSTANTIATE_TEST_SUITE_P(Entries, IrreplaceableEntries, ::testing::ValuesIn(kIrreplaceables),
                         [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace update_metadata_tool::output
