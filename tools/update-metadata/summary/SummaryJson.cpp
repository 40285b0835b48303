#include "summary/SummaryJson.h"

#include <cstdint>

#include "Text.h"

namespace update_metadata_tool {

using Json = nlohmann::ordered_json;

Json toJson(const ByteSum& sum) {
  const std::optional<std::int64_t> value = sum.value();
  return value ? Json(*value) : Json();
}

Json toJson(const Release& release) {
  return {{"family", toUtf8(release.family)}, {"version", toUtf8(release.version)}};
}

Json targetToJson(const Contents& contents) {
  Json target = toJson(contents.target);
  target["updateLevel"] = contents.targetUpdateLevel;
  return target;
}

Json toJson(const std::optional<std::u16string>& text) {
  return text ? Json(toUtf8(*text)) : Json();
}

Json toJson(const DoubtfulSizes& sizes) {
  return {{"negative", sizes.negative}, {"truncated", sizes.truncated}};
}

}  // namespace update_metadata_tool
