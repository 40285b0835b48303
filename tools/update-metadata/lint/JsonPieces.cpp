#include "lint/JsonPieces.h"

namespace update_metadata_tool::lint {

void writeException(const std::optional<ThrownException>& exception, output::JsonWriter& json) {
  if (!exception) {
    json.value(nullptr);
    return;
  }
  json.beginObject().member("type", exception->type).member("text", exception->text).endObject();
}

void writeOmitted(const std::vector<OmittedFindings>& omitted, output::JsonWriter& json) {
  json.beginObject();
  for (const auto& [rule, severity, count] : omitted) {
    json.member(rule, count);
  }
  json.endObject();
}

}  // namespace update_metadata_tool::lint
