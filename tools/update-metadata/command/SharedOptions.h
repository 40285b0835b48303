#pragma once

#include <optional>
#include <string>
#include <vector>

#include "command/CommandLineFwd.h"

namespace update_metadata_tool::command {

/// What --format takes.
constexpr const char* kTextFormat = "text";
constexpr const char* kJsonFormat = "json";

/// What the product data are for in most subcommands.
constexpr const char* kForBaseCodes = "from which the base codes of the products come";

/// Adds an argument that has to be given: a document, or - for standard input.
void addDocument(CLI::App& subcommand, const std::string& name, std::string& file,
                 const std::string& help = "The update metadata document (JSON)");

/// Adds the argument FILE, which may be given several times; that standard input is named once is
/// for checkStandardInput() to see to.
CLI::Option& addDocuments(CLI::App& subcommand, std::vector<std::string>& files);

/// Adds --product-data. `purpose` goes on behind "Folder with the product data, ".
CLI::Option& addProductData(CLI::App& subcommand, std::optional<std::string>& location,
                            const std::string& purpose = kForBaseCodes);

/// Adds --format, which takes the two formats above.
void addFormat(CLI::App& subcommand, std::string& format);

/// Refuses files of which two are standard input, which can be read only once.
///
/// \param argument  what the user is told of
///
/// \throws CLI::ValidationError  as a wrong usage does
void checkStandardInput(const std::string& argument, const std::vector<std::string>& files);

}  // namespace update_metadata_tool::command
