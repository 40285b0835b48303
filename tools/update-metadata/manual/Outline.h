#pragma once

#include <string>
#include <vector>

#include "command/CommandLineFwd.h"

namespace update_metadata_tool::manual {

/// One option or positional argument, as the help of the program describes it.
struct OptionOutline {
  std::vector<std::string> names;    ///< with their hyphens; of a positional, its name alone
  std::string argument;              ///< what its value is called; empty if it takes none
  std::vector<std::string> choices;  ///< every value that it takes, if they are known
  std::string initial;               ///< the value without it; may be empty
  std::string description;
  bool isRequired = false;
  bool isRepeated = false;  ///< takes more than one value
};

/// The program or one subcommand of it.
struct CommandOutline {
  std::string name;  ///< as it is typed, the program's name included
  std::string description;
  std::vector<OptionOutline> positionals;
  std::vector<OptionOutline> options;
  std::vector<std::string> remarks;  ///< paragraphs of several lines at the end of its help
};

/// The program and all its subcommands.
struct ProgramOutline {
  CommandOutline program;
  std::vector<CommandOutline> subcommands;  ///< in the order of its help
};

/// Tells what `app` knows of itself and of its subcommands.
ProgramOutline outlineOf(const CLI::App& app);

/// What completes a value that is called `argument`.
enum class Completion { kFolder, kFile, kNothing };
Completion completionOf(const std::string& argument);

}  // namespace update_metadata_tool::manual
