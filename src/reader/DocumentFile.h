#pragma once

#include <cstddef>
#include <limits>
#include <streambuf>
#include <string>

namespace install::update_metadata_parser {

/// Reads from a stream buffer to its end, at most `atMost` bytes. Never seeks and never requests a
/// size: a growing file, a pipe and a device are read like any other.
///
/// The string of a short text has room for 1 or 16 MB, and the unused part of it was never touched.
/// A text of more than 16 MB is copied once and has no room to spare; for a moment, it takes twice
/// its size of the address space and up to 32 MB more than its size of the memory.
///
/// \throws what the buffer throws
/// \throws std::bad_alloc  also for more bytes than a string can have
std::string readText(std::streambuf& buffer,
                     std::size_t atMost = std::numeric_limits<std::size_t>::max());

/// Reads the file at `path`, at most its first `atMost` bytes.
///
/// \throws std::runtime_error      "Update MetaData Json file does not exist ", with the final
///                                 blank, or "Error opening Update MetaData Json File"
/// \throws std::ios_base::failure  a read failed
std::string readDocument(const std::u16string& path,
                         std::size_t atMost = std::numeric_limits<std::size_t>::max());

}  // namespace install::update_metadata_parser
