// SPDX-License-Identifier: MIT

#pragma once

#include "install/update_metadata_parser/Export.h"

/// The semantic version of these headers. Nothing else states it: the build, the packages and
/// version() read it from here.
#define UPDATE_METADATA_PARSER_VERSION_MAJOR 1
#define UPDATE_METADATA_PARSER_VERSION_MINOR 0
#define UPDATE_METADATA_PARSER_VERSION_PATCH 0

namespace install::update_metadata_parser {

/// Tells the version of the library that the process runs with, as "major.minor.patch".
///
/// It can be newer than the macros above, which say what the caller was compiled against. The text
/// is static. Throws nothing.
UPDATE_METADATA_PARSER_EXPORT const char* version() noexcept;

}  // namespace install::update_metadata_parser
