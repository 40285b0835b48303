#include "manual/Outline.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

#include <CLI/CLI.hpp>

#include "command/Command.h"
#include "program/Program.h"
#include "program/Subcommands.h"

namespace update_metadata_tool::manual {
namespace {

// Splits a text at a mark, which may have several characters.
std::vector<std::string> split(std::string_view text, std::string_view mark) {
  std::vector<std::string> parts;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find(mark), text.size());
    parts.emplace_back(text.substr(0, end));
    text.remove_prefix(std::min(end + mark.size(), text.size()));
  }
  return parts;
}

// A type in the help is the name of the value and, after a colon, its choices in braces.
void readType(const std::string& type, OptionOutline& option) {
  option.argument = type.substr(0, type.find(':'));
  const std::size_t begin = type.find(":{");
  const std::size_t end = type.find('}', begin);
  if (begin != std::string::npos && end != std::string::npos) {
    option.choices = split(type.substr(begin + 2, end - begin - 2), ",");
  }
}

OptionOutline outlineOf(const CLI::Option& option) {
  OptionOutline outline;
  if (option.get_positional()) {
    outline.names = {option.get_name(true)};
  } else {
    for (const std::string& name : option.get_snames()) {
      outline.names.push_back("-" + name);
    }
    for (const std::string& name : option.get_lnames()) {
      outline.names.push_back("--" + name);
    }
  }
  if (option.get_items_expected_max() != 0) {
    readType(option.get_type_name(), outline);
  }
  outline.initial = option.get_default_str();
  outline.description = option.get_description();
  outline.isRequired = option.get_required();
  outline.isRepeated = option.get_items_expected_max() > 1;
  return outline;
}

CommandOutline outlineOf(const CLI::App& app, const std::string& name) {
  CommandOutline outline;
  outline.name = name;
  outline.description = app.get_description();
  for (const CLI::Option* option : app.get_options()) {
    auto& list = option->get_positional() ? outline.positionals : outline.options;
    list.push_back(outlineOf(*option));
  }
  outline.remarks = split(app.get_footer(), "\n\n");
  return outline;
}

}  // namespace

ProgramOutline outlineOf(const CLI::App& app) {
  ProgramOutline outline;
  outline.program = outlineOf(app, app.get_name());
  // Without a filter, only the subcommands that were parsed.
  for (const CLI::App* subcommand : app.get_subcommands([](const CLI::App*) { return true; })) {
    outline.subcommands.push_back(
        outlineOf(*subcommand, app.get_name() + ' ' + subcommand->get_name()));
  }
  return outline;
}

ProgramOutline outlineOfProgram() {
  CLI::App app;
  program::describeProgram(app);
  const auto commands = program::addSubcommands(app);
  return outlineOf(app);
}

Completion completionOf(const std::string& argument) {
  if (argument == "DIR") {
    return Completion::kFolder;
  }
  return argument == "FILE" || argument == "PAGE" ? Completion::kFile : Completion::kNothing;
}

}  // namespace update_metadata_tool::manual
