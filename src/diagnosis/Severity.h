#pragma once

#include <optional>
#include <string_view>

namespace install::update_metadata_parser::diagnosis {

/// How serious a finding is. A rule that is off has no findings.
enum class Severity { kOff, kInfo, kWarning, kError };

/// The name of a severity as users write and read it: "off", "info", "warning" or "error".
const char* nameOf(Severity severity);

/// The severity of that name, if there is one.
std::optional<Severity> findSeverity(std::string_view name);

}  // namespace install::update_metadata_parser::diagnosis
