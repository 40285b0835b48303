#include "program/Subcommands.h"

#include "diff/DiffCommand.h"
#include "fmt/FmtCommand.h"
#include "lint/LintCommand.h"
#include "plan/PlanCommand.h"
#include "query/QueryCommand.h"
#include "report/ReportCommand.h"
#include "schema/SchemaCommand.h"
#include "show/ShowCommand.h"

namespace update_metadata_tool {

std::vector<std::unique_ptr<Command>> addSubcommands(CLI::App& app) {
  std::vector<std::unique_ptr<Command>> commands;
  commands.push_back(std::make_unique<QueryCommand>(app));
  commands.push_back(std::make_unique<ShowCommand>(app));
  commands.push_back(std::make_unique<PlanCommand>(app));
  commands.push_back(std::make_unique<DiffCommand>(app));
  commands.push_back(std::make_unique<ReportCommand>(app));
  commands.push_back(std::make_unique<LintCommand>(app));
  commands.push_back(std::make_unique<FmtCommand>(app));
  commands.push_back(std::make_unique<SchemaCommand>(app));
  return commands;
}

}  // namespace update_metadata_tool
