// The section "metadata": the architecture and the two releases.

#include "fl/i18n.h"
#include "foundation/json/Value.h"
#include "install/update_metadata_parser/UpdateMetaDataHandler.h"
#include "install/update_metadata_parser/UpdateMetaDataJsonParser.h"
#include "reader/FieldAccess.h"
#include "reader/NumberConversion.h"

namespace install::update_metadata_parser {
namespace {

using foundation::json::Value;

// The fields of a release that are kept.
struct ReleaseFields {
  std::u16string family;
  std::u16string version;
  double update;
};

// Reads all fields of a release, in the order that decides which fault is reported. Fields that are
// not kept are checked as well. The first look-up rejects anything that is not an object.
ReleaseFields readRelease(const Value& release) {
  getString("zelvan_version", release, "");
  getString("date", release, "");
  const std::string version = getString("version", release, "");
  getMember<bool>("prerelease", release, "");
  const std::string family = getString("release", release, "");
  getString("checksum", release, "");
  getString("description", release, "");
  const double update = getNumber("update", release, "");
  return {fl::i18n::to_ustring(family), fl::i18n::to_ustring(version), update};
}

}  // namespace

void UpdateMetaDataJsonParser::parseMetaData(const Value& metadata) {
  handler->setMetaDataArch(fl::i18n::to_ustring(getString("arch", metadata, "")));
  for (const char* key : {"target", "base"}) {
    parseReleaseData(metadata[key], key);
  }
}

void UpdateMetaDataJsonParser::parseReleaseData(const Value& release, const std::string& key) {
  // A null release stays as the handler made it; an absent one is an error.
  if (release.is<std::nullptr_t>()) {
    return;
  }
  const ReleaseFields fields = readRelease(release);
  if (key == "target") {
    handler->setTargetReleaseFamily(fields.family);
    handler->setTargetReleaseVersion(fields.version);
    handler->setTargetUpdateLevelForQorv(toIntUpdateLevel(fields.update));
  } else {
    // The base release has no update level.
    handler->setBaseReleaseFamily(fields.family);
    handler->setBaseReleaseVersion(fields.version);
  }
}

}  // namespace install::update_metadata_parser
