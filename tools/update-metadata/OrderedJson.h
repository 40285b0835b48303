#pragma once

#include <iosfwd>

#include <nlohmann/json.hpp>

namespace update_metadata_tool {

/// JSON whose members keep the order in which they were added.
using OrderedJson = nlohmann::ordered_json;

/// Writes JSON in one line, in UTF-8, without a line feed at its end.
///
/// What a terminal must not be sent, as toVisible() has it, is written as \uXXXX, which means the
/// same. What is not UTF-8 in a string becomes U+FFFD. The whole line is made before the first byte
/// of it is written.
void writeJson(const OrderedJson& json, std::ostream& out);

}  // namespace update_metadata_tool
