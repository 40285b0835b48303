#pragma once

#include <cstdint>
#include <limits>

namespace update_metadata_tool::summary {

constexpr std::int64_t kMax = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t kMin = std::numeric_limits<std::int64_t>::min();

}  // namespace update_metadata_tool::summary
