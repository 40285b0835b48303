#include "diff/TextOutput.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "output/Count.h"
#include "output/ReadableSize.h"
#include "output/Text.h"
#include "summary/DoubtfulSizes.h"
#include "summary/SumText.h"
#include "summary/SummaryText.h"
#include "terminal/FlowingLine.h"

namespace update_metadata_tool::diff {
namespace {

using output::toReadableSize;
using output::toVisibleName;
using summary::beginLine;
using summary::ByteSum;
using summary::toReadableSize;
using summary::Totals;
using summary::writeLine;
using terminal::FlowingLine;

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

// With its sign: "+17 bytes", "-1536 bytes (-1.5 KiB)", "0 bytes". One that does not fit into 64
// bits is told by the bound that it passes: "up by more than 9223372036854775807 bytes (8.0 EiB)".
std::string describeDifference(const ByteSum& difference) {
  if (!difference.value()) {
    return std::string(difference.isNegative() ? "down" : "up") + " by more than " +
           toReadableSize(std::numeric_limits<std::int64_t>::max());
  }
  return (ByteSum() < difference ? "+" : "") + toReadableSize(difference);
}

// What a difference is of what it changes: ", +23.8%". Empty where that says nothing: of nothing,
// of less than nothing, and of what does not fit into 64 bits.
std::string describeShare(const ByteSum& difference, const ByteSum& before) {
  const std::optional<std::int64_t> part = difference.value();
  const std::optional<std::int64_t> whole = before.value();
  if (!part || !whole || *part == 0 || *whole <= 0) {
    return "";
  }
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), ", %+.1f%%",
                100 * static_cast<double>(*part) / static_cast<double>(*whole));
  return text.data();
}

/// A number of bytes on both sides, and what it is: "to fetch".
struct Measure {
  const char* name;
  ByteSum before;
  ByteSum after;
  bool isSum = true;  ///< else the size of one package, which is marked if it is doubtful
};

std::vector<Measure> measure(const Totals& before, const Totals& after) {
  return {{"to fetch", before.bytesToFetch, after.bytesToFetch},
          {"unpacked", before.bytesUnpacked, after.bytesUnpacked},
          {"deleted", before.bytesDeleted, after.bytesDeleted}};
}

// The size of one package.
Measure measure(const char* name, std::int64_t before, std::int64_t after) {
  return {name, ByteSum(before), ByteSum(after), false};
}

std::vector<Measure> measurePackageToExtract(const PackageChange& package) {
  const PackageSizes before = package.before.value_or(PackageSizes());
  const PackageSizes after = package.after.value_or(PackageSizes());
  return {measure("to fetch", before.size, after.size),
          measure("unpacked", before.uncompressedBytes, after.uncompressedBytes)};
}

std::vector<Measure> measurePackageToDelete(const PackageChange& package) {
  return {measure("deleted", package.before.value_or(PackageSizes()).size,
                  package.after.value_or(PackageSizes()).size)};
}

Measure measurePackageWithFiles(const FilesChange& package) {
  return measure("size", package.before.value_or(0), package.after.value_or(0));
}

bool isMarked(const Measure& measure, ByteSum Measure::*side) {
  const std::optional<std::int64_t> bytes = (measure.*side).value();
  return !measure.isSum && bytes && summary::isDoubtful(*bytes);
}

std::string describeSide(const Measure& measure, ByteSum Measure::*side) {
  return (isMarked(measure, side) ? summary::kDoubtMark : "") + toReadableSize(measure.*side);
}

