#include "diagnosis/Severity.h"

namespace install::update_metadata_parser::diagnosis {

const char* nameOf(Severity severity) {
  switch (severity) {
    case Severity::kOff:
      return "off";
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
  for (const Severity severity :
       {Severity::kOff, Severity::kInfo, Severity::kWarning, Severity::kError}) {
    if (name == nameOf(severity)) {
      return severity;
    }
  }
  return std::nullopt;
}

}  // namespace install::update_metadata_parser::diagnosis
