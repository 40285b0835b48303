#include <string_view>

#include "manual/Completion.h"

namespace update_metadata_tool::manual {
namespace {

// Text inside single quotes, in an argument of _arguments or _describe.
std::string inQuotes(std::string_view text) {
  std::string result;
  for (const char character : text) {
    if (character == '\'') {
      result += "'\\''";
    } else {
      if (character == '[' || character == ']' || character == ':' || character == '\\') {
        result += '\\';
      }
      result += character;
    }
  }
  return result;
}

std::string zshAction(const OptionOutline& option) {
  if (!option.choices.empty()) {
    std::string choices;
    for (const std::string& choice : option.choices) {
      choices += (choices.empty() ? "" : " ") + choice;
    }
    return '(' + choices + ')';
  }
  switch (completionOf(option.argument)) {
    case Completion::kFolder:
      return "_files -/";
    case Completion::kFile:
      return "_files";
    case Completion::kNothing:
      break;
  }
  return " ";
}

// One option, under each of its names; giving it once rules out the others.
void writeOption(const OptionOutline& option, std::string& script) {
  std::string all;
  for (const std::string& name : option.names) {
    all += (all.empty() ? "" : " ") + name;
  }
  const std::string start = " \\\n        '(" + all + ')';
  const std::string description = '[' + inQuotes(option.description) + ']';
  for (const std::string& name : option.names) {
    script += start;
    script += name;
    script += description;
    if (!option.argument.empty()) {
      script += ':' + inQuotes(option.argument) + ':' + zshAction(option);
    }
    script += '\'';
  }
}

void writeArguments(const CommandOutline& command, std::string& script) {
  script += "      _arguments";
  for (const OptionOutline& option : command.options) {
    writeOption(option, script);
  }
  for (const OptionOutline& positional : command.positionals) {
    script += std::string(" \\\n        '") + (positional.isRepeated ? "*" : "") + ':' +
              inQuotes(positional.names.front()) + ":_files'";
  }
  script += "\n      ;;\n";
}

}  // namespace

std::string makeZshCompletion(const ProgramOutline& program) {
  std::string script = "#compdef update-metadata\n# Completion of update-metadata for zsh.\n\n";
  script += "_update-metadata() {\n  local -a subcommands\n  subcommands=(\n";
  const std::size_t prefix = program.program.name.size() + 1;
  for (const CommandOutline& subcommand : program.subcommands) {
    script +=
        "    '" + subcommand.name.substr(prefix) + ':' + inQuotes(subcommand.description) + "'\n";
  }
  script +=
      "  )\n"
      "  if ((CURRENT == 2)) && [[ $words[CURRENT] != -* ]]; then\n"
      "    _describe subcommand subcommands\n"
      "    return\n"
      "  fi\n"
      "  local subcommand=$words[2]\n"
      "  if ((CURRENT > 2)); then\n"
      "    shift words\n"
      "    ((CURRENT--))\n"
      "  fi\n"
      "  case $subcommand in\n";
  for (const CommandOutline& subcommand : program.subcommands) {
    script += "    " + subcommand.name.substr(prefix) + ")\n";
    writeArguments(subcommand, script);
  }
  script += "    *)\n";
  writeArguments(program.program, script);
  script += "  esac\n}\n\n_update-metadata \"$@\"\n";
  return script;
}

}  // namespace update_metadata_tool::manual
