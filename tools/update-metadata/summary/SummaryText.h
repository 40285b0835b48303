#pragma once

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <string>

#include "summary/Contents.h"

namespace update_metadata_tool {

/// "1 package", "2 packages".
std::string count(std::size_t number, const std::string& thing);

/// A size in as little room as possible, with the mark in front if it is doubtful.
std::string toMarkedSize(std::int64_t bytes);

/// Writes from which to which release the document leads, and for which architecture, in lines of
/// at most `width` columns.
void writeReleases(const Contents& contents, std::size_t width, std::ostream& out);

/// Writes a line that begins with blanks or none. What has no room in `width` columns goes on in
/// further lines, which are indented by four blanks more.
void writeLine(const std::string& line, std::size_t width, std::ostream& out);

/// Writes an empty line and a note, in lines of at most `width` columns.
void writeNote(const std::string& note, std::size_t width, std::ostream& out);

}  // namespace update_metadata_tool
