#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "command/Command.h"
#include "command/ExitCode.h"
#include "fmt/Layout.h"
#include "input/DocumentLimits.h"

namespace update_metadata_tool::fmt {

/// The subcommand `fmt`: reformats documents without changing what the library reads from them.
class FmtCommand : public command::Command {
 public:
  explicit FmtCommand(CLI::App& app);

  /// Handles the files one after the other, and continues after one that fails.
  ///
  /// A file is either replaced or left unchanged, and replaced only if its text changes. Standard
  /// input is written to `out` if the library loads it. With --check, the names of the files that
  /// would change are written to `out`, one per line, and nothing is replaced.
  ///
  /// For every file that fails, `err` receives the text of the exception, then the name of the file
  /// and what to do.
  command::ExitCode run(std::ostream& out, std::ostream& err) const override;

 private:
  enum class Outcome { kUnchanged, kChanged, kFailed };

  Outcome handle(const std::string& file, std::ostream& out, std::ostream& err) const;

  std::vector<std::string> files_;
  input::GivenLimits limits_;
  Layout layout_;
  bool checksOnly_ = false;
};

}  // namespace update_metadata_tool::fmt
