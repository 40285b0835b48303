#include "program/Run.h"

#include <cerrno>
#include <exception>
#include <ios>
#include <iostream>
#include <new>
#include <system_error>

#include <CLI/CLI.hpp>

#include "command/Command.h"
#include "command/ExitCode.h"
#include "output/Text.h"
#include "program/Program.h"
#include "program/Subcommands.h"

namespace update_metadata_tool::program {
namespace {

using command::ExitCode;

void reportUnwrittenOutput(int error) {
  std::cerr << "update-metadata: standard output could not be written";
  if (error != 0) {
    std::cerr << ": " << std::generic_category().message(error);
  }
  std::cerr << "; the output is incomplete\n";
}

// Runs `action`. If it throws, reports the exception on standard error and returns `troubleCode`.
template <class Action>
ExitCode runGuarded(const Action& action, ExitCode troubleCode) {
  try {
    errno = 0;
    return action();
  } catch (const std::ios_base::failure&) {
    // Only standard output throws this; the last system call was its write.
    const int error = errno;
    // Standard error flushes standard output first, which would throw again.
    std::cout.exceptions(std::ios_base::goodbit);
    reportUnwrittenOutput(error);
  } catch (const std::bad_alloc&) {
    std::cerr << "update-metadata: not enough memory\n";
  } catch (const std::exception& failure) {
    std::cerr << "update-metadata: " << output::toVisible(failure.what()) << '\n';
  }
  return troubleCode;
}

ExitCode runCommand(int argc, const char* const* argv) {
  CLI::App app;
  describeProgram(app);
  const auto commands = addSubcommands(app);
  const command::Command* chosen = nullptr;
  try {
    app.parse(argc, argv);
    for (const auto& command : commands) {
      if (command->isChosen()) {
        chosen = command.get();
      }
    }
    // Not left to the parser, which would report this instead of a misspelled subcommand.
    if (chosen == nullptr) {
      throw CLI::RequiredError("A subcommand");
    }
  } catch (const CLI::ParseError& end) {
    // --help and --version end here too, with status 0.
    const int code = app.exit(end, std::cout, std::cerr);
    std::cout.flush();
    return code == 0 ? ExitCode::kDone : ExitCode::kTrouble;
  }
  return runGuarded([chosen] { return chosen->run(std::cout, std::cerr); }, chosen->troubleCode());
}

}  // namespace

int run(int argc, const char* const* argv) {
  // Guards also what happens before a subcommand is known, such as printing the help.
  return static_cast<int>(
      runGuarded([argc, argv] { return runCommand(argc, argv); }, ExitCode::kFailed));
}

}  // namespace update_metadata_tool::program
