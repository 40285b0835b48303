#pragma once

#include <cstddef>
#include <initializer_list>
#include <iosfwd>
#include <optional>
#include <string>

#include "diagnosis/ProductTable.h"
#include "summary/Contents.h"

namespace update_metadata_tool::summary {

using install::update_metadata_parser::diagnosis::kProductTable;

/// A document as the user named it, and its contents.
struct NamedContents {
  const std::string& file;
  const Contents& contents;
};

/// Writes a note if the product data that the user named cannot be accessed, or are neither a table
/// nor a folder with one. The library treats them as a catalogue without products.
///
/// \param location  the product data, as the user named them; no note without them
///
/// \return whether a note was written
bool noteMissingProductData(const std::optional<std::string>& location, std::ostream& err);

/// Writes a note on a document whose products are all missing from the product data.
///
/// \param products  how many; no note on a document without products
void noteUnknownProducts(const std::string& location, const std::string& file, std::size_t products,
                         std::ostream& err);

/// Writes the first note or, if it is not needed, one on each document whose products are all
/// missing from the product data.
void noteProductData(const std::optional<std::string>& location,
                     std::initializer_list<NamedContents> documents, std::ostream& err);

}  // namespace update_metadata_tool::summary
