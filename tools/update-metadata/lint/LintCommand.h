#pragma once

#include <cstddef>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "command/Command.h"
#include "command/ExitCode.h"
#include "input/DocumentLimits.h"
#include "lint/FileLinting.h"
#include "lint/SeveritySettings.h"

namespace update_metadata_tool::lint {

/// The subcommand `lint`: finds every problem in documents and says whether the library can load
/// them.
class LintCommand : public command::Command {
 public:
  explicit LintCommand(CLI::App& app);

  command::ExitCode run(std::ostream& out, std::ostream& err) const override;

 private:
  void checkArguments() const;
  SeveritySettings makeSettings() const;
  LintOptions makeOptions() const;

  std::vector<std::string> files_;
  input::GivenLimits limits_;
  std::optional<std::string> productData_;
  std::string format_ = "text";
  std::vector<std::string> severities_;
  bool isStrict_ = false;
  std::size_t processes_ = 1;
  bool isFixing_ = false;
  bool appliesSuggested_ = false;
  bool isDryRun_ = false;
  std::optional<std::string> explained_;
  bool listsRules_ = false;
};

}  // namespace update_metadata_tool::lint
