#include "show/JsonOutput.h"

#include <ostream>
#include <vector>

#include "OrderedJson.h"
#include "Text.h"
#include "summary/SummaryJson.h"

namespace update_metadata_tool {
namespace {

using Json = OrderedJson;

void addTotals(const Totals& totals, Json& object) {
  object["packagesToDelete"] = totals.packagesToDelete;
  object["packagesToExtract"] = totals.packagesToExtract;
  object["bytesToFetch"] = toJson(totals.bytesToFetch);
  object["bytesUnpacked"] = toJson(totals.bytesUnpacked);
  object["bytesDeleted"] = toJson(totals.bytesDeleted);
}

Json totalsToJson(const Overview& overview) {
  Json totals = {{"components", overview.totals.components}};
  addTotals(overview.totals, totals);
  totals["filesToDelete"] = overview.filesToDelete;
  return totals;
}

Json productToJson(const NamedTotals& product) {
  Json object = {{"name", toUtf8(product.name)},
                 {"baseCode", toJson(product.baseCode)},
                 {"components", product.totals.components}};
  addTotals(product.totals, object);
  return object;
}

Json componentToJson(const NamedTotals& component) {
  Json object = {{"name", toUtf8(component.name)}};
  addTotals(component.totals, object);
  return object;
}

Json packageToJson(const LargePackage& large) {
  Json object = {{"key", toUtf8(large.package.key)},
                 {"action", large.isDeleted ? "delete" : "extract"},
                 {"size", large.package.size}};
  if (!large.isDeleted) {
    object["uncompressedBytes"] = large.package.uncompressedBytes;
  }
  return object;
}

template <class Row, class ToJson>
Json listToJson(const std::vector<Row>& rows, ToJson rowToJson) {
  Json array = Json::array();
  for (const Row& row : rows) {
    array.push_back(rowToJson(row));
  }
  return array;
}

}  // namespace

void writeJson(const Contents& contents, const Overview& overview, std::ostream& out) {
  Json document = {{"version", 1}};
  document["base"] = toJson(contents.base);
  document["target"] = targetToJson(contents);
  document["arch"] = toUtf8(contents.architecture);
  document["totals"] = totalsToJson(overview);
  document["sharedPackages"] = {{"toDelete", overview.sharedPackagesToDelete},
                                {"toExtract", overview.sharedPackagesToExtract}};
  document["packagesWithFiles"] = overview.packagesWithFiles;
  document["doubtfulSizes"] = toJson(overview.doubtfulSizes);
  document["products"] = listToJson(overview.products, productToJson);
  document["largestComponents"] = listToJson(overview.largestComponents, componentToJson);
  document["largestPackages"] = listToJson(overview.largestPackages, packageToJson);
  writeJson(document, out);
  out << '\n';
}

}  // namespace update_metadata_tool
