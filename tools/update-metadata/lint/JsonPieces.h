#pragma once

#include <array>
#include <cstddef>
#include <iosfwd>
#include <optional>

#include <nlohmann/json.hpp>

#include "lint/Finding.h"

namespace update_metadata_tool {

/// JSON whose members keep the order in which they were added.
using OrderedJson = nlohmann::ordered_json;

/// The type and the text of an exception; null if there is none.
OrderedJson toJson(const std::optional<ForeseenException>& exception);

/// How many findings are omitted of each rule of which some are, by the rules' ids.
OrderedJson toJson(const std::array<std::size_t, kRuleCount>& omitted);

/// Writes JSON in one line, in UTF-8; what is not UTF-8 in a string becomes U+FFFD.
void writeJson(const OrderedJson& json, std::ostream& out);

}  // namespace update_metadata_tool
