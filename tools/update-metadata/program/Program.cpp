#include "program/Program.h"

#include <algorithm>
#include <cstddef>
#include <string>

#include <CLI/CLI.hpp>

#include "command/HelpText.h"
#include "diagnosis/EditDistance.h"
#include "install/update_metadata_parser/Version.h"
#include "output/Text.h"

namespace update_metadata_tool::program {
namespace {

constexpr std::size_t kLongestWord = 60;

// The subcommand that was probably meant by the first argument that is not an option. Empty if a
// subcommand was given, or if no name is similar.
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
    std::size_t least = 3;  // more than the two typing errors that are tolerated
    for (const CLI::App* const subcommand : app.get_subcommands(nullptr)) {
      const std::string& name = subcommand->get_name();
      const std::size_t distance =
          install::update_metadata_parser::diagnosis::editDistance(asked, output::toUtf16(name));
      if (distance < std::min(least, name.size() - 1)) {
        least = distance;
        nearest = name;
      }
    }
    return nearest;
  }
  return "";
}

// Escapes the message, because it quotes arguments, which may contain anything.
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
  app.description("Query, compare, check and format update metadata documents.");
  app.set_version_flag(
      "--version", std::string("update-metadata ") + install::update_metadata_parser::version());
  app.require_subcommand(0, 1);
  // On Windows a slash would begin an option, but paths may begin with one.
  app.allow_windows_style_options(false);
  app.failure_message(describeUsageError);
  app.footer(
      "Run 'update-metadata SUBCOMMAND --help' for a subcommand's options. Examples:\n"
      "  update-metadata query update.json --product-data /srv/product-data\n"
      "  update-metadata lint update.json");
}

}  // namespace update_metadata_tool::program
