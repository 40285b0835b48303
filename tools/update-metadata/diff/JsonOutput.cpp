#include "diff/JsonOutput.h"

#include <cstddef>
#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

#include "OrderedJson.h"
#include "Text.h"
#include "summary/SummaryJson.h"

namespace update_metadata_tool {
namespace {

using Json = OrderedJson;

Json namesToJson(const std::vector<std::u16string>& names) {
  Json array = Json::array();
  for (const std::u16string& name : names) {
    array.push_back(toUtf8(name));
  }
  return array;
}

Json namesToJson(const NameChanges& names) {
  return {{"added", namesToJson(names.added)}, {"removed", namesToJson(names.removed)}};
}

// Counts are far below the largest number, so that their differences fit.
Json countDifference(std::size_t before, std::size_t after) {
  return static_cast<std::int64_t>(after) - static_cast<std::int64_t>(before);
}

Json totalsToJson(const Totals& totals) {
  return {{"packagesToDelete", totals.packagesToDelete},
          {"packagesToExtract", totals.packagesToExtract},
          {"bytesToFetch", toJson(totals.bytesToFetch)},
          {"bytesUnpacked", toJson(totals.bytesUnpacked)},
          {"bytesDeleted", toJson(totals.bytesDeleted)}};
}

Json differenceToJson(const Totals& before, const Totals& after) {
  return {{"packagesToDelete", countDifference(before.packagesToDelete, after.packagesToDelete)},
          {"packagesToExtract", countDifference(before.packagesToExtract, after.packagesToExtract)},
          {"bytesToFetch", toJson(after.bytesToFetch - before.bytesToFetch)},
          {"bytesUnpacked", toJson(after.bytesUnpacked - before.bytesUnpacked)},
          {"bytesDeleted", toJson(after.bytesDeleted - before.bytesDeleted)}};
}

// Adds both sides of `item`, null where there is none, and their difference; with 0 for a side that
// is not there.
template <class Item>
void addTotals(const Item& item, Json& object) {
  object["before"] = item.before ? totalsToJson(*item.before) : Json();
  object["after"] = item.after ? totalsToJson(*item.after) : Json();
  object["difference"] =
      differenceToJson(item.before.value_or(Totals()), item.after.value_or(Totals()));
}

Json productToJson(const ProductChange& product) {
  Json object = {{"name", toUtf8(product.name)}, {"baseCode", toJson(product.baseCode)}};
  addTotals(product, object);
  object["componentsToDelete"] = namesToJson(product.componentsToDelete);
  object["componentsToExtract"] = namesToJson(product.componentsToExtract);
  return object;
}

Json componentToJson(const ComponentChange& component) {
  Json object = {{"name", toUtf8(component.name)}};
  addTotals(component, object);
  return object;
}

Json packageToExtractToJson(const PackageChange& package) {
  const auto sizes = [](const PackageSizes& side) {
    return Json({{"size", side.size}, {"uncompressedBytes", side.uncompressedBytes}});
  };
  const PackageSizes before = package.before.value_or(PackageSizes());
  const PackageSizes after = package.after.value_or(PackageSizes());
  return {{"key", toUtf8(package.key)},
          {"before", package.before ? sizes(before) : Json()},
          {"after", package.after ? sizes(after) : Json()},
          {"difference",
           {{"size", toJson(ByteSum(after.size) - ByteSum(before.size))},
            {"uncompressedBytes",
             toJson(ByteSum(after.uncompressedBytes) - ByteSum(before.uncompressedBytes))}}}};
}

// What is known of a package is its size alone: of one to delete, and of one with files.
Json sizeToJson(const std::u16string& key, const std::optional<std::int64_t>& before,
                const std::optional<std::int64_t>& after) {
  const auto side = [](const std::optional<std::int64_t>& size) {
    return size ? Json({{"size", *size}}) : Json();
  };
  const ByteSum difference = ByteSum(after.value_or(0)) - ByteSum(before.value_or(0));
  return {{"key", toUtf8(key)},
          {"before", side(before)},
          {"after", side(after)},
          {"difference", {{"size", toJson(difference)}}}};
}

Json packageToDeleteToJson(const PackageChange& package) {
  const auto size = [](const std::optional<PackageSizes>& side) {
    return side ? std::optional(side->size) : std::nullopt;
  };
  return sizeToJson(package.key, size(package.before), size(package.after));
}

Json filesToJson(const FilesChange& package) {
  Json object = sizeToJson(package.key, package.before, package.after);
  object["component"] = toUtf8(package.component);
  object["files"] = namesToJson(package.files);
  return object;
}

// Three lists: of what was added, removed and changed.
template <class Item, class ToJson>
Json listsToJson(const std::vector<Item>& items, ToJson itemToJson) {
  Json added = Json::array();
  Json removed = Json::array();
  Json changed = Json::array();
  for (const Item& item : items) {
    Json& list = !item.before ? added : !item.after ? removed : changed;
    list.push_back(itemToJson(item));
  }
  return {{"added", std::move(added)},
          {"removed", std::move(removed)},
          {"changed", std::move(changed)}};
}

Json totalsToJson(const Difference& difference) {
  const Totals& before = difference.totals.before;
  const Totals& after = difference.totals.after;
  const Sides<std::size_t>& files = difference.filesToDelete;
  Json object = {{"before", totalsToJson(before)},
                 {"after", totalsToJson(after)},
                 {"difference", differenceToJson(before, after)}};
  object["before"]["filesToDelete"] = files.before;
  object["after"]["filesToDelete"] = files.after;
  object["difference"]["filesToDelete"] = countDifference(files.before, files.after);
  return object;
}

Json releasesToJson(const std::vector<ReleaseChange>& releases) {
  Json array = Json::array();
  for (const ReleaseChange& change : releases) {
    array.push_back({{"field", change.field},
                     {"before", toUtf8(change.before)},
                     {"after", toUtf8(change.after)}});
  }
  return array;
}

}  // namespace

void writeJson(const Difference& difference, const std::optional<Growth>& growth,
               std::ostream& out) {
  Json document = {{"version", 1}, {"different", !difference.isEmpty()}};
  if (growth) {
    document["growth"] = {{"bytesToFetch", toJson(growth->bytes)},
                          {"allowed", toJson(growth->allowed)},
                          {"tooLarge", growth->isTooLarge()}};
  }
  document["totals"] = totalsToJson(difference);
  document["doubtfulSizes"] = {{"before", toJson(difference.doubtfulSizes.before)},
                               {"after", toJson(difference.doubtfulSizes.after)}};
  document["releases"] = releasesToJson(difference.releases);
  document["products"] = listsToJson(difference.products, productToJson);
  document["components"] = listsToJson(difference.components, componentToJson);
  document["packagesToDelete"] = listsToJson(difference.packagesToDelete, packageToDeleteToJson);
  document["packagesToExtract"] = listsToJson(difference.packagesToExtract, packageToExtractToJson);
  document["filesToDelete"] = listsToJson(difference.packagesWithFiles, filesToJson);
  writeJson(document, out);
  out << '\n';
}

}  // namespace update_metadata_tool
