#include "Program.h"

#include <string>

#include <CLI/CLI.hpp>

#include "HelpText.h"
#include "install/update_metadata_parser/Version.h"

namespace update_metadata_tool {

void describeProgram(CLI::App& app) {
  app.name("update-metadata");
  fitHelpToTerminal(app);
  app.description(
      "Answers questions about update metadata documents, compares, checks and lays them out.");
  app.set_version_flag(
      "--version", std::string("update-metadata ") + install::update_metadata_parser::version());
  app.require_subcommand(0, 1);
  app.footer(
      "'update-metadata SUBCOMMAND --help' tells the options of a subcommand. Examples:\n"
      "  update-metadata query update.json --product-data /srv/product-data\n"
      "  update-metadata lint update.json");
}

}  // namespace update_metadata_tool
