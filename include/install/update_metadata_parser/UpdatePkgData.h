// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <string>

#include "install/update_metadata_parser/Export.h"

namespace install::update_metadata_parser {

/// One package to extract, as the reader passes it to the handler.
struct UPDATE_METADATA_PARSER_EXPORT UpdatePkgData {
  std::u16string name;                 ///< package name, UTF-16
  std::int64_t size = 0;               ///< bytes to fetch; negative values are kept
  std::int64_t uncompressedBytes = 0;  ///< bytes after unpacking; negative values are kept
};

}  // namespace install::update_metadata_parser
