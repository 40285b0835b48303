#pragma once

#include "command/CommandLineFwd.h"

namespace update_metadata_tool::program {

/// Sets the program's name, purpose and version, and the text around its help. addSubcommands()
/// adds the subcommands.
void describeProgram(CLI::App& app);

}  // namespace update_metadata_tool::program
