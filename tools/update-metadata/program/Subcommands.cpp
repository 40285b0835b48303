#include "program/Subcommands.h"

#include "diff/DiffCommand.h"
#include "fmt/FmtCommand.h"
#include "lint/LintCommand.h"
#include "list/ListCommand.h"
#include "plan/PlanCommand.h"
#include "query/QueryCommand.h"
#include "report/ReportCommand.h"
#include "schema/SchemaCommand.h"
#include "show/ShowCommand.h"
#include "why/WhyCommand.h"

namespace update_metadata_tool::program {

std::vector<std::unique_ptr<command::Command>> addSubcommands(CLI::App& app) {
  std::vector<std::unique_ptr<command::Command>> commands;
  commands.push_back(std::make_unique<query::QueryCommand>(app));
  commands.push_back(std::make_unique<show::ShowCommand>(app));
  commands.push_back(std::make_unique<plan::PlanCommand>(app));
  commands.push_back(std::make_unique<diff::DiffCommand>(app));
  commands.push_back(std::make_unique<why::WhyCommand>(app));
  commands.push_back(std::make_unique<report::ReportCommand>(app));
  commands.push_back(std::make_unique<lint::LintCommand>(app));
  commands.push_back(std::make_unique<list::ListCommand>(app));
  commands.push_back(std::make_unique<fmt::FmtCommand>(app));
  commands.push_back(std::make_unique<schema::SchemaCommand>(app));
  return commands;
}

}  // namespace update_metadata_tool::program
