#include "lint/JsonPieces.h"

namespace update_metadata_tool::lint {

void writeException(const std::optional<ThrownException>& exception, output::JsonWriter& json) {
  if (!exception) {
    json.value(nullptr);
    return;
  }
  json.beginObject().member("type", exception->type).member("text", exception->text).endObject();
}

void writeOmitted(const std::array<std::size_t, kRuleCount>& omitted, output::JsonWriter& json) {
  json.beginObject();
  for (const RuleDescription& description : allRules()) {
    const std::size_t count = omitted[static_cast<std::size_t>(description.rule)];
    if (count != 0) {
      json.member(description.id, count);
    }
  }
  json.endObject();
}

}  // namespace update_metadata_tool::lint
