#pragma once

namespace update_metadata_tool::command {

/// The exit status. The help of each subcommand documents what 0, 1 and 2 mean there.
enum class ExitCode {
  kDone = 0,
  kFailed = 1,   ///< done, with an unwelcome result; also output that could not be written, unless
                 ///< the subcommand has another Command::troubleCode()
  kTrouble = 2,  ///< a usage error, or no result
};

}  // namespace update_metadata_tool::command
