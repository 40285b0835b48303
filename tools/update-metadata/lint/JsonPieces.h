#pragma once

#include <array>
#include <cstddef>
#include <optional>

#include "OrderedJson.h"
#include "lint/Finding.h"

namespace update_metadata_tool {

/// The type and the text of an exception; null if there is none.
OrderedJson toJson(const std::optional<ForeseenException>& exception);

/// How many findings are omitted of each rule of which some are, by the rules' ids.
OrderedJson toJson(const std::array<std::size_t, kRuleCount>& omitted);

}  // namespace update_metadata_tool
