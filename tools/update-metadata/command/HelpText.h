#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "command/CommandLineFwd.h"

namespace update_metadata_tool::command {

/// Breaks the lines of an ASCII text that are longer than `columns`, at least 20, at their blanks.
///
/// Further lines are indented two columns deeper than the first, or, in a table whose columns are
/// separated by two blanks, start below the second column if there is room.
std::string fitToColumns(std::string_view text, std::size_t columns);

/// Makes the help of `app` and of subcommands added later fit the terminal.
void fitHelpToTerminal(CLI::App& app);

}  // namespace update_metadata_tool::command
