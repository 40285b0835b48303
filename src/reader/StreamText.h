#pragma once

#include <streambuf>
#include <string>

namespace install::update_metadata_parser {

/// Reads from a stream buffer to its end. Never seeks, never asks for a size: a file that grows, a
/// pipe and a device are read like any other.
///
/// Beyond a megabyte, the text has no room to spare and is copied once. While it is copied, up to
/// 64 MB more than its size are in use.
///
/// \throws what the buffer throws
std::string readToEnd(std::streambuf& buffer);

}  // namespace install::update_metadata_parser
