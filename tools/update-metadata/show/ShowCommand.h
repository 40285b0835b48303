#pragma once

#include <cstddef>
#include <iosfwd>
#include <optional>
#include <string>

#include "command/Command.h"
#include "command/ExitCode.h"
#include "input/DocumentLimits.h"

namespace update_metadata_tool::show {

/// The subcommand `show`: summarizes one document, with totals.
class ShowCommand : public command::Command {
 public:
  explicit ShowCommand(CLI::App& app);

  /// Completes the summary before writing any of it. Failures are reported as by readContents().
  command::ExitCode run(std::ostream& out, std::ostream& err) const override;

 private:
  std::string file_;
  input::GivenLimits limits_;
  std::optional<std::string> productData_;
  std::string sort_ = "size";
  std::size_t top_ = 5;
  std::string format_ = "text";
};

}  // namespace update_metadata_tool::show
