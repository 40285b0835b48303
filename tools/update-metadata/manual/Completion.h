#pragma once

#include <string>

#include "manual/Outline.h"

namespace update_metadata_tool::manual {

/// Writes a script for bash that completes subcommands, options and the values of options. It needs
/// nothing but bash.
std::string makeBashCompletion(const ProgramOutline& program);

/// Writes a function for zsh that does the same.
std::string makeZshCompletion(const ProgramOutline& program);

}  // namespace update_metadata_tool::manual