std::string describeSides(const Measure& measure) {
  std::string text =
      describeSide(measure, &Measure::before) + " -> " + describeSide(measure, &Measure::after);
  if (measure.before != measure.after) {
    text += ", " + describeDifference(measure.after - measure.before);
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

// --- parts ----------------------------------------------------------------------------------

// The heading of a list, if there is one: how much of it was added, removed and changed.
template <class Item>
void writeHeading(const std::string& title, const std::vector<Item>& items, std::size_t width,
                  std::ostream& out) {
  if (items.empty()) {
    return;
  }
  const auto countOf = [&](Change change) {
    return std::to_string(std::count_if(
        items.begin(), items.end(), [&](const Item& item) { return changeOf(item) == change; }));
  };
  out << '\n';
  writeLine(title + ": " + countOf(Change::kAdded) + " added, " + countOf(Change::kRemoved) +
                " removed, " + countOf(Change::kChanged) + " changed",
            width, out);
}

// "  * name"
template <class Item>
FlowingLine beginItem(const Item& item, const std::string& name, std::size_t width) {
  return beginLine(std::string("  ") + markOf(changeOf(item)) + ' ', width).name(name);
}

// The side that something added or removed has.
template <class Item>
ByteSum Measure::*onlySideOf(const Item& item) {
  return changeOf(item) == Change::kAdded ? &Measure::after : &Measure::before;
}

// What something measures, but for what is zero.
std::string describe(const std::vector<Measure>& measures, ByteSum Measure::*side) {
  std::string text;
  for (const Measure& measure : measures) {
    if (measure.*side != ByteSum()) {
      text += (text.empty() ? "" : "; ") + std::string(measure.name) + ' ';
      text += describeSide(measure, side);
    }
  }
  return text.empty() ? "no bytes" : text;
}

// What was added or removed takes a line; of what changed, each measure that differs takes another.
template <class Item>
void writeItem(const Item& item, const std::string& name, const std::vector<Measure>& measures,
               std::size_t width, std::ostream& out) {
  if (changeOf(item) != Change::kChanged) {
    out << beginItem(item, name, width).words(": " + describe(measures, onlySideOf(item))) << '\n';
    return;
  }
  out << beginItem(item, name, width) << '\n';
  bool isOneDifferent = false;
  for (const Measure& measure : measures) {
    if (measure.before != measure.after) {
      writeLine(std::string("      ") + measure.name + ": " + describeSides(measure), width, out);
      isOneDifferent = true;
    }
  }
  if (!isOneDifferent) {
    writeLine("      the same sizes in all", width, out);
  }
}

void writeNames(const NameChanges& names, const std::string& kind, std::size_t width,
                std::ostream& out) {
  for (const std::u16string& name : names.added) {
    out << beginLine("      + " + kind, width).name(toVisibleName(name)) << '\n';
  }
  for (const std::u16string& name : names.removed) {
    out << beginLine("      - " + kind, width).name(toVisibleName(name)) << '\n';
  }
}

// "target.version" for people: "target version".
std::string nameField(std::string field) {
  std::replace(field.begin(), field.end(), '.', ' ');
  return field == "arch" ? "architecture" : field == "target updateLevel" ? "update level" : field;
}

void writeReleases(const std::vector<ReleaseChange>& releases, std::size_t width,
                   std::ostream& out) {
  if (!releases.empty()) {
    out << "\nReleases\n";
  }
  for (const ReleaseChange& change : releases) {
    FlowingLine line = beginLine("  * " + nameField(change.field) + ": ", width);
    line.name(toVisibleName(change.before)).words(" -> ").name(toVisibleName(change.after));
    out << line << '\n';
  }
}

void writeTotals(const Difference& difference, std::size_t width, std::ostream& out) {
  const Totals& before = difference.totals.before;
  const Totals& after = difference.totals.after;
  const Sides<std::size_t>& files = difference.filesToDelete;
  out << "In all\n";
  for (const Measure& one : measure(before, after)) {
    writeLine(std::string("  ") + one.name + ": " + describeSides(one) +
                  describeShare(one.after - one.before, one.before),
              width, out);
  }
  const auto writeCounts = [&](const std::string& what, std::size_t old, std::size_t recent) {
    writeLine("  " + what + ": " + describeSides(old, recent), width, out);
  };
  writeCounts("packages to extract", before.packagesToExtract, after.packagesToExtract);
  writeCounts("packages to delete", before.packagesToDelete, after.packagesToDelete);
  writeCounts("files to delete", files.before, files.after);
}

void writeProducts(const std::vector<ProductChange>& products, std::size_t width,
                   std::ostream& out) {
  writeHeading("Products", products, width, out);
  for (const ProductChange& product : products) {
    writeItem(product, summary::describeProduct(product.name, product.baseCode),
              measure(product.before.value_or(Totals()), product.after.value_or(Totals())), width,
              out);
    if (changeOf(product) == Change::kChanged) {
      writeNames(product.componentsToExtract, "component to extract: ", width, out);
      writeNames(product.componentsToDelete, "component to delete: ", width, out);
    }
  }
}

void writeComponents(const std::vector<ComponentChange>& components, std::size_t width,
                     std::ostream& out) {
  writeHeading("Components", components, width, out);
  for (const ComponentChange& component : components) {
    writeItem(component, toVisibleName(component.name),
              measure(component.before.value_or(Totals()), component.after.value_or(Totals())),
              width, out);
  }
}

void writePackagesToExtract(const std::vector<PackageChange>& packages, std::size_t width,
                            std::ostream& out) {
  writeHeading("Packages to extract", packages, width, out);
  for (const PackageChange& package : packages) {
    writeItem(package, toVisibleName(package.key), measurePackageToExtract(package), width, out);
  }
}

void writePackagesToDelete(const std::vector<PackageChange>& packages, std::size_t width,
                           std::ostream& out) {
  writeHeading("Packages to delete", packages, width, out);
  for (const PackageChange& package : packages) {
    writeItem(package, toVisibleName(package.key), measurePackageToDelete(package), width, out);
  }
}

// A key that several components share does not tell which one is meant.
FlowingLine beginFiles(const FilesChange& package, std::size_t width) {
  FlowingLine line = beginItem(package, toVisibleName(package.key), width);
  if (package.isKeyShared) {
    line.words(" (of component ").name(toVisibleName(package.component)).words(")");
  }
  return line.words(": ");
}

// Of a changed package the size is told if it differs; of another one always.
void writeFiles(const std::vector<FilesChange>& packages, std::size_t width, std::ostream& out) {
  writeHeading("Packages with single files to delete", packages, width, out);
  for (const FilesChange& package : packages) {
    const std::size_t added = package.files.added.size();
    const std::size_t removed = package.files.removed.size();
    const Measure size = measurePackageWithFiles(package);
    FlowingLine line = beginFiles(package, width);
    if (changeOf(package) != Change::kChanged) {
      line.words(output::count(added + removed, "file") + "; size ");
      line.words(describeSide(size, onlySideOf(package)));
    } else {
      line.words(output::count(added, "file") + " added, " + std::to_string(removed) + " removed");
      if (size.before != size.after) {
        line.words("; size " + describeSides(size));
      }
    }
    out << line << '\n';
    writeNames(package.files, "", width, out);
  }
}

void writeDifference(const Difference& difference, std::size_t width, std::ostream& out) {
  writeTotals(difference, width, out);
  writeReleases(difference.releases, width, out);
  writeProducts(difference.products, width, out);
  writeComponents(difference.components, width, out);
  writePackagesToExtract(difference.packagesToExtract, width, out);
  writePackagesToDelete(difference.packagesToDelete, width, out);
  writeFiles(difference.packagesWithFiles, width, out);
}

// Tells whether a size is shown with the mark, of the old document or of the new one.
bool isOneMarked(const Difference& difference, ByteSum Measure::*side) {
  const auto isShownMarked = [side](const Measure& measure) {
    return measure.before != measure.after && isMarked(measure, side);
  };
  const auto isAmong = [&](const std::vector<Measure>& measures) {
    return std::any_of(measures.begin(), measures.end(), isShownMarked);
  };
  const auto isIn = [](const auto& items, auto isMarkedIn) {
    return std::any_of(items.begin(), items.end(), isMarkedIn);
  };
  return isIn(difference.packagesToExtract,
              [&](const PackageChange& package) {
                return isAmong(measurePackageToExtract(package));
              }) ||
         isIn(difference.packagesToDelete,
              [&](const PackageChange& package) {
                return isAmong(measurePackageToDelete(package));
              }) ||
         isIn(difference.packagesWithFiles, [&](const FilesChange& package) {
           return isShownMarked(measurePackageWithFiles(package));
         });
}

void writeDoubts(const std::string& document, const summary::DoubtfulSizes& sizes, bool areMarked,
                 std::size_t width, std::ostream& out) {
  if (sizes.any()) {
    summary::writeNote("In the " + document + " document, " + describe(sizes, areMarked), width,
                       out);
  }
}

void writeNotes(const Difference& difference, std::size_t width, std::ostream& out) {
  const Sides<summary::DoubtfulSizes>& sizes = difference.doubtfulSizes;
  writeDoubts("old", sizes.before, isOneMarked(difference, &Measure::before), width, out);
  writeDoubts("new", sizes.after, isOneMarked(difference, &Measure::after), width, out);
}

void writeGrowth(const Growth& growth, const ByteSum& before, std::size_t width,
                 std::ostream& out) {
  out << '\n';
  writeLine("Growth of the bytes to fetch: " + describeDifference(growth.bytes) +
                describeShare(growth.bytes, before) +
                "; allowed: " + toReadableSize(growth.allowed) + "; " +
                (growth.isTooLarge() ? "too much" : "within the limit"),
            width, out);
}

}  // namespace

void writeText(const Difference& difference, const std::optional<Growth>& growth, std::size_t width,
               std::ostream& out) {
  if (difference.isEmpty()) {
    writeLine("Both documents say the same.", width, out);
  } else {
    writeDifference(difference, width, out);
    writeNotes(difference, width, out);
  }
  if (growth) {
    writeGrowth(*growth, difference.totals.before.bytesToFetch, width, out);
  }
}

}  // namespace update_metadata_tool::diff
