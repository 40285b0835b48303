#pragma once

#include <string>

#include "terminal/ProgressLine.h"

namespace update_metadata_tool::input {

/// The argument that names standard input instead of a file. Messages use it as well.
constexpr const char* kStandardInput = "-";

/// Reads all bytes of a file, or of standard input.
///
/// A file is read by the library, whose exceptions pass through. Throws std::ios_base::failure if
/// standard input cannot be read. If standard input is a terminal, prompts for the document on
/// standard error. Updates `progress`.
///
/// \pre `file` is UTF-8
std::string readDocument(const std::string& file,
                         terminal::ProgressLine& progress = terminal::noProgress());

}  // namespace update_metadata_tool::input
