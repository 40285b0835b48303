#include <windows.h>

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <limits>
#include <set>
#include <string>
#include <system_error>

#include <gtest/gtest.h>

#include "output/FileReplacement.h"
#include "support/RunTool.h"
#include "support/TemporaryFolder.h"

namespace update_metadata_tool::output {
namespace {

namespace fs = std::filesystem;
using test_support::readBytes;
using test_support::TemporaryFolder;

constexpr std::uint64_t kNoLimit = std::numeric_limits<std::uint64_t>::max();

/// A folder with a file whose content is "old" and whose name needs UTF-16.
class WindowsFile : public ::testing::Test {
 protected:
  WindowsFile() { folder_.writeFile(kName, "old"); }

  std::wstring wide(const char* name) const {
    return fs::u8path(folder_.nativePath(name)).native();
  }

  std::set<std::string> names() const {
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(fs::u8path(folder_.nativePath()))) {
      names.insert(entry.path().filename().u8string());
    }
    return names;
  }

  static constexpr const char* kName = "\xC3\xA4 \xE2\x82\xAC.json";

  TemporaryFolder folder_;
  std::string file_ = folder_.nativePath(kName);
};

TEST_F(WindowsFile, IsReadAndReplaced) {
  const OpenedFile opened(file_);
  EXPECT_EQ(opened.read(kNoLimit), "old");
  opened.replace("a\r\n\x1A\n");
  EXPECT_EQ(readBytes(file_), "a\r\n\x1A\n");
  EXPECT_EQ(names(), std::set<std::string>{kName});
}

TEST_F(WindowsFile, IsNotReplacedIfItHasChanged) {
  const OpenedFile opened(file_);
  folder_.writeFile(kName, "another");
  try {
    opened.replace("new");
    ADD_FAILURE() << "it was replaced";
  } catch (const std::system_error& error) {
    EXPECT_EQ(error.code(), std::errc::operation_canceled);
  }
  EXPECT_EQ(readBytes(file_), "another");
  EXPECT_EQ(names(), std::set<std::string>{kName});
}

TEST_F(WindowsFile, IsNotReplacedIfItIsReadOnly) {
  ASSERT_NE(::SetFileAttributesW(wide(kName).c_str(), FILE_ATTRIBUTE_READONLY), 0);
  EXPECT_THROW(OpenedFile(file_).replace("new"), std::system_error);
  EXPECT_THROW(writeFile(file_, "new"), std::system_error);
  EXPECT_EQ(readBytes(file_), "old");
  EXPECT_EQ(names(), std::set<std::string>{kName});
  ASSERT_NE(::SetFileAttributesW(wide(kName).c_str(), FILE_ATTRIBUTE_NORMAL), 0);
}

TEST_F(WindowsFile, IsNotReplacedWhileAnotherProgramForbidsIt) {
  const HANDLE other = ::CreateFileW(wide(kName).c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                     OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  ASSERT_NE(other, INVALID_HANDLE_VALUE);
  EXPECT_THROW(OpenedFile(file_).replace("new"), std::system_error);
  EXPECT_EQ(readBytes(file_), "old");
  EXPECT_EQ(names(), std::set<std::string>{kName});
  ::CloseHandle(other);
}

TEST_F(WindowsFile, IsWrittenWholeWhetherOrNotItExists) {
  writeFile(file_, "new");
  EXPECT_EQ(readBytes(file_), "new");
  writeFile(folder_.nativePath("other"), "content");
  EXPECT_EQ(readBytes(folder_.nativePath("other")), "content");
  EXPECT_EQ(names(), (std::set<std::string>{kName, "other"}));
}

TEST_F(WindowsFile, IsNeverAFolderOrADevice) {
  EXPECT_THROW(writeFile(folder_.nativePath(), "x"), std::system_error);
  EXPECT_THROW(writeFile("NUL", "x"), std::system_error);
  EXPECT_THROW(OpenedFile{folder_.nativePath()}, std::system_error);
  EXPECT_THROW(OpenedFile{"NUL"}, std::system_error);
}

TEST_F(WindowsFile, NeedsAFolder) {
  EXPECT_THROW(writeFile(folder_.nativePath("missing/new"), "x"), std::system_error);
  EXPECT_EQ(names(), std::set<std::string>{kName});
}

}  // namespace
}  // namespace update_metadata_tool::output
