#pragma once

#include <optional>
#include <vector>

#include "lint/FileReport.h"
#include "output/JsonWriter.h"

namespace update_metadata_tool::lint {

/// The type and the text of an exception; null if there is none.
void writeException(const std::optional<ThrownException>& exception, output::JsonWriter& json);

/// The number of omitted findings by rule id, for the rules that have some.
void writeOmitted(const std::vector<OmittedFindings>& omitted, output::JsonWriter& json);

}  // namespace update_metadata_tool::lint
