#pragma once

#include <iosfwd>
#include <optional>
#include <string>

#include "command/Command.h"
#include "command/ExitCode.h"
#include "input/DocumentLimits.h"
#include "terminal/ProgressLine.h"

namespace update_metadata_tool::report {

/// The subcommand `report`: writes an HTML report on one document.
class ReportCommand : public command::Command {
 public:
  explicit ReportCommand(CLI::App& app);

  /// Completes the page before writing any of it; a file appears whole or not at all. Never
  /// replaces the document or the product data.
  command::ExitCode run(std::ostream& out, std::ostream& err) const override;

 private:
  const char* findReplacedInput() const;
  std::optional<std::string> makeReport(std::ostream& err, terminal::ProgressLine& progress) const;

  std::string file_;
  input::GivenLimits limits_;
  std::string output_;
  std::optional<std::string> productData_;
};

}  // namespace update_metadata_tool::report
