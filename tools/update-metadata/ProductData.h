#pragma once

#include <iosfwd>
#include <optional>
#include <string>

namespace update_metadata_tool {

/// The table in a folder with product data.
constexpr const char* kProductTable = "products.tsv";

/// Writes a note if the user names product data that are not there: neither a table nor a folder
/// with one. The library takes these for a catalogue without products.
///
/// \param location  what the user names; nothing is written without it
void noteMissingProductData(const std::optional<std::string>& location, std::ostream& err);

}  // namespace update_metadata_tool
