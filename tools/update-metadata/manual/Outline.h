#pragma once

#include <string>
#include <vector>

#include "command/CommandLineFwd.h"

namespace update_metadata_tool::manual {

/// One option or positional argument, as the help of the program describes it.
struct OptionOutline {
  std::vector<std::string> names;    ///< with their hyphens; for a positional, only its name
  std::string argument;              ///< the name of its value; empty if it has none
  std::vector<std::string> choices;  ///< every value that it accepts, if known
  std::string initial;               ///< the default value; may be empty
  std::string description;
  bool isRequired = false;
  bool isRepeated = false;  ///< accepts more than one value
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

/// Describes `app` and its subcommands.
ProgramOutline outlineOf(const CLI::App& app);

/// Describes the program itself.
ProgramOutline outlineOfProgram();

/// What completes a value with the name `argument`.
enum class Completion { kFolder, kFile, kNothing };
Completion completionOf(const std::string& argument);

}  // namespace update_metadata_tool::manual
