#pragma once

#include <cstddef>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "command/CommandLineFwd.h"
#include "input/DocumentLimits.h"
#include "terminal/ProgressLine.h"

namespace update_metadata_tool::command {

/// The values of --format.
constexpr const char* kTextFormat = "text";
constexpr const char* kJsonFormat = "json";

/// The purpose of the product data in most subcommands.
constexpr const char* kForBaseCodes = "which gives the products' base codes";

/// Adds a required argument: a document, or - for standard input.
void addDocument(CLI::App& subcommand, const std::string& name, std::string& file,
                 const std::string& help = "The update metadata document (JSON)");

/// Adds the argument FILE, which may be repeated. checkStandardInput() rejects a second standard
/// input.
CLI::Option& addDocuments(CLI::App& subcommand, std::vector<std::string>& files);

/// Adds --product-data. `purpose` completes "Folder with the product data, ".
CLI::Option& addProductData(CLI::App& subcommand, std::optional<std::string>& location,
                            const std::string& purpose = kForBaseCodes);

/// Adds --limit-bytes.
void addLimitBytes(CLI::App& subcommand, input::GivenLimits& limits);

/// Adds --limit-bytes and --limit-packages, for subcommands that load documents.
void addLimits(CLI::App& subcommand, input::GivenLimits& limits);

/// Adds --format with the two values above.
void addFormat(CLI::App& subcommand, std::string& format);

/// Adds --jobs, the number of files to work on at a time. `verb` is what is done with them.
void addJobs(CLI::App& subcommand, std::size_t& processes, const std::string& verb);

/// Writes `results` to `out`, which is flushed, in the form that --format asks for: calls
/// writeJson(results..., out) or writeText(results..., out) of the namespace of `results`.
template <class... Results>
void writeResults(const std::string& format, terminal::ProgressLine& progress, std::ostream& out,
                  const Results&... results) {
  terminal::beginOutput(progress);
  if (format == kJsonFormat) {
    writeJson(results..., out);
  } else {
    writeText(results..., out);
  }
  out.flush();
  progress.clear();
}

/// Rejects a second standard input among `files`, because it can be read only once.
///
/// \param argument  the argument that the message names
///
/// \throws CLI::ValidationError  as for any usage error
void checkStandardInput(const std::string& argument, const std::vector<std::string>& files);

}  // namespace update_metadata_tool::command
