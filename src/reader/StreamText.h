#pragma once

#include <streambuf>
#include <string>

namespace install::update_metadata_parser {

/// Reads from a stream buffer to its end. Never seeks and never requests a size: a growing file, a
/// pipe and a device are read like any other.
///
/// Beyond a megabyte, the text has no spare capacity and is copied once. During the copy, up to 64
/// MB more than its size are in use.
///
/// \throws what the buffer throws
std::string readToEnd(std::streambuf& buffer);

}  // namespace install::update_metadata_parser
