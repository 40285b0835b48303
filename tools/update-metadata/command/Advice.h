#pragma once

#include <exception>
#include <iosfwd>
#include <string>

namespace update_metadata_tool::source {
class SourceTree;
}  // namespace update_metadata_tool::source

namespace update_metadata_tool::command {

/// That lint shows `what`, "where" or "more": "'update-metadata lint update.json' shows where".
std::string pointToLint(const std::u16string& file, const char* what);

/// What to do about a document that could not be loaded.
///
/// The library's texts say what went wrong and are fixed; this adds what usually helps, by the text
/// and by the kind of `failure`. Where the document is at fault, it says which section is missing,
/// if one is, and that `lint` shows the place. Never empty, without a line feed and without a final
/// full stop. Escaped for a terminal.
///
/// \param file  as the user named it; read again to find a missing section
/// \param tree  the document, if it is at hand: the file is not read then
std::string adviseOnLoading(const std::exception& failure, const std::u16string& file,
                            const source::SourceTree* tree = nullptr);

/// Writes why a document could not be loaded, and what to do.
///
/// The first line is the text of `failure`, with escapes for what a terminal must not be sent; the
/// second line says which file it is about and gives the advice.
void reportUnloaded(const std::exception& failure, const std::u16string& file, std::ostream& err);

/// Writes why a loaded document could not be answered, and what to do, in the same form.
///
/// \param productData  what the user named as the product data; empty if nothing
void reportUnanswered(const std::exception& failure, const std::u16string& file,
                      const std::u16string& productData, std::ostream& err);

}  // namespace update_metadata_tool::command
