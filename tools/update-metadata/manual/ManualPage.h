#pragma once

#include <string>

#include "manual/Outline.h"

namespace update_metadata_tool::manual {

/// The name of the page about a command, without its section: blanks become hyphens.
std::string pageName(const CommandOutline& command);

/// Writes the page about the program, which links to those about its subcommands.
///
/// The result is the input of man(1) and depends only on the outline and the version.
std::string makeProgramPage(const ProgramOutline& program, const std::string& version);

/// Writes the page about one subcommand.
std::string makeCommandPage(const ProgramOutline& program, const CommandOutline& command,
                            const std::string& version);

}  // namespace update_metadata_tool::manual
