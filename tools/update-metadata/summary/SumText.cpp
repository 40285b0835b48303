#include "summary/SumText.h"

#include <cstdint>
#include <limits>
#include <optional>

#include "output/ReadableSize.h"

namespace update_metadata_tool::summary {
namespace {

// Tells a sum with `tell`, or the bound that it passes with what stands before it.
template <class Tell>
std::string tellOrBound(const ByteSum& sum, const char* above, const char* below, Tell tell) {
  using Limits = std::numeric_limits<std::int64_t>;
  if (const std::optional<std::int64_t> value = sum.value()) {
    return tell(*value);
  }
  return sum.isNegative() ? below + tell(Limits::min()) : above + tell(Limits::max());
}

}  // namespace

std::string toPlainNumber(const ByteSum& sum) {
  return tellOrBound(sum, ">", "<", [](std::int64_t bytes) { return std::to_string(bytes); });
}

std::string toShortSize(const ByteSum& sum) {
  return tellOrBound(sum, ">", "<", [](std::int64_t bytes) { return output::toShortSize(bytes); });
}

std::string toReadableSize(const ByteSum& sum) {
  return tellOrBound(sum, "more than ", "less than ",
                     [](std::int64_t bytes) { return output::toReadableSize(bytes); });
}

}  // namespace update_metadata_tool::summary
