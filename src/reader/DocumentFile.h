#pragma once

#include <cstddef>
#include <limits>
#include <string>

namespace install::update_metadata_parser {

/// Reads the file at `path`, at most its first `atMost` bytes.
///
/// \throws std::runtime_error  "Update MetaData Json file does not exist ", with the final blank,
/// or
///                             "Error opening Update MetaData Json File"
/// \throws std::ios_base::failure  a read failed
std::string readDocument(const std::u16string& path,
                         std::size_t atMost = std::numeric_limits<std::size_t>::max());

}  // namespace install::update_metadata_parser
