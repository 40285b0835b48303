// Writes the manual pages and the completion of the program into one folder, as they are installed,
// and the pages of the documentation that are made from the program into another: write-manual
// SHARE DOCS

#include <exception>
#include <filesystem>
#include <fstream>
#include <ios>
#include <iostream>
#include <sstream>
#include <string>

#include <CLI/CLI.hpp>

#include "command/Command.h"
#include "install/update_metadata_parser/Version.h"
#include "lint/RuleHelp.h"
#include "manual/Completion.h"
#include "manual/ManualPage.h"
#include "manual/Outline.h"
#include "program/Program.h"
#include "program/Subcommands.h"

namespace {

namespace fs = std::filesystem;
namespace tool = update_metadata_tool;

void write(const fs::path& path, const std::string& text) {
  fs::create_directories(path.parent_path());
  std::ofstream file;
  file.exceptions(std::ios_base::failbit | std::ios_base::badbit);
  file.open(path, std::ios_base::binary);
  file << text;
  file.close();
}

void writeAll(const tool::ProgramOutline& program, const fs::path& folder) {
  const std::string version = install::update_metadata_parser::version();
  const fs::path pages = folder / "man" / "man1";
  for (const tool::CommandOutline& subcommand : program.subcommands) {
    write(pages / (tool::pageName(subcommand) + ".1"),
          tool::makeCommandPage(program, subcommand, version));
  }
  write(folder / "bash-completion" / "completions" / "update-metadata",
        tool::makeBashCompletion(program));
  write(folder / "zsh" / "vendor-completions" / "_update-metadata",
        tool::makeZshCompletion(program));
  // Last, because the build takes this one for all of them.
  write(pages / (tool::pageName(program.program) + ".1"), tool::makeProgramPage(program, version));
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::cerr << "usage: write-manual SHARE DOCS\n";
    return 2;
  }
  try {
    std::ostringstream rules;
    tool::writeRulePage(rules);
    write(fs::path(argv[2]) / "lint-rules.md", rules.str());
    CLI::App app;
    tool::describeProgram(app);
    const auto commands = tool::addSubcommands(app);
    writeAll(tool::outlineOf(app), argv[1]);
    return 0;
  } catch (const std::exception& failure) {
    std::cerr << "write-manual: " << failure.what() << '\n';
    return 1;
  }
}
