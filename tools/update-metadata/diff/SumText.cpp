#include "diff/SumText.h"

#include <cstdint>
#include <optional>

#include "ReadableSize.h"

namespace update_metadata_tool {

std::string describeSum(const ByteSum& sum) {
  const std::optional<std::int64_t> bytes = sum.value();
  return bytes ? toReadableSize(*bytes) : "more than 64 bits hold";
}

std::string describeDifference(const ByteSum& difference) {
  return (ByteSum() < difference ? "+" : "") + describeSum(difference);
}

}  // namespace update_metadata_tool
