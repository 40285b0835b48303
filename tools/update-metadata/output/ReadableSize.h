#pragma once

#include <cstdint>
#include <string>

namespace update_metadata_tool::output {

/// Tells a number of bytes for people: "17 bytes", "1 byte", "1536 bytes (1.5 KiB)".
///
/// From 1024 bytes on, either side of zero, the largest fitting unit of 1024 stands beside, rounded
/// to one decimal: 1048575 is 1.0 MiB. Independent of the locale.
std::string toReadableSize(std::int64_t bytes);

/// Tells it in as little room as possible, where the bytes stand elsewhere: "17 B", "1.5 KiB".
std::string toShortSize(std::int64_t bytes);

}  // namespace update_metadata_tool::output
