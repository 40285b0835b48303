#pragma once

#include <cstddef>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "command/Command.h"
#include "command/ExitCode.h"
#include "input/DocumentLimits.h"

namespace update_metadata_tool::list {

/// The subcommand `list`: prints a row for each place that names a package.
class ListCommand : public command::Command {
 public:
  explicit ListCommand(CLI::App& app);

  /// Rows are written while they are made, by several processes if that is wanted. A document that
  /// cannot be loaded has none and is reported on `err`; the others are still listed.
  command::ExitCode run(std::ostream& out, std::ostream& err) const override;

 private:
  std::vector<std::string> files_;
  input::GivenLimits limits_;
  std::optional<std::string> productData_;
  std::string format_ = "tsv";
  std::size_t processes_ = 1;
};

}  // namespace update_metadata_tool::list
