#pragma once

namespace update_metadata_tool {

/// What the command tells its caller when it ends.
enum class ExitCode {
  kAnswered = 0,
  kFailed = 1,      ///< a document could not be loaded or answered, or an output not be written
  kWrongUsage = 2,  ///< the arguments were not understood; nothing was done
};

}  // namespace update_metadata_tool
