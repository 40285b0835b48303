#include "Command.h"

#include "query/QueryCommand.h"

namespace update_metadata_tool {

std::vector<std::unique_ptr<Command>> addCommands(CLI::App& app) {
  std::vector<std::unique_ptr<Command>> commands;
  commands.push_back(std::make_unique<QueryCommand>(app));
  return commands;
}

}  // namespace update_metadata_tool
