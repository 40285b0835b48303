#include "lint/Severity.h"

namespace update_metadata_tool::lint {

const char* nameOf(std::optional<Severity> severity) {
  if (!severity) {
    return kOff;
  }
  switch (*severity) {
    case Severity::kInfo:
      return "info";
    case Severity::kWarning:
      return "warning";
    case Severity::kError:
      return "error";
  }
  return "";  // no other value is ever made
}

std::optional<Severity> findSeverity(std::string_view name) {
  for (const Severity severity : {Severity::kInfo, Severity::kWarning, Severity::kError}) {
    if (name == nameOf(severity)) {
      return severity;
    }
  }
  return std::nullopt;
}

}  // namespace update_metadata_tool::lint
