#pragma once

#include <memory>
#include <vector>

#include "command/Command.h"
#include "command/CommandLineFwd.h"

namespace update_metadata_tool::program {

/// Adds every subcommand to `app`, in the order in which the help lists them.
std::vector<std::unique_ptr<command::Command>> addSubcommands(CLI::App& app);

}  // namespace update_metadata_tool::program
