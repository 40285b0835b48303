#include "manual/ManualPage.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <string_view>

#include "output/Text.h"

namespace update_metadata_tool::manual {
namespace {

constexpr std::string_view kExamples = "Example";
constexpr std::string_view kExitStatus = "Exit status: ";

// Text that the formatter shows literally: with hyphens that can be copied, and without a line that
// begins with a request of the formatter.
std::string escaped(std::string_view text) {
  std::string result;
  bool isAtStart = true;
  for (const char character : text) {
    if (isAtStart && (character == '.' || character == '\'')) {
      result += "\\&";
    }
    isAtStart = character == '\n';
    if (character == '-') {
      result += "\\-";
    } else if (character == '\\') {
      result += "\\e";
    } else {
      result += character;
    }
  }
  return result;
}

std::string bold(std::string_view text) {
  return "\\fB" + escaped(text) + "\\fR";
}

std::string italic(std::string_view text) {
  return "\\fI" + escaped(text) + "\\fR";
}

std::string toUpper(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(), [](char character) {
    return static_cast<char>(std::toupper(static_cast<unsigned char>(character)));
  });
  return text;
}

void writeSection(const std::string& heading, std::string& page) {
  page += ".SH " + heading + '\n';
}

void writeHead(const CommandOutline& command, const std::string& version, std::string& page) {
  page += ".TH " + toUpper(escaped(pageName(command))) + " 1 \"\" \"update\\-metadata " + version +
          "\" \"User Commands\"\n";
  writeSection("NAME", page);
  // The text by which pages are searched has no initial capital and no full stop.
  std::string purpose = command.description;
  if (!purpose.empty()) {
    purpose[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(purpose[0])));
    if (purpose.back() == '.') {
      purpose.pop_back();
    }
  }
  page += escaped(pageName(command)) + " \\- " + escaped(purpose) + '\n';
}

std::string synopsisOf(const OptionOutline& positional) {
  std::string text = italic(positional.names.front());
  if (positional.isRepeated) {
    text += "...";
  }
  return positional.isRequired ? text : '[' + text + ']';
}

void writeOption(const OptionOutline& option, bool isPositional, std::string& page) {
  page += ".TP\n";
  std::string names;
  for (const std::string& name : option.names) {
    names += (names.empty() ? "" : ", ") + (isPositional ? italic(name) : bold(name));
  }
  page += names;
  if (!isPositional && !option.argument.empty()) {
    page += ' ' + italic(option.argument);
  }
  page += '\n' + escaped(option.description) + '.';
  if (!option.choices.empty()) {
    page += "\nOne of";
    for (const std::string& choice : option.choices) {
      page += &choice == &option.choices.front() ? " " : ", ";
      page += bold(choice);
    }
    page += '.';
  }
  if (!option.initial.empty()) {
    page += "\nThe default is " + bold(option.initial) + '.';
  }
  page += '\n';
}

void writeOptions(const CommandOutline& command, std::string& page) {
  writeSection("OPTIONS", page);
  for (const OptionOutline& positional : command.positionals) {
    writeOption(positional, true, page);
  }
  for (const OptionOutline& option : command.options) {
    writeOption(option, false, page);
  }
}

// The lines of a paragraph without reformatting.
void writeUnfilled(std::string_view text, std::string& page) {
  page += ".nf\n" + escaped(text) + "\n.fi\n";
}

// A paragraph, which is not reformatted if it has indented lines.
void writeParagraph(std::string_view text, std::string& page) {
  page += ".PP\n";
  if (text.find("\n  ") != std::string_view::npos) {
    writeUnfilled(text, page);
  } else {
    page += escaped(text) + '\n';
  }
}

void writeRemarks(const CommandOutline& command, std::string& page) {
  for (const std::string& remark : command.remarks) {
    if (output::startsWith(remark, kExamples)) {
      writeSection("EXAMPLES", page);
      writeUnfilled(std::string_view(remark).substr(remark.find('\n') + 1), page);
    } else if (output::startsWith(remark, kExitStatus)) {
      writeSection("EXIT STATUS", page);
      page += escaped(std::string_view(remark).substr(kExitStatus.size())) + '\n';
    }
  }
}

std::string linkTo(const CommandOutline& command) {
  return bold(pageName(command)) + "(1)";
}

}  // namespace

std::string pageName(const CommandOutline& command) {
  std::string name = command.name;
  std::replace(name.begin(), name.end(), ' ', '-');
  return name;
}

std::string makeProgramPage(const ProgramOutline& program, const std::string& version) {
  std::string page;
  writeHead(program.program, version, page);
  writeSection("SYNOPSIS", page);
  page += bold(program.program.name) + ' ' + italic("SUBCOMMAND") + " [" + italic("OPTIONS") +
          "] " + italic("ARGUMENTS") + '\n';
  writeSection("DESCRIPTION", page);
  page += "Each subcommand has its own page.\n";
  for (const CommandOutline& subcommand : program.subcommands) {
    page += ".TP\n" + linkTo(subcommand) + '\n' + escaped(subcommand.description) + ".\n";
  }
  writeOptions(program.program, page);
  return page;
}

std::string makeCommandPage(const ProgramOutline& program, const CommandOutline& command,
                            const std::string& version) {
  std::string page;
  writeHead(command, version, page);
  writeSection("SYNOPSIS", page);
  page += bold(command.name) + " [" + italic("OPTIONS") + ']';
  for (const OptionOutline& positional : command.positionals) {
    page += ' ' + synopsisOf(positional);
  }
  page += '\n';
  writeSection("DESCRIPTION", page);
  page += escaped(command.description) + ".\n";
  for (const std::string& remark : command.remarks) {
    if (!output::startsWith(remark, kExamples) && !output::startsWith(remark, kExitStatus)) {
      writeParagraph(remark, page);
    }
  }
  writeOptions(command, page);
  writeRemarks(command, page);
  writeSection("SEE ALSO", page);
  std::string others = linkTo(program.program);
  for (const CommandOutline& other : program.subcommands) {
    if (other.name != command.name) {
      others += ",\n" + linkTo(other);
    }
  }
  page += others + '\n';
  return page;
}

}  // namespace update_metadata_tool::manual
