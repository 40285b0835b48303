#include "output/FileReplacement.h"

#include <sys/wait.h>
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

#include "support/FileReplacementFixture.h"
#include "support/RunTool.h"
#include "support/TemporaryFolder.h"

namespace update_metadata_tool::output {
namespace {

namespace fs = std::filesystem;
using test_support::FileReplacement;
using test_support::namesIn;
using test_support::readBytes;
using test_support::replaceFile;
using test_support::TemporaryFolder;

TEST_F(FileReplacement, LeavesOneFileWithTheNewContent) {
  replaceFile(file_, std::string("n\0w", 3));
  EXPECT_EQ(readBytes(file_), std::string("n\0w", 3));
  replaceFile(file_, "");
  EXPECT_EQ(readBytes(file_), "");
  EXPECT_EQ(namesIn(folder_.nativePath()), std::set<std::string>{"file"});
}

TEST_F(FileReplacement, LeavesOtherHardLinksWithTheOldContent) {
  fs::create_hard_link(file_, folder_.nativePath("other name"));
  replaceFile(file_, "new");
  EXPECT_EQ(readBytes(file_), "new");
  EXPECT_EQ(readBytes(folder_.nativePath("other name")), "old");
}

TEST_F(FileReplacement, AcceptsAFileInTheWorkingFolder) {
  const fs::path before = fs::current_path();
  fs::current_path(folder_.nativePath());
  replaceFile("file", "new");
  fs::current_path(before);
  EXPECT_EQ(readBytes(file_), "new");
}

TEST_F(FileReplacement, AcceptsTheLongestPossibleName) {
  const std::string file = folder_.nativePath(std::string(255, 'n'));
  fs::rename(file_, file);
  replaceFile(file, "new");
  EXPECT_EQ(readBytes(file), "new");
}

TEST_F(FileReplacement, FollowsAndKeepsLinks) {
  folder_.makeFolder("below");
  folder_.makeLink("below/first", "../second");
  folder_.makeLink("second", "file");
  replaceFile(folder_.nativePath("below/first"), "new");
  EXPECT_EQ(readBytes(file_), "new");
  EXPECT_EQ(fs::read_symlink(folder_.nativePath("below/first")), "../second");
  EXPECT_EQ(fs::read_symlink(folder_.nativePath("second")), "file");
  EXPECT_EQ(namesIn(folder_.nativePath("below")), std::set<std::string>{"first"});
}

TEST_F(FileReplacement, ReadsTheOldContent) {
  const std::string content = std::string("a\0b", 3) + std::string(3 << 20, 'c');
  folder_.writeFile("file", content);
  EXPECT_EQ(OpenedFile(file_).read(content.size()), content);
}

// --- changes between opening and replacing --------------------------------------------------

struct Change {
  const char* name;
  std::function<void(const TemporaryFolder&)> make;  ///< changes "file", which is open
  std::string left;                                  ///< the content afterwards
};

std::ostream& operator<<(std::ostream& out, const Change& row) {
  return out << row.name;
}

class ChangesMeanwhile : public FileReplacement, public ::testing::WithParamInterface<Change> {};

TEST_P(ChangesMeanwhile, AreKept) {
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

TEST_F(FileReplacement, ReplacesTheFileInTheFolderThatWasOpened) {
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

TEST_F(FileReplacement, FollowsALinkOnlyWhenOpening) {
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

// The signal arrives while the temporary file exists, unless the replacement is faster.
TEST_P(EndingSignals, LeaveNoTemporaryFile) {
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

TEST_P(IrreplaceableEntries, AreKept) {
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
