#pragma once

#include <iosfwd>
#include <string>

#include "command/CommandLineFwd.h"
#include "command/ExitCode.h"

namespace update_metadata_tool::command {

/// One subcommand of the program: its options and its action.
///
/// A derived class adds its options to subcommand() in its constructor. Parsing the arguments
/// writes into the object, so it must not move before that.
class Command {
 public:
  virtual ~Command() = default;
  Command(const Command&) = delete;
  Command& operator=(const Command&) = delete;

  /// Returns whether the parsed arguments name this subcommand.
  bool isChosen() const;

  /// Runs the subcommand: writes results to `out`, which is flushed, and messages to `err`.
  ///
  /// \pre isChosen()
  ///
  /// Exceptions of `out` pass through.
  virtual ExitCode run(std::ostream& out, std::ostream& err) const = 0;

  /// The exit status if run() throws: output could not be written, or memory ran out.
  virtual ExitCode troubleCode() const { return ExitCode::kFailed; }

 protected:
  Command(CLI::App& app, const std::string& name, const std::string& description);

  CLI::App& subcommand() { return subcommand_; }

 private:
  CLI::App& subcommand_;
};

}  // namespace update_metadata_tool::command
