#include "report/ReportData.h"

#include <algorithm>
#include <cstddef>
#include <optional>

#include "lint/Severity.h"
#include "output/JsonWriter.h"
#include "output/WrittenText.h"
#include "summary/DoubtfulSizes.h"
#include "summary/SumText.h"
#include "summary/SummaryJson.h"
#include "summary/Totals.h"

namespace update_metadata_tool::report {
namespace {

using install::update_metadata_parser::Diagnosis;
using install::update_metadata_parser::Finding;
using output::JsonWriter;
using summary::Contents;

constexpr std::size_t kMostFindings = 10'000;

void writeBytes(const summary::Totals& totals, JsonWriter& json) {
  json.member("bytesToFetch", summary::toPlainNumber(totals.bytesToFetch))
      .member("bytesUnpacked", summary::toPlainNumber(totals.bytesUnpacked))
      .member("bytesDeleted", summary::toPlainNumber(totals.bytesDeleted));
}

void writeSums(const summary::Totals& totals, JsonWriter& json) {
  json.member("packagesToExtract", totals.packagesToExtract)
      .member("packagesToDelete", totals.packagesToDelete);
  writeBytes(totals, json);
}

void writePackageToExtract(const summary::Package& package, JsonWriter& json) {
  json.beginArray()
      .value(package.key)
      .value(package.size)
      .value(package.uncompressedBytes)
      .endArray();
}

void writePackageToDelete(const summary::Package& package, JsonWriter& json) {
  json.beginArray().value(package.key).value(package.size).endArray();
}

void writeComponents(const Contents& contents, const summary::Tally& tally, JsonWriter& json) {
  json.beginArray();
  for (std::size_t number = 0; number != contents.components.size(); ++number) {
    const summary::Component& component = contents.components[number];
    json.beginObject().member("name", component.name);
    json.name("packagesToExtract").array(component.packagesToExtract);
    json.name("packagesToDelete").array(component.packagesToDelete);
    writeBytes(tally.totalsOfComponent(number), json);
    json.endObject();
  }
  json.endArray();
}

void writeProducts(const Contents& contents, summary::Tally& tally, JsonWriter& json) {
  json.beginArray();
  for (std::size_t number = 0; number != contents.products.size(); ++number) {
    const summary::Product& product = contents.products[number];
    json.beginObject().member("name", product.name).member("baseCode", product.baseCode);
    json.name("componentsToExtract").array(product.componentsToExtract);
    json.name("componentsToDelete").array(product.componentsToDelete);
    writeSums(tally.totalsOfProduct(number), json);
    json.endObject();
  }
  json.endArray();
}

void writePackageWithFiles(const summary::PackageWithFiles& package, JsonWriter& json) {
  json.beginObject().member("key", package.key).member("size", package.size);
  json.name("files").array(package.files).endObject();
}

void writeComponentWithFiles(const summary::ComponentWithFiles& component, JsonWriter& json) {
  json.beginObject().member("name", component.name);
  json.name("packages").array(component.packages, writePackageWithFiles).endObject();
}

void write(const Finding& finding, JsonWriter& json) {
  json.beginObject()
      .member("severity", lint::nameOf(finding.severity))
      .member("rule", finding.rule)
      .member("line", finding.line)
      .member("column", finding.column)
      .member("message", finding.message)
      .member("advice", finding.advice)
      .member("item", finding.item)
      .member("pointer", finding.pointer)
      .endObject();
}

void writeFindings(const Diagnosis& diagnosis, JsonWriter& json) {
  const std::size_t listed = std::min(diagnosis.findings.size(), kMostFindings);
  json.name("findings").beginArray();
  for (std::size_t place = 0; place != listed; ++place) {
    write(diagnosis.findings[place], json);
  }
  json.endArray();
  std::size_t omitted = diagnosis.findings.size() - listed;
  for (const auto& [rule, severity, count] : diagnosis.omitted) {
    omitted += count;
  }
  json.member("omittedFindings", omitted);
}

void writeData(const std::u16string& file, const Contents& contents, const Diagnosis& diagnosis,
               JsonWriter& json) {
  summary::Tally tally(contents);
  json.beginObject().member("version", 1).member("file", file);
  summary::writeReleases(contents.base, contents.target, contents.targetUpdateLevel, json);
  json.member("arch", contents.architecture).name("totals").beginObject();
  writeSums(tally.totalsOfAll(), json);
  json.member("filesToDelete", summary::countFilesToDelete(contents)).endObject();
  const summary::DoubtfulSizes doubtful = summary::countDoubtfulSizes(contents, tally.selectAll());
  json.member("doubtfulSizes", doubtful.any() ? std::optional(describe(doubtful)) : std::nullopt);
  json.name("packagesToExtract").array(contents.packagesToExtract, writePackageToExtract);
  json.name("packagesToDelete").array(contents.packagesToDelete, writePackageToDelete);
  json.name("components");
  writeComponents(contents, tally, json);
  json.name("products");
  writeProducts(contents, tally, json);
  json.name("componentsWithFiles").array(contents.componentsWithFiles, writeComponentWithFiles);
  writeFindings(diagnosis, json);
  json.endObject();
}

}  // namespace

std::string makeReportData(const std::u16string& file, const Contents& contents,
                           const Diagnosis& diagnosis) {
  return output::writtenText([&](std::ostream& out) {
    JsonWriter json(out);
    writeData(file, contents, diagnosis, json);
  });
}

}  // namespace update_metadata_tool::report
