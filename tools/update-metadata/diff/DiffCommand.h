#pragma once

#include <iosfwd>
#include <optional>
#include <string>

#include "command/Command.h"
#include "command/ExitCode.h"

namespace update_metadata_tool::diff {

/// The subcommand `diff`: tells in what two documents differ.
class DiffCommand : public command::Command {
 public:
  explicit DiffCommand(CLI::App& app);

  /// Nothing is written on `out` before everything is known. A document that cannot be loaded is
  /// told of on `err` as by readContents(); the other one is looked at, too.
  command::ExitCode run(std::ostream& out, std::ostream& err) const override;

  /// Not the code of documents that differ.
  command::ExitCode troubleCode() const override { return command::ExitCode::kTrouble; }

 private:
  std::string old_;
  std::string new_;
  std::optional<std::string> productData_;
  std::optional<std::string> limit_;
  std::string format_ = "text";
};

}  // namespace update_metadata_tool::diff
