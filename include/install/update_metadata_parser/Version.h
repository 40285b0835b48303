// SPDX-License-Identifier: MIT

#pragma once

#include "install/update_metadata_parser/Export.h"

/// The semantic version of these headers. It is defined only here: the build, the packages and
/// version() read it from here.
#define UPDATE_METADATA_PARSER_VERSION_MAJOR 1
#define UPDATE_METADATA_PARSER_VERSION_MINOR 0
#define UPDATE_METADATA_PARSER_VERSION_PATCH 0

namespace install::update_metadata_parser {

/// Returns the version of the library that the process runs with, as "major.minor.patch".
///
/// It can be newer than the macros above, which are the version that the caller was compiled with.
/// The text is static. Throws nothing.
UPDATE_METADATA_PARSER_EXPORT const char* version() noexcept;

}  // namespace install::update_metadata_parser
