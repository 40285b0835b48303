#include "plan/JsonOutput.h"

#include <ostream>
#include <vector>

#include "output/JsonWriter.h"
#include "summary/SummaryJson.h"

namespace update_metadata_tool::plan {
namespace {

using output::JsonWriter;

void writeProduct(const summary::Product& product, JsonWriter& json) {
  json.beginObject().member("name", product.name).member("baseCode", product.baseCode).endObject();
}

void writePackageToDelete(const summary::Package& package, JsonWriter& json) {
  json.beginObject().member("key", package.key).member("size", package.size).endObject();
}

void writePackageToExtract(const summary::Package& package, JsonWriter& json) {
  json.beginObject()
      .member("key", package.key)
      .member("size", package.size)
      .member("uncompressedBytes", package.uncompressedBytes)
      .endObject();
}

// An array of `valueOf(file)` for each file that was searched for.
template <class ValueOf>
void writeFound(const char* name, const PlannedFiles& package, ValueOf valueOf, JsonWriter& json) {
  json.name(name).beginArray();
  for (const PlannedFile& file : package.files) {
    if (file.installed) {
      json.value(valueOf(*file.installed));
    }
  }
  json.endArray();
}

// The path that a file outside leads to, unescaped; null for any other file.
std::optional<std::string> pathOutside(const InstalledFile& file) {
  return file.state == FileState::kOutside ? std::optional(file.detail) : std::nullopt;
}

// Why a file has its state; null if there is no explanation.
std::optional<std::string> reasonFor(const InstalledFile& file) {
  return file.state == FileState::kOutside || file.detail.empty() ? std::nullopt
                                                                  : std::optional(file.detail);
}

// With the result for each file, in the same order, if they were searched for.
void writePackageWithFiles(const PlannedFiles& package, bool areSearchedFor, JsonWriter& json) {
  json.beginObject().member("key", package.key).member("size", package.size);
  json.name("files").array(
      package.files, [](const PlannedFile& file, JsonWriter& array) { array.value(file.path); });
  if (areSearchedFor) {
    writeFound(
        "states", package, [](const InstalledFile& file) { return nameOf(file.state); }, json);
    writeFound("leadsTo", package, pathOutside, json);
    writeFound("reasons", package, reasonFor, json);
  }
  json.endObject();
}

void write(const summary::Totals& totals, JsonWriter& json) {
  json.beginObject()
      .member("bytesToFetch", totals.bytesToFetch.value())
      .member("bytesUnpacked", totals.bytesUnpacked.value())
      .member("bytesDeleted", totals.bytesDeleted.value())
      .member("netChange", totals.netChange().value())
      .member("peakNeed", totals.peakNeed().value())
      .endObject();
}

void write(const InstalledCounts& counts, JsonWriter& json) {
  json.beginObject();
  for (const auto& [state, count] : counts) {
    json.member(nameOf(state), count);
  }
  json.endObject();
}

}  // namespace

void writeJson(const summary::Contents& contents, const Plan& plan,
               const std::optional<InstalledCounts>& counts, std::ostream& out) {
  JsonWriter json(out);
  json.beginObject().member("version", 1);
  summary::writeReleases(contents.base, contents.target, contents.targetUpdateLevel, json);
  json.member("arch", contents.architecture);
  json.name("products").array(plan.products, writeProduct);
  json.name("packagesToDelete").array(plan.packagesToDelete, writePackageToDelete);
  json.name("packagesToExtract").array(plan.packagesToExtract, writePackageToExtract);
  json.name("filesToDelete")
      .array(plan.filesToDelete, [&counts](const PlannedFiles& package, JsonWriter& array) {
        writePackageWithFiles(package, counts.has_value(), array);
      });
  json.name("totals");
  write(plan.totals, json);
  summary::writeMember("doubtfulSizes", plan.doubtfulSizes, json);
  json.name("productsLeftOut").array(plan.leftOut, writeProduct);
  if (counts) {
    json.name("installed");
    write(*counts, json);
  }
  json.member("sha256", contents.sha256).endObject();
  out << '\n';
}

}  // namespace update_metadata_tool::plan
