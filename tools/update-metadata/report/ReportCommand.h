#pragma once

#include <iosfwd>
#include <optional>
#include <string>

#include "Command.h"
#include "ExitCode.h"
#include "ProgressLine.h"

namespace update_metadata_tool {

/// The subcommand `report`: writes a page about one document, to look at in a browser.
class ReportCommand : public Command {
 public:
  explicit ReportCommand(CLI::App& app);

  /// The page is complete before anything of it is written; a file appears whole or not at all.
  /// What the page is made from is not replaced by it.
  ExitCode run(std::ostream& out, std::ostream& err) const override;

 private:
  const char* findReplacedInput() const;
  std::optional<std::string> makeReport(std::ostream& err, ProgressLine& progress) const;

  std::string file_;
  std::string output_;
  std::optional<std::string> productData_;
};

}  // namespace update_metadata_tool
