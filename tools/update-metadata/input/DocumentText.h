#pragma once

#include <string>

#include "terminal/ProgressLine.h"

namespace update_metadata_tool::input {

/// What stands for standard input in place of a file, and what messages call it.
constexpr const char* kStandardInput = "-";

/// Reads all bytes of a file, or of standard input.
///
/// A file is read as the library reads it, so that what is thrown is what the library throws. That
/// standard input cannot be read is a std::ios_base::failure which says so. If standard input is a
/// terminal, standard error is told that the document has to be typed. `progress` is told that it
/// goes on.
///
/// \pre `file` is UTF-8
std::string readDocument(const std::string& file,
                         terminal::ProgressLine& progress = terminal::noProgress());

}  // namespace update_metadata_tool::input
