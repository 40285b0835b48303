#pragma once

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "command/Command.h"
#include "command/ExitCode.h"
#include "input/DocumentLimits.h"
#include "plan/Plan.h"
#include "summary/Contents.h"
#include "terminal/ProgressLine.h"

namespace update_metadata_tool::plan {

/// The subcommand `plan`: lists what an installer would do for some products or for all, and
/// searches an installation for the files to delete.
class PlanCommand : public command::Command {
 public:
  explicit PlanCommand(CLI::App& app);

  /// Completes the plan before writing any of it. Failures of the document are reported as by
  /// loadAndQuery(). A file that is outside the installation, or that could not be searched for,
  /// is a failure, but the plan is written.
  command::ExitCode run(std::ostream& out, std::ostream& err) const override;

 private:
  struct PlannedDocument {
    summary::Contents contents;
    Plan plan;
  };

  std::optional<PlannedDocument> makePlannedDocument(std::ostream& err,
                                                     terminal::ProgressLine& progress) const;

  std::string file_;
  input::GivenLimits limits_;
  std::optional<std::string> productData_;  ///< required
  std::vector<std::string> baseCodes_;
  std::optional<std::string> installed_;
  std::string format_ = "text";
};

}  // namespace update_metadata_tool::plan
