#pragma once

#include <cstdint>
#include <string>

#include "input/DocumentLimits.h"
#include "terminal/ProgressLine.h"

namespace update_metadata_tool::input {

/// The argument that names standard input instead of a file. Messages use it as well.
constexpr const char* kStandardInput = "-";

/// Throws the library's exception for a document with more bytes than `limit`, if `text` has more.
void checkLength(const std::string& text, std::uint64_t limit);

/// Reads all bytes of a file, or of standard input; no more than one byte beyond `limit`.
///
/// A file is read by the library, whose exceptions pass through, and so does that of checkLength().
/// Throws std::ios_base::failure if standard input cannot be read. If standard input is a terminal,
/// prompts for the document on standard error. Updates `progress`.
///
/// \pre `file` is UTF-8
std::string readDocument(const std::string& file, std::uint64_t limit = kUnlimited,
                         terminal::ProgressLine& progress = terminal::noProgress());

}  // namespace update_metadata_tool::input
