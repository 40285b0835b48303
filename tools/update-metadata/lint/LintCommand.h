#pragma once

#include <iosfwd>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "command/Command.h"
#include "command/ExitCode.h"
#include "input/DocumentLimits.h"
#include "lint/FileFixing.h"
#include "lint/ReportWriter.h"
#include "lint/SeveritySettings.h"

namespace update_metadata_tool::lint {

/// The subcommand `lint`: finds every problem in documents and says whether the library can load
/// them.
class LintCommand : public command::Command {
 public:
  explicit LintCommand(CLI::App& app);

  /// A file that cannot be read is reported on `err`: the first line is the exception's text,
  /// escaped for a terminal, the second one says which file it is about and what to do. The others
  /// are still checked.
  command::ExitCode run(std::ostream& out, std::ostream& err) const override;

 private:
  void checkArguments() const;
  bool isFixingInput() const;
  SeveritySettings makeSettings() const;
  std::unique_ptr<ReportWriter> makeWriter(std::ostream& out, std::ostream& err) const;

  /// `fixer` is null if the files are only checked.
  LintTotals lintFiles(const SeveritySettings& settings, FileFixer* fixer, ReportWriter& writer,
                       std::ostream& err) const;

  std::vector<std::string> files_;
  input::GivenLimits limits_;
  std::optional<std::string> productData_;
  std::string format_ = "text";
  std::vector<std::string> severities_;
  bool isStrict_ = false;
  bool isFixing_ = false;
  bool appliesSuggested_ = false;
  bool isDryRun_ = false;
  std::optional<std::string> explained_;
  bool listsRules_ = false;
};

}  // namespace update_metadata_tool::lint
