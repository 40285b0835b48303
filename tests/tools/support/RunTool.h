#pragma once

#include <cstddef>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

namespace test_support {

/// How a run of the command ended, and what it wrote.
struct ToolRun {
  int exitCode = 0;  ///< or the negative number of the signal that ended it
  std::string out;
  std::string err;
};

bool operator==(const ToolRun& left, const ToolRun& right);
std::ostream& operator<<(std::ostream& out, const ToolRun& run);

/// What a run finds around it.
struct ToolSurroundings {
  std::string folder = ".";             ///< where it runs
  std::string inFile = "/dev/null";     ///< its standard input
  bool isInClosed = false;              ///< has no standard input at all
  std::optional<std::string> outFile;   ///< written in place of a file that is read afterwards
  bool isOutClosedPipe = false;         ///< writes into a pipe that nobody reads
  bool isAdministrator = true;          ///< if false, an administrator's rights are given up
  std::optional<std::size_t> memory;    ///< limit of its address space in bytes
  std::optional<std::size_t> fileSize;  ///< limit of every file that it writes in bytes

  /// Both outputs lead to one terminal; what the terminal gets is told as `out`.
  bool isOnTerminal = false;
  unsigned short terminalColumns = 0;  ///< what that terminal tells of its width; 0: nothing

  std::vector<std::string> environment;  ///< added to that of the test: NAME=VALUE
};

/// Runs update-metadata with `arguments`, waits for its end and tells how it went.
///
/// Throws std::system_error if it cannot be run.
ToolRun runTool(const std::vector<std::string>& arguments, const ToolSurroundings& around = {});

/// The bytes of the file at `path`. Throws std::runtime_error if it cannot be read.
std::string readBytes(const std::string& path);

}  // namespace test_support
