#pragma once

#include <iosfwd>
#include <optional>
#include <string>

#include "summary/Contents.h"

namespace update_metadata_tool::summary {

/// Writes a note if the product data know none of the products of a document that has some.
///
/// \param location  the product data, as the user names them; nothing is written without them
/// \param file      the document, as the user names it
/// \param contents  what it says, read with these product data
void noteUnknownProducts(const std::optional<std::string>& location, const std::string& file,
                         const Contents& contents, std::ostream& err);

}  // namespace update_metadata_tool::summary
