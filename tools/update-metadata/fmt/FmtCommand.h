#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "command/Command.h"
#include "command/ExitCode.h"
#include "fmt/Layout.h"

namespace update_metadata_tool::fmt {

/// The subcommand `fmt`: gives documents one form, in which the library reads the same from them.
class FmtCommand : public command::Command {
 public:
  explicit FmtCommand(CLI::App& app);

  /// Takes the files one after the other; what is wrong with one does not keep it from the others.
  ///
  /// A file is replaced or left as it is, and replaced only if its form changes. Standard input
  /// goes to `out` if the library loads it. With --check, `out` gets the names of the files that
  /// would change, one a line, and nothing is replaced.
  ///
  /// For every file that fails, `err` gets the text of the exception, then which file it is and
  /// what to do.
  command::ExitCode run(std::ostream& out, std::ostream& err) const override;

 private:
  enum class Outcome { kUnchanged, kChanged, kFailed };

  Outcome handle(const std::string& file, std::ostream& out, std::ostream& err) const;

  std::vector<std::string> files_;
  Layout layout_;
  bool checksOnly_ = false;
};

}  // namespace update_metadata_tool::fmt
