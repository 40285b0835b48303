#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "support/ToolRun.h"

namespace test_support {

/// The environment of a run.
struct ToolSurroundings {
  std::string folder = ".";             ///< its working directory
  std::string inFile = "/dev/null";     ///< its standard input
  bool isInClosed = false;              ///< has no standard input
  std::optional<std::string> outFile;   ///< standard output instead of a temporary file
  bool isOutClosedPipe = false;         ///< standard output is a pipe without a reader
  bool isAdministrator = true;          ///< if false, without an administrator's rights
  std::optional<std::size_t> memory;    ///< limit of its address space in bytes
  std::optional<std::size_t> fileSize;  ///< limit of every file that it writes in bytes

  /// Both outputs are one terminal; what it receives is `out` of the result.
  bool isOnTerminal = false;
  unsigned short terminalColumns = 0;  ///< its width; 0: unknown

  std::vector<std::string> environment;  ///< added to that of the test: NAME=VALUE
};

/// Runs update-metadata with `arguments`, waits for its end and returns the result.
///
/// Throws std::system_error if it cannot be run.
ToolRun runTool(const std::vector<std::string>& arguments, const ToolSurroundings& around = {});

}  // namespace test_support
