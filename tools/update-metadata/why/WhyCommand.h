#pragma once

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "command/Command.h"
#include "command/ExitCode.h"
#include "input/DocumentLimits.h"
#include "why/Search.h"

namespace update_metadata_tool::why {

/// The subcommand `why`: shows where documents name a package or a file to delete, and which
/// answers contain it.
class WhyCommand : public command::Command {
 public:
  explicit WhyCommand(CLI::App& app);

  /// Documents are answered one by one, in their order. One that cannot be loaded is reported on
  /// `err`; the others are still answered.
  command::ExitCode run(std::ostream& out, std::ostream& err) const override;

 private:
  /// What the documents said.
  struct Totals {
    bool isNamed = false;
    bool isProductKnown = false;
    bool hasFailed = false;
    bool areDataMissing = false;
  };

  template <class Write>
  Totals searchAll(const Write& write, std::ostream& err) const;

  Question question_;
  std::vector<std::string> files_;
  input::GivenLimits limits_;
  std::optional<std::string> productData_;
  std::string format_ = "text";
};

}  // namespace update_metadata_tool::why
