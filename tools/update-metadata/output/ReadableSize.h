#pragma once

#include <cstdint>
#include <string>

namespace update_metadata_tool::output {

/// Formats a number of bytes for people: "17 bytes", "1 byte", "1536 bytes (1.5 KiB)".
///
/// Magnitudes of at least 1024 bytes are also shown in the largest fitting unit, rounded to one
/// decimal: 1048575 is 1.0 MiB. Independent of the locale.
std::string toReadableSize(std::int64_t bytes);

/// Formats it briefly, without the exact number of bytes: "17 B", "1.5 KiB".
std::string toShortSize(std::int64_t bytes);

}  // namespace update_metadata_tool::output
