#include "report/ReportData.h"

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <sstream>
#include <vector>

#include "OrderedJson.h"
#include "Text.h"
#include "source/LineIndex.h"
#include "summary/DoubtfulSizes.h"
#include "summary/SumText.h"
#include "summary/Totals.h"

namespace update_metadata_tool {
namespace {

using Json = OrderedJson;

constexpr std::size_t kMostFindings = 10'000;

Json toJson(const Release& release) {
  return {{"family", toUtf8(release.family)}, {"version", toUtf8(release.version)}};
}

void addBytes(const Totals& totals, Json& object) {
  object["bytesToFetch"] = toPlainNumber(totals.bytesToFetch);
  object["bytesUnpacked"] = toPlainNumber(totals.bytesUnpacked);
  object["bytesDeleted"] = toPlainNumber(totals.bytesDeleted);
}

void addSums(const Totals& totals, Json& object) {
  object["packagesToExtract"] = totals.packagesToExtract;
  object["packagesToDelete"] = totals.packagesToDelete;
  addBytes(totals, object);
}

Json listPackagesToExtract(const Contents& contents) {
  Json list = Json::array();
  for (const Package& package : contents.packagesToExtract) {
    list.push_back({toUtf8(package.key), package.size, package.uncompressedBytes});
  }
  return list;
}

Json listPackagesToDelete(const Contents& contents) {
  Json list = Json::array();
  for (const Package& package : contents.packagesToDelete) {
    // Two elements, the first a string, would be taken for a member of an object.
    list.push_back(Json::array({toUtf8(package.key), package.size}));
  }
  return list;
}

Json listComponents(const Contents& contents, const Tally& tally) {
  Json list = Json::array();
  for (std::size_t number = 0; number != contents.components.size(); ++number) {
    const Component& component = contents.components[number];
    Json object = {{"name", toUtf8(component.name)},
                   {"packagesToExtract", component.packagesToExtract},
                   {"packagesToDelete", component.packagesToDelete}};
    addBytes(tally.totalsOfComponent(number), object);
    list.push_back(std::move(object));
  }
  return list;
}

Json listProducts(const Contents& contents, Tally& tally) {
  Json list = Json::array();
  for (std::size_t number = 0; number != contents.products.size(); ++number) {
    const Product& product = contents.products[number];
    Json object = {{"name", toUtf8(product.name)},
                   {"baseCode", product.baseCode ? Json(toUtf8(*product.baseCode)) : Json(nullptr)},
                   {"componentsToExtract", product.componentsToExtract},
                   {"componentsToDelete", product.componentsToDelete}};
    addSums(tally.totalsOfProduct(number), object);
    list.push_back(std::move(object));
  }
  return list;
}

Json listFiles(const std::vector<std::u16string>& files) {
  Json list = Json::array();
  for (const std::u16string& file : files) {
    list.push_back(toUtf8(file));
  }
  return list;
}

Json listComponentsWithFiles(const Contents& contents) {
  Json list = Json::array();
  for (const ComponentWithFiles& component : contents.componentsWithFiles) {
    Json packages = Json::array();
    for (const PackageWithFiles& package : component.packages) {
      packages.push_back({{"key", toUtf8(package.key)},
                          {"size", package.size},
                          {"files", listFiles(package.files)}});
    }
    list.push_back({{"name", toUtf8(component.name)}, {"packages", std::move(packages)}});
  }
  return list;
}

Json toJson(const Finding& finding, const LineIndex& lines) {
  const Position position = lines.positionOf(finding.offset);
  return {{"severity", nameOf(finding.severity)},
          {"rule", describe(finding.rule).id},
          {"line", position.line},
          {"column", position.column},
          {"message", finding.message},
          {"advice", finding.advice},
          {"item", finding.item},
          {"pointer", finding.pointer}};
}

void addFindings(const FileReport& linting, Json& data) {
  const LineIndex lines(linting.text);
  const std::size_t listed = std::min(linting.findings.size(), kMostFindings);
  Json& list = data["findings"] = Json::array();
  for (std::size_t place = 0; place != listed; ++place) {
    list.push_back(toJson(linting.findings[place], lines));
  }
  data["omittedFindings"] = std::accumulate(linting.omitted.begin(), linting.omitted.end(),
                                            linting.findings.size() - listed);
}

}  // namespace

std::string makeReportData(const std::u16string& file, const Contents& contents,
                           const FileReport& linting) {
  Tally tally(contents);
  Json data = {{"version", 1},
               {"file", toUtf8(file)},
               {"base", toJson(contents.base)},
               {"target", toJson(contents.target)},
               {"arch", toUtf8(contents.architecture)}};
  data["target"]["updateLevel"] = contents.targetUpdateLevel;
  Json& totals = data["totals"];
  addSums(tally.totalsOfAll(), totals);
  totals["filesToDelete"] = countFilesToDelete(contents);
  const DoubtfulSizes doubtful = countDoubtfulSizes(contents, tally.selectAll());
  data["doubtfulSizes"] = doubtful.areAny() ? Json(describe(doubtful)) : Json(nullptr);
  data["packagesToExtract"] = listPackagesToExtract(contents);
  data["packagesToDelete"] = listPackagesToDelete(contents);
  data["components"] = listComponents(contents, tally);
  data["products"] = listProducts(contents, tally);
  data["componentsWithFiles"] = listComponentsWithFiles(contents);
  addFindings(linting, data);
  std::ostringstream text;
  writeJson(data, text);
  return text.str();
}

}  // namespace update_metadata_tool
