#pragma once

#include <iosfwd>
#include <string>

namespace test_support {

/// How a run of the command ended, and what it wrote.
struct ToolRun {
  int exitCode = 0;  ///< or the negative number of the signal that ended it
  std::string out;
  std::string err;
};

bool operator==(const ToolRun& left, const ToolRun& right);
std::ostream& operator<<(std::ostream& out, const ToolRun& run);

/// The bytes of the file at `path`. Throws std::runtime_error if it cannot be read.
std::string readBytes(const std::string& path);

}  // namespace test_support
