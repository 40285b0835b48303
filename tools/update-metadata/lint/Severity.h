#pragma once

#include <optional>
#include <string_view>

#include "install/update_metadata_parser/Diagnosis.h"

namespace update_metadata_tool::lint {

using install::update_metadata_parser::Severity;

/// What users write and read for a rule that has no findings.
constexpr const char* kOff = "off";

/// The name of a severity as users write and read it: "info", "warning" or "error", and kOff for
/// nothing.
const char* nameOf(std::optional<Severity> severity);

/// The severity of that name, if there is one. kOff is not the name of a severity.
std::optional<Severity> findSeverity(std::string_view name);

}  // namespace update_metadata_tool::lint
