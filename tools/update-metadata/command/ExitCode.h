#pragma once

namespace update_metadata_tool::command {

/// What the command tells its caller when it ends. The help of each subcommand says what 0, 1 and 2
/// mean there.
enum class ExitCode {
  kDone = 0,
  kFailed = 1,   ///< done, but not to the user's liking; also an output that was not written,
                 ///< unless the subcommand has another Command::troubleCode()
  kTrouble = 2,  ///< the arguments were not understood, and nothing was done, or there is no answer
};

}  // namespace update_metadata_tool::command
