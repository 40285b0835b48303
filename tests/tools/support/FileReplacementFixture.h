#pragma once

#include <sys/stat.h>

#include <filesystem>
#include <set>
#include <string>

#include <gtest/gtest.h>

#include "output/FileReplacement.h"
#include "support/TemporaryFolder.h"

namespace test_support {

/// The names in a folder.
inline std::set<std::string> namesIn(const std::string& folder) {
  std::set<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    names.insert(entry.path().filename().string());
  }
  return names;
}

/// Opens a file and replaces its content.
inline void replaceFile(const std::string& path, const std::string& content) {
  update_metadata_tool::output::OpenedFile(path).replace(content);
}

/// The status of a file that exists.
inline struct stat statusOf(const std::string& path) {
  struct stat status {};
  EXPECT_EQ(::stat(path.c_str(), &status), 0);
  return status;
}

/// A folder with a file named "file", whose content is "old".
class FileReplacement : public ::testing::Test {
 protected:
  FileReplacement() : file_(folder_.nativePath("file")) { folder_.writeFile("file", "old"); }

  TemporaryFolder folder_;
  std::string file_;
};

}  // namespace test_support
