#pragma once

#include <string>

#include "summary/ByteSum.h"

namespace update_metadata_tool::summary {

/// Formats a sum as a plain number of bytes: "1536". A sum that does not fit into 64 bits is given
/// as the bound that it exceeds: ">9223372036854775807" or "<-9223372036854775808".
std::string toPlainNumber(const ByteSum& sum);

/// Formats a sum briefly: "1.5 KiB", or ">8.0 EiB" if it does not fit.
std::string toShortSize(const ByteSum& sum);

/// Formats a sum for people: "1536 bytes (1.5 KiB)", or "more than 9223372036854775807 bytes
/// (8.0 EiB)" if it does not fit.
std::string toReadableSize(const ByteSum& sum);

}  // namespace update_metadata_tool::summary
