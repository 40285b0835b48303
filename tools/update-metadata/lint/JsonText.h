#pragma once

#include <ostream>

#include <nlohmann/json.hpp>

namespace update_metadata_tool {

/// JSON whose members keep the order in which they were added.
using OrderedJson = nlohmann::ordered_json;

/// Writes JSON in one line, in UTF-8; what is not UTF-8 in a string becomes U+FFFD.
inline void writeJsonText(const OrderedJson& json, std::ostream& out) {
  constexpr int kOneLine = -1;
  out << json.dump(kOneLine, ' ', false, OrderedJson::error_handler_t::replace);
}

}  // namespace update_metadata_tool
