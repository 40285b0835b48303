#include "query/JsonOutput.h"

#include <ostream>

#include "output/JsonWriter.h"
#include "summary/SummaryJson.h"

namespace update_metadata_tool::query {
namespace {

using output::JsonWriter;

void write(const PackageKeys& keys, JsonWriter& json) {
  json.array(keys);
}

void write(const PackageKeysByBaseCode& keysByBaseCode, JsonWriter& json) {
  json.beginObject();
  for (const auto& [baseCode, keys] : keysByBaseCode) {
    json.name(baseCode).array(keys);
  }
  json.endObject();
}

void write(const Packages& packages, JsonWriter& json) {
  std::visit([&json](const auto& keys) { write(keys, json); }, packages);
}

}  // namespace

void writeJson(const Answers& answers, std::ostream& out) {
  JsonWriter json(out);
  json.beginObject();
  summary::writeReleases(answers.base, answers.target, answers.targetUpdateLevel, json);
  json.name("componentsToDelete");
  write(answers.packagesToDelete, json);
  json.name("componentsToExtract");
  write(answers.packagesToExtract, json);
  json.name("updateSizeForComponentsToExtract").beginObject();
  for (const auto& [key, sizes] : answers.sizesToExtract) {
    json.name(key)
        .beginObject()
        .member("size", sizes.first)
        .member("uncompressedBytes", sizes.second)
        .endObject();
  }
  json.endObject().name("componentsWithFilesToDelete").beginObject();
  for (const auto& [key, filesAndSize] : answers.filesToDelete) {
    json.name(key).beginObject().member("size", filesAndSize.second);
    json.name("files").array(filesAndSize.first).endObject();
  }
  json.endObject().member("sha256", answers.sha256).endObject();
  out << '\n';
}

}  // namespace update_metadata_tool::query
