#include "diff/JsonOutput.h"

#include <cstddef>
#include <cstdint>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "output/JsonWriter.h"
#include "summary/SummaryJson.h"

namespace update_metadata_tool::diff {
namespace {

using output::JsonWriter;
using summary::ByteSum;
using summary::Totals;
using summary::writeMembers;

void writeNames(const char* name, const NameChanges& names, JsonWriter& json) {
  json.name(name).beginObject();
  json.name("added").array(names.added);
  json.name("removed").array(names.removed);
  json.endObject();
}

// Counts are far below 2^63, so their differences fit.
std::int64_t countDifference(std::size_t before, std::size_t after) {
  return static_cast<std::int64_t>(after) - static_cast<std::int64_t>(before);
}

void writeDifferences(const Totals& before, const Totals& after, JsonWriter& json) {
  json.member("packagesToDelete", countDifference(before.packagesToDelete, after.packagesToDelete))
      .member("packagesToExtract",
              countDifference(before.packagesToExtract, after.packagesToExtract))
      .member("bytesToFetch", (after.bytesToFetch - before.bytesToFetch).value())
      .member("bytesUnpacked", (after.bytesUnpacked - before.bytesUnpacked).value())
      .member("bytesDeleted", (after.bytesDeleted - before.bytesDeleted).value());
}

// The item in one document; null if that does not have it.
template <class Side, class WriteMembers>
void writeSide(const char* name, const std::optional<Side>& side, WriteMembers writeMembersOf,
               JsonWriter& json) {
  json.name(name);
  if (side) {
    json.beginObject();
    writeMembersOf(*side, json);
    json.endObject();
  } else {
    json.value(nullptr);
  }
}

// Both sides of `item` and their difference, with 0 for a missing side.
template <class Item>
void writeTotals(const Item& item, JsonWriter& json) {
  writeSide("before", item.before, writeMembers, json);
  writeSide("after", item.after, writeMembers, json);
  json.name("difference").beginObject();
  writeDifferences(item.before.value_or(Totals()), item.after.value_or(Totals()), json);
  json.endObject();
}

void writeProduct(const ProductChange& product, JsonWriter& json) {
  json.beginObject().member("name", product.name).member("baseCode", product.baseCode);
  writeTotals(product, json);
  writeNames("componentsToDelete", product.componentsToDelete, json);
  writeNames("componentsToExtract", product.componentsToExtract, json);
  json.endObject();
}

void writeComponent(const ComponentChange& component, JsonWriter& json) {
  json.beginObject().member("name", component.name);
  writeTotals(component, json);
  json.endObject();
}

void writePackageToExtract(const PackageChange& package, JsonWriter& json) {
  const auto writeSizes = [](const PackageSizes& side, JsonWriter& object) {
    object.member("size", side.size).member("uncompressedBytes", side.uncompressedBytes);
  };
  const PackageSizes before = package.before.value_or(PackageSizes());
  const PackageSizes after = package.after.value_or(PackageSizes());
  json.beginObject().member("key", package.key);
  writeSide("before", package.before, writeSizes, json);
  writeSide("after", package.after, writeSizes, json);
  json.name("difference")
      .beginObject()
      .member("size", (ByteSum(after.size) - ByteSum(before.size)).value())
      .member("uncompressedBytes",
              (ByteSum(after.uncompressedBytes) - ByteSum(before.uncompressedBytes)).value())
      .endObject()
      .endObject();
}

// The members of a package to delete, or with files, which has no unpacked size.
void writeMembersOfSize(const std::u16string& key, const std::optional<std::int64_t>& before,
                        const std::optional<std::int64_t>& after, JsonWriter& json) {
  const auto writeSize = [](std::int64_t size, JsonWriter& object) { object.member("size", size); };
  json.member("key", key);
  writeSide("before", before, writeSize, json);
  writeSide("after", after, writeSize, json);
  const ByteSum difference = ByteSum(after.value_or(0)) - ByteSum(before.value_or(0));
  json.name("difference").beginObject().member("size", difference.value()).endObject();
}

void writePackageToDelete(const PackageChange& package, JsonWriter& json) {
  const auto size = [](const std::optional<PackageSizes>& side) {
    return side ? std::optional(side->size) : std::nullopt;
  };
  json.beginObject();
  writeMembersOfSize(package.key, size(package.before), size(package.after), json);
  json.endObject();
}

void writePackageWithFiles(const FilesChange& package, JsonWriter& json) {
  json.beginObject();
  writeMembersOfSize(package.key, package.before, package.after, json);
  json.member("component", package.component);
  writeNames("files", package.files, json);
  json.endObject();
}

// A member with three lists: the items added, removed and changed.
template <class Item, class WriteItem>
void writeLists(const char* member, const std::vector<Item>& items, WriteItem writeItem,
                JsonWriter& json) {
  constexpr std::pair<const char*, Change> kLists[] = {
      {"added", Change::kAdded}, {"removed", Change::kRemoved}, {"changed", Change::kChanged}};
  json.name(member).beginObject();
  for (const auto& [name, change] : kLists) {
    json.name(name).beginArray();
    for (const Item& item : items) {
      if (changeOf(item) == change) {
        writeItem(item, json);
      }
    }
    json.endArray();
  }
  json.endObject();
}

void writeTotalsOfAll(const Difference& difference, JsonWriter& json) {
  const Totals& before = difference.totals.before;
  const Totals& after = difference.totals.after;
  const Sides<std::size_t>& files = difference.filesToDelete;
  json.beginObject().name("before").beginObject();
  writeMembers(before, json);
  json.member("filesToDelete", files.before).endObject().name("after").beginObject();
  writeMembers(after, json);
  json.member("filesToDelete", files.after).endObject().name("difference").beginObject();
  writeDifferences(before, after, json);
  json.member("filesToDelete", countDifference(files.before, files.after)).endObject().endObject();
}

void writeRelease(const ReleaseChange& change, JsonWriter& json) {
  json.beginObject()
      .member("field", change.field)
      .member("before", change.before)
      .member("after", change.after)
      .endObject();
}

}  // namespace

void writeJson(const Difference& difference, const std::optional<Growth>& growth,
               std::ostream& out) {
  JsonWriter json(out);
  json.beginObject().member("version", 1).member("different", !difference.isEmpty());
  if (growth) {
    json.name("growth")
        .beginObject()
        .member("bytesToFetch", growth->bytes.value())
        .member("allowed", growth->allowed.value())
        .member("tooLarge", growth->isTooLarge())
        .endObject();
  }
  json.name("totals");
  writeTotalsOfAll(difference, json);
  json.name("doubtfulSizes").beginObject();
  summary::writeMember("before", difference.doubtfulSizes.before, json);
  summary::writeMember("after", difference.doubtfulSizes.after, json);
  json.endObject().name("releases").array(difference.releases, writeRelease);
  writeLists("products", difference.products, writeProduct, json);
  writeLists("components", difference.components, writeComponent, json);
  writeLists("packagesToDelete", difference.packagesToDelete, writePackageToDelete, json);
  writeLists("packagesToExtract", difference.packagesToExtract, writePackageToExtract, json);
  writeLists("filesToDelete", difference.packagesWithFiles, writePackageWithFiles, json);
  json.name("sha256")
      .beginObject()
      .member("before", difference.sha256.before)
      .member("after", difference.sha256.after)
      .endObject();
  json.endObject();
  out << '\n';
}

}  // namespace update_metadata_tool::diff
