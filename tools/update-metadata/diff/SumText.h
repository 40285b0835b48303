#pragma once

#include <string>

#include "summary/ByteSum.h"

namespace update_metadata_tool {

/// Tells a sum for people, as toReadableSize() does a size; "more than 64 bits hold" if it does not
/// fit into them.
std::string describeSum(const ByteSum& sum);

/// Tells a difference, with its sign: "+17 bytes", "-1536 bytes (-1.5 KiB)", "0 bytes".
std::string describeDifference(const ByteSum& difference);

}  // namespace update_metadata_tool
