#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "command/CommandLineFwd.h"

namespace update_metadata_tool::command {

/// Breaks the lines of an ASCII text that are longer than `columns`, from 20 on, at their blanks.
///
/// A further line begins two columns deeper than its first; below the second column of a table, if
/// a gap of two blanks leads to one and there is room for it. A word that is longer stays whole.
std::string fitToColumns(std::string_view text, std::size_t columns);

/// Lets the help of `app`, and of the subcommands that are added later, fit the terminal.
void fitHelpToTerminal(CLI::App& app);

}  // namespace update_metadata_tool::command
