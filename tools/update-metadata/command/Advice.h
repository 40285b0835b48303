#pragma once

#include <exception>
#include <functional>
#include <iosfwd>
#include <optional>
#include <string>

#include "terminal/ProgressLine.h"

namespace install::update_metadata_parser::diagnosis::source {
class SourceTree;
}  // namespace install::update_metadata_parser::diagnosis::source

namespace update_metadata_tool::command {

/// Points to lint for `what`, "where" or "more": "'update-metadata lint update.json' shows where".
std::string pointToLint(const std::u16string& file, const char* what);

/// What to do about a document that could not be loaded.
///
/// The library's fixed texts say what went wrong; this adds what usually helps, chosen by the text
/// and type of `failure`. If the document is at fault, the advice names the missing section, if
/// any, and points to lint. Never empty, without a line feed or a final period. Escaped for a
/// terminal.
///
/// \param file  as the user named it; read again to find a missing section
/// \param tree  the document, if available; the file is not read then
std::string adviseOnLoading(
    const std::exception& failure, const std::u16string& file,
    const install::update_metadata_parser::diagnosis::source::SourceTree* tree = nullptr);

/// Writes why a document could not be loaded, and what to do about it.
///
/// The first line is the text of `failure`, escaped for a terminal; the second line names the file
/// and gives the advice.
void reportUnloaded(const std::exception& failure, const std::u16string& file, std::ostream& err);

/// Calls `load`, which loads a document, and `query`, which uses it. If either throws, removes
/// `progress`, writes a message as above and returns false.
///
/// \param productData  the product data as the user named them, if any
bool loadAndQuery(const std::u16string& file, const std::optional<std::u16string>& productData,
                  const std::function<void()>& load, const std::function<void()>& query,
                  std::ostream& err, terminal::ProgressLine& progress = terminal::noProgress());

}  // namespace update_metadata_tool::command
