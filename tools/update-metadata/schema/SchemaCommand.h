#pragma once

#include <iosfwd>

#include "command/Command.h"
#include "command/ExitCode.h"

namespace update_metadata_tool::schema {

/// The subcommand `schema`: prints the JSON Schema of a document, for editors and validators.
class SchemaCommand : public command::Command {
 public:
  explicit SchemaCommand(CLI::App& app);

  command::ExitCode run(std::ostream& out, std::ostream& err) const override;
};

}  // namespace update_metadata_tool::schema
