#include "query/JsonOutput.h"

#include <ostream>
#include <string>
#include <utility>

#include "OrderedJson.h"
#include "Text.h"

namespace update_metadata_tool {
namespace {

using Json = OrderedJson;

// Appends a member. Keys of an answer differ by themselves, so that none is searched for, which
// would take a time quadratic in their number.
void append(Json& object, const std::u16string& key, Json value) {
  using Members = Json::object_t;
  object.get_ref<Members&>().Members::Container::emplace_back(toUtf8(key), std::move(value));
}

Json toJson(const std::set<std::u16string>& strings) {
  Json array = Json::array();
  for (const std::u16string& string : strings) {
    array.push_back(toUtf8(string));
  }
  return array;
}

Json toJson(const PackageKeysByBaseCode& keysByBaseCode) {
  Json object = Json::object();
  for (const auto& [baseCode, keys] : keysByBaseCode) {
    append(object, baseCode, toJson(keys));
  }
  return object;
}

Json toJson(const Packages& packages) {
  return std::visit([](const auto& keys) { return toJson(keys); }, packages);
}

Json toJson(const Release& release) {
  return {{"family", toUtf8(release.family)}, {"version", toUtf8(release.version)}};
}

}  // namespace

void writeJson(const Answers& answers, std::ostream& out) {
  Json document = {{"base", toJson(answers.base)}, {"target", toJson(answers.target)}};
  document["target"]["updateLevel"] = answers.targetUpdateLevel;
  document["componentsToDelete"] = toJson(answers.packagesToDelete);
  document["componentsToExtract"] = toJson(answers.packagesToExtract);
  Json& sizesByKey = document["updateSizeForComponentsToExtract"] = Json::object();
  for (const auto& [key, sizes] : answers.sizesToExtract) {
    append(sizesByKey, key, {{"size", sizes.first}, {"uncompressedBytes", sizes.second}});
  }
  Json& filesByKey = document["componentsWithFilesToDelete"] = Json::object();
  for (const auto& [key, filesAndSize] : answers.filesToDelete) {
    append(filesByKey, key, {{"size", filesAndSize.second}, {"files", toJson(filesAndSize.first)}});
  }
  writeJson(document, out);
  out << '\n';
}

}  // namespace update_metadata_tool
