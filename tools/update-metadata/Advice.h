#pragma once

#include <exception>
#include <iosfwd>
#include <string>

namespace update_metadata_tool {

/// Tells what to do about a document that could not be loaded.
///
/// The library's texts say what went wrong and are fixed; this adds what usually helps, by the text
/// and by the kind of `failure`. Never empty, without a line feed and without a final full stop.
std::string adviseOnLoading(const std::exception& failure);

/// Writes why a document could not be loaded, and what to do.
///
/// The first line is the text of `failure` as it stands, the second line says which file it is
/// about and gives the advice.
void reportUnloaded(const std::exception& failure, const std::u16string& file, std::ostream& err);

/// Writes why a loaded document could not be answered, and what to do, in the same form.
///
/// \param productData  what the user named as the product data; empty if nothing
void reportUnanswered(const std::exception& failure, const std::u16string& file,
                      const std::u16string& productData, std::ostream& err);

}  // namespace update_metadata_tool
