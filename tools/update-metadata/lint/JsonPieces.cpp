#include "lint/JsonPieces.h"

namespace update_metadata_tool {

OrderedJson toJson(const std::optional<ForeseenException>& exception) {
  if (!exception) {
    return nullptr;
  }
  return {{"type", exception->type}, {"text", exception->text}};
}

OrderedJson toJson(const std::array<std::size_t, kRuleCount>& omitted) {
  OrderedJson counts = OrderedJson::object();
  for (const RuleDescription& description : allRules()) {
    const std::size_t count = omitted[static_cast<std::size_t>(description.rule)];
    if (count != 0) {
      counts[description.id] = count;
    }
  }
  return counts;
}

}  // namespace update_metadata_tool
