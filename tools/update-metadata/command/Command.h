#pragma once

#include <iosfwd>
#include <string>

#include "command/CommandLineFwd.h"
#include "command/ExitCode.h"

namespace update_metadata_tool::command {

/// One subcommand of the program: its options, and what it does with them.
///
/// A derived class adds its options to subcommand() when it is made. They write into the object
/// when the arguments are parsed, so it stays where it is until then.
class Command {
 public:
  virtual ~Command() = default;
  Command(const Command&) = delete;
  Command& operator=(const Command&) = delete;

  /// Tells whether the parsed arguments name this subcommand.
  bool isChosen() const;

  /// Does its work, with its results on `out`, which is flushed, and its complaints on `err`.
  ///
  /// \pre isChosen()
  ///
  /// What `out` throws passes through.
  virtual ExitCode run(std::ostream& out, std::ostream& err) const = 0;

  /// How the program ends if run() throws: the output could not be written, or the memory does not
  /// suffice.
  virtual ExitCode troubleCode() const { return ExitCode::kFailed; }

 protected:
  Command(CLI::App& app, const std::string& name, const std::string& description);

  CLI::App& subcommand() { return subcommand_; }

 private:
  CLI::App& subcommand_;
};

}  // namespace update_metadata_tool::command
