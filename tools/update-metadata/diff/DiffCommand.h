#pragma once

#include <iosfwd>
#include <optional>
#include <string>

#include "command/Command.h"
#include "command/ExitCode.h"
#include "input/DocumentLimits.h"

namespace update_metadata_tool::diff {

/// The subcommand `diff`: shows the differences between two documents.
class DiffCommand : public command::Command {
 public:
  explicit DiffCommand(CLI::App& app);

  /// Completes the comparison before writing any of it. Documents that cannot be loaded are
  /// reported as by readContents(), both of them if necessary.
  command::ExitCode run(std::ostream& out, std::ostream& err) const override;

  /// Differs from the status for documents that differ.
  command::ExitCode troubleCode() const override { return command::ExitCode::kTrouble; }

 private:
  std::string old_;
  std::string new_;
  std::optional<std::string> productData_;
  std::optional<std::string> growthLimit_;
  input::GivenLimits limits_;
  std::string format_ = "text";
};

}  // namespace update_metadata_tool::diff
