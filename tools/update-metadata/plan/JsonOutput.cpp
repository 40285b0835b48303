#include "plan/JsonOutput.h"

#include <ostream>
#include <utility>
#include <vector>

#include "OrderedJson.h"
#include "Text.h"
#include "summary/SummaryJson.h"

namespace update_metadata_tool {
namespace {

using Json = OrderedJson;

Json productsToJson(const std::vector<Product>& products) {
  Json array = Json::array();
  for (const Product& product : products) {
    array.push_back({{"name", toUtf8(product.name)}, {"baseCode", toJson(product.baseCode)}});
  }
  return array;
}

Json packagesToDeleteToJson(const std::vector<Package>& packages) {
  Json array = Json::array();
  for (const Package& package : packages) {
    array.push_back({{"key", toUtf8(package.key)}, {"size", package.size}});
  }
  return array;
}

Json packagesToExtractToJson(const std::vector<Package>& packages) {
  Json array = Json::array();
  for (const Package& package : packages) {
    array.push_back({{"key", toUtf8(package.key)},
                     {"size", package.size},
                     {"uncompressedBytes", package.uncompressedBytes}});
  }
  return array;
}

const char* nameOf(FileState state) {
  switch (state) {
    case FileState::kPresent:
      return "present";
    case FileState::kMissing:
      return "missing";
    case FileState::kFolder:
      return "folder";
    case FileState::kOutside:
      return "outside";
    case FileState::kUnknown:
      break;
  }
  return "unknown";
}

// The path that a file outside leads to, as it is; null for any other.
Json leadsToJson(const InstalledFile& file) {
  return file.state == FileState::kOutside ? Json(file.detail) : Json();
}

// Why a file has its state; null if there is nothing to say.
Json reasonToJson(const InstalledFile& file) {
  return file.state == FileState::kOutside || file.detail.empty() ? Json() : Json(file.detail);
}

// With what was found of each file, in the same order, if they were looked for.
Json filesToDeleteToJson(const std::vector<PlannedFiles>& packages, bool areLookedFor) {
  Json array = Json::array();
  for (const PlannedFiles& package : packages) {
    Json files = Json::array();
    Json states = Json::array();
    Json leadsTo = Json::array();
    Json reasons = Json::array();
    for (const PlannedFile& file : package.files) {
      files.push_back(toUtf8(file.path));
      if (file.installed) {
        states.push_back(nameOf(file.installed->state));
        leadsTo.push_back(leadsToJson(*file.installed));
        reasons.push_back(reasonToJson(*file.installed));
      }
    }
    array.push_back(
        {{"key", toUtf8(package.key)}, {"size", package.size}, {"files", std::move(files)}});
    if (areLookedFor) {
      array.back()["states"] = std::move(states);
      array.back()["leadsTo"] = std::move(leadsTo);
      array.back()["reasons"] = std::move(reasons);
    }
  }
  return array;
}

Json totalsToJson(const Totals& totals) {
  return {{"bytesToFetch", toJson(totals.bytesToFetch)},
          {"bytesUnpacked", toJson(totals.bytesUnpacked)},
          {"bytesDeleted", toJson(totals.bytesDeleted)},
          {"netChange", toJson(totals.netChange())},
          {"peakNeed", toJson(totals.peakNeed())}};
}

}  // namespace

void writeJson(const Contents& contents, const Plan& plan,
               const std::optional<InstalledCounts>& counts, std::ostream& out) {
  Json document = {{"version", 1}};
  document["base"] = toJson(contents.base);
  document["target"] = targetToJson(contents);
  document["arch"] = toUtf8(contents.architecture);
  document["products"] = productsToJson(plan.products);
  document["packagesToDelete"] = packagesToDeleteToJson(plan.packagesToDelete);
  document["packagesToExtract"] = packagesToExtractToJson(plan.packagesToExtract);
  document["filesToDelete"] = filesToDeleteToJson(plan.filesToDelete, counts.has_value());
  document["totals"] = totalsToJson(plan.totals);
  document["doubtfulSizes"] = toJson(plan.doubtfulSizes);
  document["productsLeftOut"] = productsToJson(plan.leftOut);
  if (counts) {
    document["installed"] = {{"present", counts->present},
                             {"missing", counts->missing},
                             {"folder", counts->folder},
                             {"outside", counts->outside},
                             {"unknown", counts->unknown}};
  }
  writeJson(document, out);
  out << '\n';
}

}  // namespace update_metadata_tool
