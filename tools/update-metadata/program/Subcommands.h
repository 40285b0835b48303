#pragma once

#include <memory>
#include <vector>

#include "command/Command.h"
#include "command/CommandLineFwd.h"

namespace update_metadata_tool {

/// Adds every subcommand to `app`, in the order of its help.
std::vector<std::unique_ptr<Command>> addSubcommands(CLI::App& app);

}  // namespace update_metadata_tool
