#pragma once

#include "command/CommandLineFwd.h"

namespace update_metadata_tool::program {

/// Gives `app` what the program says of itself: its name and purpose, its version, and where its
/// help goes on. The subcommands are added by addSubcommands().
void describeProgram(CLI::App& app);

}  // namespace update_metadata_tool::program
