#pragma once

#include <optional>
#include <string>

#include <nlohmann/json.hpp>

#include "summary/ByteSum.h"
#include "summary/Contents.h"
#include "summary/DoubtfulSizes.h"

namespace update_metadata_tool {

/// The number of bytes; null if it does not fit into 64 bits.
nlohmann::ordered_json toJson(const ByteSum& sum);

/// {"family", "version"}
nlohmann::ordered_json toJson(const Release& release);

/// The same for the target release, with "updateLevel" at its end.
nlohmann::ordered_json targetToJson(const Contents& contents);

/// The text, null without one.
nlohmann::ordered_json toJson(const std::optional<std::u16string>& text);

/// {"negative", "truncated"}
nlohmann::ordered_json toJson(const DoubtfulSizes& sizes);

}  // namespace update_metadata_tool
