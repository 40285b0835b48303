#include <string_view>
#include <vector>

#include "manual/Completion.h"

namespace update_metadata_tool::manual {
namespace {

constexpr std::string_view kBefore = R"(_update_metadata() {
  local current="${COMP_WORDS[COMP_CWORD]}" subcommand='' option='' word
  # "--format=json" comes as three words.
  if [[ $current == '=' ]]; then
    current='' option="${COMP_WORDS[COMP_CWORD - 1]}"
  elif [[ ${COMP_WORDS[COMP_CWORD - 1]} == '=' ]]; then
    option="${COMP_WORDS[COMP_CWORD - 2]}"
  else
    option="${COMP_WORDS[COMP_CWORD - 1]}"
  fi
  for word in "${COMP_WORDS[@]:1:COMP_CWORD - 1}"; do
    if [[ $word != -* ]]; then
      subcommand="$word"
      break
    fi
  done

  local words='' action='default'
  case "$subcommand" in
)";

// `action` selects what completes besides the words: by default, files and folders.
constexpr std::string_view kBehind = R"(  esac
  case "$action" in
    folder) mapfile -t COMPREPLY < <(compgen -d -- "$current") && compopt -o filenames ;;
    nothing) compopt +o default ;;&
    *) mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current") ;;
  esac
}
complete -o default -F _update_metadata update-metadata
)";

std::string joined(const std::vector<std::string>& words, const char* mark) {
  std::string text;
  for (const std::string& word : words) {
    text += (text.empty() ? "" : mark) + word;
  }
  return text;
}

std::string bashAction(const OptionOutline& option) {
  if (!option.choices.empty()) {
    return "words='" + joined(option.choices, " ") + "' action=nothing";
  }
  switch (completionOf(option.argument)) {
    case Completion::kFolder:
      return "action=folder";
    case Completion::kFile:
      return "words=''";
    case Completion::kNothing:
      break;
  }
  return "action=nothing";
}

// The completion after one subcommand; without a subcommand, words other than options also
// complete.
void writeCase(const CommandOutline& command, const std::string& pattern,
               const std::vector<std::string>& words, std::string& script) {
  script += "    " + pattern + ")\n      case \"$option\" in\n";
  std::vector<std::string> names;
  for (const OptionOutline& option : command.options) {
    names.insert(names.end(), option.names.begin(), option.names.end());
    if (!option.argument.empty()) {
      script += "        " + joined(option.names, " | ") + ") " + bashAction(option) + " ;;\n";
    }
  }
  if (words.empty()) {
    script += "        *) [[ $current != -* ]] || words='" + joined(names, " ") + "' ;;\n";
  } else {
    script += "        *) words='" + joined(words, " ") + ' ' + joined(names, " ") +
              "' action=nothing ;;\n";
  }
  script += "      esac\n      ;;\n";
}

}  // namespace

std::string makeBashCompletion(const ProgramOutline& program) {
  std::string script = "# Completion of update-metadata for bash.\n";
  script += kBefore;
  std::vector<std::string> subcommands;
  for (const CommandOutline& subcommand : program.subcommands) {
    subcommands.push_back(subcommand.name.substr(program.program.name.size() + 1));
    writeCase(subcommand, subcommands.back(), {}, script);
  }
  writeCase(program.program, "''", subcommands, script);
  script += kBehind;
  return script;
}

}  // namespace update_metadata_tool::manual
