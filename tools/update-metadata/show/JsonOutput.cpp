#include "show/JsonOutput.h"

#include <ostream>

#include "output/JsonWriter.h"
#include "summary/SummaryJson.h"

namespace update_metadata_tool::show {
namespace {

using output::JsonWriter;

void writeTotals(const Overview& overview, JsonWriter& json) {
  json.beginObject().member("components", overview.totals.components);
  summary::writeMembers(overview.totals, json);
  json.member("filesToDelete", overview.filesToDelete).endObject();
}

void writeProduct(const NamedTotals& product, JsonWriter& json) {
  json.beginObject()
      .member("name", product.name)
      .member("baseCode", product.baseCode)
      .member("components", product.totals.components);
  summary::writeMembers(product.totals, json);
  json.endObject();
}

void writeComponent(const NamedTotals& component, JsonWriter& json) {
  json.beginObject().member("name", component.name);
  summary::writeMembers(component.totals, json);
  json.endObject();
}

void writePackage(const LargePackage& large, JsonWriter& json) {
  json.beginObject()
      .member("key", large.package.key)
      .member("action", large.isDeleted ? "delete" : "extract")
      .member("size", large.package.size);
  if (!large.isDeleted) {
    json.member("uncompressedBytes", large.package.uncompressedBytes);
  }
  json.endObject();
}

}  // namespace

void writeJson(const summary::Contents& contents, const Overview& overview, std::ostream& out) {
  JsonWriter json(out);
  json.beginObject().member("version", 1);
  summary::writeReleases(contents.base, contents.target, contents.targetUpdateLevel, json);
  json.member("arch", contents.architecture).name("totals");
  writeTotals(overview, json);
  json.name("sharedPackages")
      .beginObject()
      .member("toDelete", overview.sharedPackagesToDelete)
      .member("toExtract", overview.sharedPackagesToExtract)
      .endObject();
  json.member("packagesWithFiles", overview.packagesWithFiles);
  summary::writeMember("doubtfulSizes", overview.doubtfulSizes, json);
  json.name("products").array(overview.products, writeProduct);
  json.name("largestComponents").array(overview.largestComponents, writeComponent);
  json.name("largestPackages").array(overview.largestPackages, writePackage);
  json.member("sha256", contents.sha256).endObject();
  out << '\n';
}

}  // namespace update_metadata_tool::show
