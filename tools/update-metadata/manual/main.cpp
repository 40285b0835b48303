// write-manual SHARE DOCS: writes the manual pages and completions of the program to SHARE, in the
// layout of an installation, and the pages of the documentation that are generated from the program
// to DOCS.

#include <exception>
#include <filesystem>
#include <fstream>
#include <ios>
#include <iostream>
#include <sstream>
#include <string>

#include "install/update_metadata_parser/Version.h"
#include "lint/RuleHelp.h"
#include "manual/Completion.h"
#include "manual/ManualPage.h"
#include "manual/Outline.h"

namespace {

namespace fs = std::filesystem;
namespace manual = update_metadata_tool::manual;
namespace tool = update_metadata_tool;

void write(const fs::path& path, const std::string& text) {
  fs::create_directories(path.parent_path());
  std::ofstream file;
  file.exceptions(std::ios_base::failbit | std::ios_base::badbit);
  file.open(path, std::ios_base::binary);
  file << text;
  file.close();
}

void writeAll(const manual::ProgramOutline& program, const fs::path& folder) {
  const std::string version = install::update_metadata_parser::version();
  const fs::path pages = folder / "man" / "man1";
  for (const manual::CommandOutline& subcommand : program.subcommands) {
    write(pages / (manual::pageName(subcommand) + ".1"),
          manual::makeCommandPage(program, subcommand, version));
  }
  write(folder / "bash-completion" / "completions" / "update-metadata",
        manual::makeBashCompletion(program));
  write(folder / "zsh" / "vendor-completions" / "_update-metadata",
        manual::makeZshCompletion(program));
  // Last, because the build treats this page as the output for all of them.
  write(pages / (manual::pageName(program.program) + ".1"),
        manual::makeProgramPage(program, version));
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::cerr << "usage: write-manual SHARE DOCS\n";
    return 2;
  }
  try {
    std::ostringstream rules;
    tool::lint::writeRulePage(rules);
    write(fs::path(argv[2]) / "lint-rules.md", rules.str());
    writeAll(manual::outlineOfProgram(), argv[1]);
    return 0;
  } catch (const std::exception& failure) {
    std::cerr << "write-manual: " << failure.what() << '\n';
    return 1;
  }
}
