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

/// A size in as little room as possible, with the mark in front if it is doubtful.
std::string toMarkedSize(std::int64_t bytes);

/// Writes from which to which release an update leads, in lines of at most `width` columns.
void writeReleases(const Release& base, const Release& target, int updateLevel, std::size_t width,
                   std::ostream& out);

/// Writes from which to which release the document leads, and for which architecture, in lines of
/// at most `width` columns.
void writeReleases(const Contents& contents, std::size_t width, std::ostream& out);

/// A line of at most `width` columns whose words begin with blanks or none. Further lines are
/// indented by four blanks more.
terminal::FlowingLine beginLine(const std::string& words, std::size_t width);

/// A note in lines of at most `width` columns.
terminal::FlowingLine beginNote(const std::string& words, std::size_t width);

/// Writes a line as above that holds no names.
void writeLine(const std::string& words, std::size_t width, std::ostream& out);

/// Writes an empty line and a note as above that holds no names.
void writeNote(const std::string& words, std::size_t width, std::ostream& out);

}  // namespace update_metadata_tool::summary
