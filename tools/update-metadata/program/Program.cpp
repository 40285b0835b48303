#include "program/Program.h"

#include <algorithm>
#include <cstddef>
#include <string>

#include <CLI/CLI.hpp>

#include "command/HelpText.h"
#include "install/update_metadata_parser/Version.h"
#include "output/EditDistance.h"
#include "output/Text.h"

namespace update_metadata_tool::program {
namespace {

constexpr std::size_t kLongestWord = 60;

// What the first word that is no option was probably meant to be, if it is no subcommand; empty if
// nothing comes close.
std::string suggestSubcommand(const CLI::App& app) {
  if (!app.get_subcommands().empty()) {
    return "";
  }
  for (const std::string& word : app.remaining()) {
    if (word.empty() || word.front() == '-' || !output::isUtf8(word)) {
      continue;
    }
    const std::u16string asked = output::toUtf16(word).substr(0, kLongestWord);
    std::string nearest;
    std::size_t least = 3;  // mistakes, of which there may be two
    for (const CLI::App* const subcommand : app.get_subcommands(nullptr)) {
      const std::string& name = subcommand->get_name();
      const std::size_t distance = output::editDistance(asked, output::toUtf16(name));
      if (distance < std::min(least, name.size() - 1)) {
        least = distance;
        nearest = name;
      }
    }
    return nearest;
  }
  return "";
}

// The arguments may hold anything.
std::string describeUsageError(const CLI::App* app, const CLI::Error& error) {
  const std::string suggestion = suggestSubcommand(*app);
  return output::toVisible(error.what()) +
         (suggestion.empty() ? "" : "\nDid you mean '" + suggestion + "'?") +
         "\nRun with --help for more information.\n";
}

}  // namespace

void describeProgram(CLI::App& app) {
  app.name("update-metadata");
  command::fitHelpToTerminal(app);
  app.description(
      "Answers questions about update metadata documents, compares, checks and lays them out.");
  app.set_version_flag(
      "--version", std::string("update-metadata ") + install::update_metadata_parser::version());
  app.require_subcommand(0, 1);
  app.failure_message(describeUsageError);
  app.footer(
      "'update-metadata SUBCOMMAND --help' lists the options of a subcommand. Examples:\n"
      "  update-metadata query update.json --product-data /srv/product-data\n"
      "  update-metadata lint update.json");
}

}  // namespace update_metadata_tool::program
