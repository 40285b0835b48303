#include "schema/SchemaCommand.h"

#include <ostream>

#include <CLI/CLI.hpp>

#include "schema/SchemaText.h"

namespace update_metadata_tool::schema {
namespace {

constexpr const char* kExamples = R"(Example:
  update-metadata schema > update-metadata.schema.json

An editor that supports JSON Schema then helps with a document that begins like this:
  {"$schema": "./update-metadata.schema.json", "metadata": {

A schema cannot detect everything that keeps a document from loading, such as a repeated key or a
final line feed.

Exit status: 0 written, 1 the output could not be written, 2 usage error.)";

}  // namespace

SchemaCommand::SchemaCommand(CLI::App& app)
    : command::Command(app, "schema", "Print the JSON Schema (draft 2020-12) of a document") {
  subcommand().footer(kExamples);
}

command::ExitCode SchemaCommand::run(std::ostream& out, std::ostream& /*err*/) const {
  out << kSchemaText;
  out.flush();
  return command::ExitCode::kDone;
}

}  // namespace update_metadata_tool::schema
