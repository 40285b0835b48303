#pragma once

#include <array>
#include <cstddef>
#include <optional>

#include "diagnosis/Finding.h"
#include "output/JsonWriter.h"

namespace update_metadata_tool::lint {

using namespace install::update_metadata_parser::diagnosis;

/// The type and the text of an exception; null if there is none.
void writeException(const std::optional<ThrownException>& exception, output::JsonWriter& json);

/// The number of omitted findings by rule id, for the rules that have some.
void writeOmitted(const std::array<std::size_t, kRuleCount>& omitted, output::JsonWriter& json);

}  // namespace update_metadata_tool::lint
