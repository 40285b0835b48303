#include "summary/SummaryJson.h"

namespace update_metadata_tool::summary {

using output::JsonWriter;

void writeReleases(const Release& base, const Release& target, int updateLevel, JsonWriter& json) {
  const auto begin = [&json](const char* name, const Release& release) -> JsonWriter& {
    return json.name(name)
        .beginObject()
        .member("family", release.family)
        .member("version", release.version);
  };
  begin("base", base).endObject();
  begin("target", target).member("updateLevel", updateLevel).endObject();
}

void writeMember(const char* name, const DoubtfulSizes& sizes, JsonWriter& json) {
  json.name(name)
      .beginObject()
      .member("negative", sizes.negative)
      .member("truncated", sizes.truncated)
      .endObject();
}

void writeMembers(const Totals& totals, JsonWriter& json) {
  json.member("packagesToDelete", totals.packagesToDelete)
      .member("packagesToExtract", totals.packagesToExtract)
      .member("bytesToFetch", totals.bytesToFetch.value())
      .member("bytesUnpacked", totals.bytesUnpacked.value())
      .member("bytesDeleted", totals.bytesDeleted.value());
}

}  // namespace update_metadata_tool::summary
