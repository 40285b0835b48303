#pragma once

#include <cstddef>
#include <limits>
#include <streambuf>
#include <string>

namespace install::update_metadata_parser {

/// Reads from a stream buffer to its end, at most `atMost` bytes. Never seeks and never requests a
/// size: a growing file, a pipe and a device are read like any other.
///
/// The text has a capacity of 1 or 16 MB, most of it never touched, or none to spare above that. A
/// longer text is copied once; up to 32 MB more than its size are then in use for a moment.
///
/// \throws what the buffer throws
std::string readText(std::streambuf& buffer,
                     std::size_t atMost = std::numeric_limits<std::size_t>::max());

}  // namespace install::update_metadata_parser
