#include "command/SharedOptions.h"

#include <algorithm>
#include <cstdint>

#include <CLI/CLI.hpp>

#include "command/Arguments.h"
#include "command/Jobs.h"
#include "input/DocumentText.h"
#include "install/update_metadata_parser/Limits.h"

namespace update_metadata_tool::command {
namespace {

using install::update_metadata_parser::Limits;

constexpr const char* kOrStandardInput = "; - is standard input";

// Adds --`name`, a limit on what `rejected` completes, with the default for standard input.
void addLimit(CLI::App& subcommand, const std::string& name, std::optional<std::uint64_t>& limit,
              const std::string& rejected, std::uint64_t forStandardInput) {
  subcommand
      .add_option("--" + name, limit,
                  "Reject a document with more than N " + rejected +
                      "; for standard input, the default is " + std::to_string(forStandardInput))
      ->type_name("N")
      ->check(isCountArgument());
}

}  // namespace

void addDocument(CLI::App& subcommand, const std::string& name, std::string& file,
                 const std::string& help) {
  subcommand.add_option(name, file, help + kOrStandardInput)
      ->required()
      ->type_name("")
      ->check(isUtf8Argument());
}

CLI::Option& addDocuments(CLI::App& subcommand, std::vector<std::string>& files) {
  return *subcommand
              .add_option("FILE", files,
                          std::string("The update metadata documents (JSON)") + kOrStandardInput)
              ->type_name("")
              ->check(isUtf8Argument());
}

CLI::Option& addProductData(CLI::App& subcommand, std::optional<std::string>& location,
                            const std::string& purpose) {
  return *subcommand
              .add_option("--product-data", location, "Folder with the product data, " + purpose)
              ->type_name("DIR")
              ->check(isUtf8Argument());
}

void addLimitBytes(CLI::App& subcommand, input::GivenLimits& limits) {
  addLimit(subcommand, "limit-bytes", limits.bytes, "bytes", Limits().bytes);
}

void addLimits(CLI::App& subcommand, input::GivenLimits& limits) {
  addLimitBytes(subcommand, limits);
  addLimit(subcommand, "limit-packages", limits.packages,
           "packages, counted for each product that names them, or files to delete",
           Limits().packages);
}

void addFormat(CLI::App& subcommand, std::string& format) {
  subcommand.add_option("--format", format, "Write 'text' for people or 'json' for programs")
      ->type_name("FORMAT")
      ->check(CLI::IsMember({kTextFormat, kJsonFormat}))
      ->capture_default_str();
}

void addJobs(CLI::App& subcommand, std::size_t& processes, const std::string& verb) {
  subcommand
      .add_option(
          "--jobs", processes,
          verb + " N files at a time, in separate processes; on Windows, one after the other")
      ->type_name("N")
      ->check(CLI::Range(std::size_t{1}, kMostProcesses));
}

void checkStandardInput(const std::string& argument, const std::vector<std::string>& files) {
  if (std::count(files.begin(), files.end(), input::kStandardInput) > 1) {
    throw CLI::ValidationError(argument, "standard input (-) can be read only once");
  }
}

}  // namespace update_metadata_tool::command
