#include "diff/TextOutput.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

#include "ReadableSize.h"
#include "Text.h"
#include "summary/SumText.h"
#include "summary/SummaryText.h"

namespace update_metadata_tool {
namespace {

char markOf(Change change) {
  switch (change) {
    case Change::kAdded:
      return '+';
    case Change::kRemoved:
      return '-';
    case Change::kChanged:
      break;
  }
  return '*';
}

// --- both sides of a number -----------------------------------------------------------------

// With its sign: "+17 bytes", "-1536 bytes (-1.5 KiB)", "0 bytes".
std::string describeDifference(const ByteSum& difference) {
  return (ByteSum() < difference ? "+" : "") + toReadableSize(difference);
}

std::string describeSides(const ByteSum& before, const ByteSum& after) {
  std::string text = toReadableSize(before) + " -> " + toReadableSize(after);
  if (before != after) {
    text += ", " + describeDifference(after - before);
  }
  return text;
}

std::string describeSides(std::size_t before, std::size_t after) {
  std::string text = std::to_string(before) + " -> " + std::to_string(after);
  if (before < after) {
    text += ", +" + std::to_string(after - before);
  } else if (after < before) {
    text += ", -" + std::to_string(before - after);
  }
  return text;
}

/// A number of bytes on both sides, and what it is: "to fetch".
struct Measure {
  const char* name;
  ByteSum before;
  ByteSum after;
};

std::vector<Measure> measure(const Totals& before, const Totals& after) {
  return {{"to fetch", before.bytesToFetch, after.bytesToFetch},
          {"unpacked", before.bytesUnpacked, after.bytesUnpacked},
          {"deleted", before.bytesDeleted, after.bytesDeleted}};
}

// --- parts ----------------------------------------------------------------------------------

// The heading of a list, if there is one: how much of it was added, removed and changed.
template <class Item>
void writeHeading(const char* title, const std::vector<Item>& items, std::ostream& out) {
  if (items.empty()) {
    return;
  }
  const auto countOf = [&](Change change) {
    return std::count_if(items.begin(), items.end(),
                         [&](const Item& item) { return changeOf(item) == change; });
  };
  out << '\n'
      << title << ": " << countOf(Change::kAdded) << " added, " << countOf(Change::kRemoved)
      << " removed, " << countOf(Change::kChanged) << " changed\n";
}

// What something measures, but for what is zero.
std::string describe(const std::vector<Measure>& measures, ByteSum Measure::*side) {
  std::string text;
  for (const Measure& measure : measures) {
    if (measure.*side != ByteSum()) {
      text += (text.empty() ? "" : "; ") + std::string(measure.name) + ' ';
      text += toReadableSize(measure.*side);
    }
  }
  return text.empty() ? "no bytes" : text;
}

// What was added or removed takes a line; of what changed, each measure that differs takes another.
template <class Item>
void writeItem(const Item& item, const std::string& name, const std::vector<Measure>& measures,
               std::ostream& out) {
  const Change change = changeOf(item);
  out << "  " << markOf(change) << ' ' << name;
  if (change != Change::kChanged) {
    const auto side = change == Change::kAdded ? &Measure::after : &Measure::before;
    out << ": " << describe(measures, side) << '\n';
    return;
  }
  bool isOneDifferent = false;
  out << '\n';
  for (const Measure& measure : measures) {
    if (measure.before != measure.after) {
      out << "      " << measure.name << ": " << describeSides(measure.before, measure.after)
          << '\n';
      isOneDifferent = true;
    }
  }
  if (!isOneDifferent) {
    out << "      the same sizes in all\n";
  }
}

void writeNames(const NameChanges& names, const char* kind, std::ostream& out) {
  for (const std::u16string& name : names.added) {
    out << "      + " << kind << toVisible(name) << '\n';
  }
  for (const std::u16string& name : names.removed) {
    out << "      - " << kind << toVisible(name) << '\n';
  }
}

// "target.version" for people: "target version".
std::string nameField(std::string field) {
  std::replace(field.begin(), field.end(), '.', ' ');
  return field == "arch" ? "architecture" : field == "target updateLevel" ? "update level" : field;
}

void writeReleases(const std::vector<ReleaseChange>& releases, std::ostream& out) {
  if (!releases.empty()) {
    out << "\nReleases\n";
  }
  for (const ReleaseChange& change : releases) {
    out << "  * " << nameField(change.field) << ": " << toVisible(change.before) << " -> "
        << toVisible(change.after) << '\n';
  }
}

void writeTotals(const Difference& difference, std::ostream& out) {
  const Totals& before = difference.totals.before;
  const Totals& after = difference.totals.after;
  out << "In all\n";
  for (const Measure& one : measure(before, after)) {
    out << "  " << one.name << ": " << describeSides(one.before, one.after) << '\n';
  }
  out << "  packages to extract: "
      << describeSides(before.packagesToExtract, after.packagesToExtract)
      << "\n  packages to delete: "
      << describeSides(before.packagesToDelete, after.packagesToDelete) << "\n  files to delete: "
      << describeSides(difference.filesToDelete.before, difference.filesToDelete.after) << '\n';
}

void writeProducts(const std::vector<ProductChange>& products, std::ostream& out) {
  writeHeading("Products", products, out);
  for (const ProductChange& product : products) {
    std::string name = toVisible(product.name);
    if (product.baseCode) {
      name += " (" + toVisible(*product.baseCode) + ')';
    }
    writeItem(product, name,
              measure(product.before.value_or(Totals()), product.after.value_or(Totals())), out);
    if (changeOf(product) == Change::kChanged) {
      writeNames(product.componentsToExtract, "component to extract: ", out);
      writeNames(product.componentsToDelete, "component to delete: ", out);
    }
  }
}

void writeComponents(const std::vector<ComponentChange>& components, std::ostream& out) {
  writeHeading("Components", components, out);
  for (const ComponentChange& component : components) {
    writeItem(component, toVisible(component.name),
              measure(component.before.value_or(Totals()), component.after.value_or(Totals())),
              out);
  }
}

void writePackagesToExtract(const std::vector<PackageChange>& packages, std::ostream& out) {
  writeHeading("Packages to extract", packages, out);
  for (const PackageChange& package : packages) {
    const PackageSizes before = package.before.value_or(PackageSizes());
    const PackageSizes after = package.after.value_or(PackageSizes());
    writeItem(package, toVisible(package.key),
              {{"to fetch", ByteSum(before.size), ByteSum(after.size)},
               {"unpacked", ByteSum(before.uncompressedBytes), ByteSum(after.uncompressedBytes)}},
              out);
  }
}

void writePackagesToDelete(const std::vector<PackageChange>& packages, std::ostream& out) {
  writeHeading("Packages to delete", packages, out);
  for (const PackageChange& package : packages) {
    writeItem(package, toVisible(package.key),
              {{"deleted", ByteSum(package.before.value_or(PackageSizes()).size),
                ByteSum(package.after.value_or(PackageSizes()).size)}},
              out);
  }
}

void writeFiles(const std::vector<FilesChange>& packages, std::ostream& out) {
  writeHeading("Packages with single files to delete", packages, out);
  for (const FilesChange& package : packages) {
    const Change change = changeOf(package);
    out << "  " << markOf(change) << ' ' << toVisible(package.key) << ": ";
    if (change == Change::kChanged) {
      out << count(package.files.added.size(), "file") << " added, " << package.files.removed.size()
          << " removed";
    } else {
      out << count(package.files.added.size() + package.files.removed.size(), "file");
    }
    if (change == Change::kChanged && package.before != package.after) {
      out << "; size " << describeSides(ByteSum(*package.before), ByteSum(*package.after));
    }
    out << '\n';
    writeNames(package.files, "", out);
  }
}

void writeDifference(const Difference& difference, std::ostream& out) {
  writeTotals(difference, out);
  writeReleases(difference.releases, out);
  writeProducts(difference.products, out);
  writeComponents(difference.components, out);
  writePackagesToExtract(difference.packagesToExtract, out);
  writePackagesToDelete(difference.packagesToDelete, out);
  writeFiles(difference.packagesWithFiles, out);
}

void writeGrowth(const Growth& growth, std::ostream& out) {
  out << "\nGrowth of the bytes to fetch: " << describeDifference(growth.bytes)
      << "; allowed: " << toReadableSize(growth.allowed) << "; "
      << (growth.isTooLarge() ? "too much" : "within the limit") << '\n';
}

}  // namespace

void writeText(const Difference& difference, const std::optional<Growth>& growth,
               std::ostream& out) {
  if (difference.isEmpty()) {
    out << "Both documents say the same.\n";
  } else {
    writeDifference(difference, out);
  }
  if (growth) {
    writeGrowth(*growth, out);
  }
}

}  // namespace update_metadata_tool
