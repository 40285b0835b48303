#include "command/Command.h"

#include <CLI/CLI.hpp>

namespace update_metadata_tool::command {

Command::Command(CLI::App& app, const std::string& name, const std::string& description)
    : subcommand_(*app.add_subcommand(name, description)) {}

bool Command::isChosen() const {
  return subcommand_.parsed();
}

}  // namespace update_metadata_tool::command
