#include "summary/SumText.h"

#include <cstdint>
#include <limits>
#include <optional>

#include "output/ReadableSize.h"

namespace update_metadata_tool::summary {
namespace {

// Formats a sum, or `above` or `below` and the 64-bit bound that it exceeds.
template <class Format>
std::string formatOrBound(const ByteSum& sum, const char* above, const char* below, Format format) {
  using Numbers = std::numeric_limits<std::int64_t>;
  if (const std::optional<std::int64_t> value = sum.value()) {
    return format(*value);
  }
  return sum.isNegative() ? below + format(Numbers::min()) : above + format(Numbers::max());
}

}  // namespace

std::string toPlainNumber(const ByteSum& sum) {
  return formatOrBound(sum, ">", "<", [](std::int64_t bytes) { return std::to_string(bytes); });
}

std::string toShortSize(const ByteSum& sum) {
  return formatOrBound(sum, ">", "<",
                       [](std::int64_t bytes) { return output::toShortSize(bytes); });
}

std::string toReadableSize(const ByteSum& sum) {
  return formatOrBound(sum, "more than ", "less than ",
                       [](std::int64_t bytes) { return output::toReadableSize(bytes); });
}

}  // namespace update_metadata_tool::summary
