#pragma once

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>

#include "summary/Contents.h"
#include "terminal/FlowingLine.h"

namespace update_metadata_tool::summary {

/// A product's name, with its base code in parentheses if there is one.
std::string describeProduct(const std::u16string& name,
                            const std::optional<std::u16string>& baseCode);

/// A short size, marked if it is doubtful.
std::string toMarkedSize(std::int64_t bytes);

/// Writes the base release, the target release and its update level, in lines of at most `width`
/// columns.
void writeReleases(const Release& base, const Release& target, int updateLevel, std::size_t width,
                   std::ostream& out);

/// The same for a document, with its architecture.
void writeReleases(const Contents& contents, std::size_t width, std::ostream& out);

/// Begins a line of at most `width` columns with `words`, which may begin with blanks. Further
/// lines are indented by four more columns.
terminal::FlowingLine beginLine(const std::string& words, std::size_t width);

/// Begins a note in lines of at most `width` columns.
terminal::FlowingLine beginNote(const std::string& words, std::size_t width);

/// Writes such a line if it contains no names.
void writeLine(const std::string& words, std::size_t width, std::ostream& out);

/// Writes an empty line and such a note if it contains no names.
void writeNote(const std::string& words, std::size_t width, std::ostream& out);

}  // namespace update_metadata_tool::summary
