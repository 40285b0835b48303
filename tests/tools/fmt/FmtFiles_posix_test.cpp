// Files as only POSIX systems have them: links, modes, pipes, and rights of users.

#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <set>
#include <string>

#include <gtest/gtest.h>

#include "FmtFixture.h"
#include "command/ExitCode.h"
#include "support/RunTool.h"

namespace update_metadata_tool::fmt {
namespace {

namespace fs = std::filesystem;
using test_support::ToolRun;

constexpr const char* kCheckRights =
    "was not changed; check that it is writable, that files can be created in its folder, and "
    "that there is space\n";

TEST_F(Fmt, DoesNotReadAPipe) {
  folder_.makeFifo("pipe");
  EXPECT_EQ(run({"pipe"}),
            (ToolRun{kTrouble, "",
                     "update-metadata: 'pipe' was not changed: it is not a regular file; pipe "
                     "its content to 'fmt -'\n"}));
}

TEST_F(Fmt, DoesNotReplaceAFileThroughADescriptor) {
  around_.inFile = folder_.nativePath("other.json");
  const std::string before = contentOf("other.json");
  EXPECT_EQ(run({"/dev/stdin"}),
            (ToolRun{kTrouble, "",
                     "update-metadata: '/dev/stdin' was not changed: it is not a regular file; "
                     "pipe its content to 'fmt -'\n"}));
  EXPECT_EQ(contentOf("other.json"), before);
}

TEST_F(Fmt, KeepsLinksAndModes) {
  ASSERT_EQ(::chmod(folder_.nativePath("other.json").c_str(), 0640), 0);
  folder_.makeLink("link.json", "other.json");
  EXPECT_EQ(run({"link.json"}), (ToolRun{kDone, "", ""}));
  EXPECT_TRUE(fs::is_symlink(folder_.nativePath("link.json")));
  EXPECT_EQ(contentOf("other.json"), kTwoBlanks);
  EXPECT_EQ(fs::status(folder_.nativePath("other.json")).permissions(), fs::perms{0640});
}

TEST_F(Fmt, DoesNotWriteAFileThatIsAlreadyFormatted) {
  struct stat before {};
  ASSERT_EQ(::stat(folder_.nativePath("good.json").c_str(), &before), 0);
  EXPECT_EQ(run({"good.json"}), (ToolRun{kDone, "", ""}));
  struct stat after {};
  ASSERT_EQ(::stat(folder_.nativePath("good.json").c_str(), &after), 0);
  EXPECT_EQ(after.st_ino, before.st_ino);
}

TEST_F(Fmt, ReportsStandardOutputThatCannotBeWritten) {
  around_.inFile = folder_.nativePath("other.json");
  around_.outFile = "/dev/full";
  EXPECT_EQ(run({"-"}),
            (ToolRun{1, "",
                     "update-metadata: standard output could not be written: No space left on "
                     "device; the output is incomplete\n"}));
}

TEST_F(Fmt, KeepsTheFileWhenThereIsNoSpaceForANewOne) {
  const std::string large = R"({"note":")" + std::string(5000, 'x') + R"(",)" + kCompact.substr(1);
  folder_.writeFile("other.json", large);
  around_.fileSize = 4096;
  EXPECT_EQ(run({"other.json"}),
            (ToolRun{kTrouble, "",
                     std::string("the new file cannot be written: File too large\n") +
                         "update-metadata: 'other.json' " + kCheckRights}));
  EXPECT_EQ(contentOf("other.json"), large);
  EXPECT_EQ(names(), (std::set<std::string>{"bad.json", "good.json", "other.json"}));
}

// A user who is not an administrator. Everyone may enter the folder and write the file.
class FmtOfAUser : public Fmt {
 protected:
  FmtOfAUser() {
    around_.isAdministrator = false;
    setMode("", 0755);
    setMode("other.json", 0666);
  }

  void setMode(const std::string& name, mode_t mode) {
    ASSERT_EQ(::chmod(folder_.nativePath(name).c_str(), mode), 0);
  }
};

TEST_F(FmtOfAUser, LearnsThatNoFileCanBeCreatedInTheFolder) {
  setMode("", 0555);
  EXPECT_EQ(run({"other.json"}),
            (ToolRun{kTrouble, "",
                     std::string("no file can be created in its folder: Permission denied\n") +
                         "update-metadata: 'other.json' " + kCheckRights}));
  setMode("", 0755);
  EXPECT_EQ(contentOf("other.json"), "\xEF\xBB\xBF" + kCompact + "\r\n");
}

TEST_F(FmtOfAUser, LearnsThatTheFileIsProtected) {
  setMode("", 0777);
  setMode("other.json", 0444);
  EXPECT_EQ(run({"other.json"}),
            (ToolRun{kTrouble, "",
                     std::string("the file cannot be written: Permission denied\n") +
                         "update-metadata: 'other.json' " + kCheckRights}));
  EXPECT_EQ(contentOf("other.json"), "\xEF\xBB\xBF" + kCompact + "\r\n");
}

TEST_F(FmtOfAUser, DoesNotGiveTheRightsOfAGroupToAnother) {
  if (::geteuid() != 0) {
    GTEST_SKIP() << "needs a file of another user, which only an administrator can create";
  }
  setMode("", 0777);
  setMode("other.json", 06666);
  EXPECT_EQ(run({"other.json"}), (ToolRun{kDone, "", ""}));
  EXPECT_EQ(contentOf("other.json"), kTwoBlanks);
  EXPECT_EQ(fs::status(folder_.nativePath("other.json")).permissions(), fs::perms{0606});
}

}  // namespace
}  // namespace update_metadata_tool::fmt
