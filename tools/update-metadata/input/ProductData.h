#pragma once

#include <iosfwd>
#include <optional>
#include <string>

namespace update_metadata_tool::input {

/// The table in a folder with product data.
constexpr const char* kProductTable = "products.tsv";

/// Writes a note if the user names product data that are not there, neither a table nor a folder
/// with one, or that the system hides. The library takes these for a catalogue without products.
///
/// Returns whether it has written one.
///
/// \param location  what the user names; nothing is written without it
bool noteMissingProductData(const std::optional<std::string>& location, std::ostream& err);

}  // namespace update_metadata_tool::input
