#pragma once

#include <string>

#include "summary/ByteSum.h"

namespace update_metadata_tool::summary {

/// Tells a sum in bytes, as a number alone: "1536". One that does not fit into 64 bits is told by
/// the bound that it passes: ">9223372036854775807" or "<-9223372036854775808".
std::string toPlainNumber(const ByteSum& sum);

/// Tells a sum in as little room as possible: "1.5 KiB", or ">8.0 EiB" if it does not fit.
std::string toShortSize(const ByteSum& sum);

/// Tells a sum for people: "1536 bytes (1.5 KiB)", or "more than 9223372036854775807 bytes
/// (8.0 EiB)" if it does not fit.
std::string toReadableSize(const ByteSum& sum);

}  // namespace update_metadata_tool::summary
