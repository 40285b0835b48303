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
#include "terminal/Terminal.h"

namespace update_metadata_tool::diff {
namespace {

using output::toReadableSize;
using output::toVisibleName;
using summary::ByteSum;
using summary::toReadableSize;
using summary::Totals;
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

// With its sign: "+17 bytes", "-1536 bytes (-1.5 KiB)", "0 bytes". A difference that does not fit
// into 64 bits is given as the bound that it exceeds: "up by more than 9223372036854775807 bytes
// (8.0 EiB)".
std::string describeDifference(const ByteSum& difference) {
  if (!difference.value()) {
    return std::string(difference.isNegative() ? "down" : "up") + " by more than " +
           toReadableSize(std::numeric_limits<std::int64_t>::max());
  }
  return (ByteSum() < difference ? "+" : "") + toReadableSize(difference);
}

// The difference in percent: ", +23.8%". Empty if that is meaningless, because the old number is
// not positive or one of them does not fit into 64 bits.
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

std::string describeSides(std::size_t before, std::size_t after) {
  std::string text = std::to_string(before) + " -> " + std::to_string(after);
  if (before < after) {
    text += ", +" + std::to_string(after - before);
  } else if (after < before) {
    text += ", -" + std::to_string(before - after);
  }
  return text;
}

/// A number of bytes in both documents, and its name: "to fetch".
struct Measure {
  const char* name;
  ByteSum before;
  ByteSum after;
  bool isSum = true;  ///< not the size of one package, which is marked if it is doubtful
};

// Of a product or a component.
template <class Item>
std::vector<Measure> measure(const Item& item) {
  const Totals before = item.before.value_or(Totals());
  const Totals after = item.after.value_or(Totals());
  return {{"to fetch", before.bytesToFetch, after.bytesToFetch},
          {"unpacked", before.bytesUnpacked, after.bytesUnpacked},
          {"deleted", before.bytesDeleted, after.bytesDeleted}};
}

// The size of one package.
Measure measureSize(const char* name, std::int64_t before, std::int64_t after) {
  return {name, ByteSum(before), ByteSum(after), false};
}

std::vector<Measure> measurePackageToExtract(const PackageChange& package) {
  const PackageSizes before = package.before.value_or(PackageSizes());
  const PackageSizes after = package.after.value_or(PackageSizes());
  return {measureSize("to fetch", before.size, after.size),
          measureSize("unpacked", before.uncompressedBytes, after.uncompressedBytes)};
}

std::vector<Measure> measurePackageToDelete(const PackageChange& package) {
  return {measureSize("deleted", package.before.value_or(PackageSizes()).size,
                      package.after.value_or(PackageSizes()).size)};
}

// "target.version" for people: "target version".
std::string nameField(std::string field) {
  std::replace(field.begin(), field.end(), '.', ' ');
  return field == "arch" ? "architecture" : field == "target updateLevel" ? "update level" : field;
}

// --- the parts of the text ------------------------------------------------------------------

/// Writes the parts, and notices which documents have doubtful sizes that are shown.
class DifferenceWriter {
 public:
  explicit DifferenceWriter(std::ostream& out) : out_(out) {}

  void write(const Difference& difference) {
    writeTotals(difference);
    writeReleases(difference.releases);
    writeHeading("Products", difference.products);
    for (const ProductChange& product : difference.products) {
      writeItem(product, summary::describeProduct(product.name, product.baseCode),
                measure(product));
      if (changeOf(product) == Change::kChanged) {
        writeNames(product.componentsToExtract, "component to extract: ");
        writeNames(product.componentsToDelete, "component to delete: ");
      }
    }
    writeHeading("Components", difference.components);
    for (const ComponentChange& component : difference.components) {
      writeItem(component, toVisibleName(component.name), measure(component));
    }
    writePackages("Packages to extract", difference.packagesToExtract, measurePackageToExtract);
    writePackages("Packages to delete", difference.packagesToDelete, measurePackageToDelete);
    writeFiles(difference.packagesWithFiles);
    writeDoubts("old", difference.doubtfulSizes.before, isOldMarked_);
    writeDoubts("new", difference.doubtfulSizes.after, isNewMarked_);
  }

  void writeGrowth(const Growth& growth, const ByteSum& before) {
    out_ << '\n';
    writeLine("Growth in bytes to fetch: " + describeDifference(growth.bytes) +
              describeShare(growth.bytes, before) + "; allowed: " + toReadableSize(growth.allowed) +
              "; " + (growth.isTooLarge() ? "over the limit" : "within the limit"));
  }

  void writeLine(const std::string& words) { summary::writeLine(words, width_, out_); }

 private:
  FlowingLine beginLine(const std::string& words) const {
    return summary::beginLine(words, width_);
  }

  // "  * name"
  template <class Item>
  FlowingLine beginItem(const Item& item, const std::string& name) const {
    return beginLine(std::string("  ") + markOf(changeOf(item)) + ' ').name(name);
  }

  std::string describeSide(const Measure& measure, const ByteSum& bytes, bool& isMarked) {
    const bool isDoubted = !measure.isSum && bytes.value() && summary::isDoubtful(*bytes.value());
    isMarked = isMarked || isDoubted;
    return (isDoubted ? summary::kDoubtMark : "") + toReadableSize(bytes);
  }

  std::string describeSides(const Measure& measure) {
    std::string text = describeSide(measure, measure.before, isOldMarked_) + " -> " +
                       describeSide(measure, measure.after, isNewMarked_);
    if (measure.before != measure.after) {
      text += ", " + describeDifference(measure.after - measure.before);
    }
    return text;
  }

  // The side of something added or removed.
  std::string describeOnlySide(const Measure& measure, Change change) {
    return change == Change::kAdded ? describeSide(measure, measure.after, isNewMarked_)
                                    : describeSide(measure, measure.before, isOldMarked_);
  }

  void writeTotals(const Difference& difference) {
    const Totals& before = difference.totals.before;
    const Totals& after = difference.totals.after;
    const Sides<std::size_t>& files = difference.filesToDelete;
    out_ << "Total\n";
    for (const Measure& one : measure(Sides<std::optional<Totals>>{before, after})) {
      writeLine(std::string("  ") + one.name + ": " + describeSides(one) +
                describeShare(one.after - one.before, one.before));
    }
    writeLine("  packages to extract: " +
              diff::describeSides(before.packagesToExtract, after.packagesToExtract));
    writeLine("  packages to delete: " +
              diff::describeSides(before.packagesToDelete, after.packagesToDelete));
    writeLine("  files to delete: " + diff::describeSides(files.before, files.after));
  }

  void writeReleases(const std::vector<ReleaseChange>& releases) {
    if (!releases.empty()) {
      out_ << "\nReleases\n";
    }
    for (const ReleaseChange& change : releases) {
      FlowingLine line = beginLine("  * " + nameField(change.field) + ": ");
      line.name(toVisibleName(change.before)).words(" -> ").name(toVisibleName(change.after));
      out_ << line << '\n';
    }
  }

  // The heading of a list that is not empty: how many were added, removed and changed.
  template <class Item>
  void writeHeading(const std::string& title, const std::vector<Item>& items) {
    if (items.empty()) {
      return;
    }
    const auto countOf = [&](Change change) {
      return std::to_string(std::count_if(
          items.begin(), items.end(), [&](const Item& item) { return changeOf(item) == change; }));
    };
    out_ << '\n';
    writeLine(title + ": " + countOf(Change::kAdded) + " added, " + countOf(Change::kRemoved) +
              " removed, " + countOf(Change::kChanged) + " changed");
  }

  // Something added or removed takes one line; something changed has a line for each measure that
  // differs.
  template <class Item>
  void writeItem(const Item& item, const std::string& name, const std::vector<Measure>& measures) {
    const Change change = changeOf(item);
    std::string sizes;
    FlowingLine line = beginItem(item, name);
    if (change != Change::kChanged) {
      for (const Measure& measure : measures) {
        if ((change == Change::kAdded ? measure.after : measure.before) != ByteSum()) {
          sizes += (sizes.empty() ? "" : "; ") + std::string(measure.name) + ' ' +
                   describeOnlySide(measure, change);
        }
      }
      out_ << line.words(": " + (sizes.empty() ? "no bytes" : sizes)) << '\n';
      return;
    }
    out_ << line << '\n';
    bool isAnyDifferent = false;
    for (const Measure& measure : measures) {
      if (measure.before != measure.after) {
        writeLine(std::string("      ") + measure.name + ": " + describeSides(measure));
        isAnyDifferent = true;
      }
    }
    if (!isAnyDifferent) {
      writeLine("      the same total sizes");
    }
  }

  void writeNames(const NameChanges& names, const std::string& kind) {
    for (const std::u16string& name : names.added) {
      out_ << beginLine("      + " + kind).name(toVisibleName(name)) << '\n';
    }
    for (const std::u16string& name : names.removed) {
      out_ << beginLine("      - " + kind).name(toVisibleName(name)) << '\n';
    }
  }

  void writePackages(const std::string& title, const std::vector<PackageChange>& packages,
                     std::vector<Measure> (*measurePackage)(const PackageChange&)) {
    writeHeading(title, packages);
    for (const PackageChange& package : packages) {
      writeItem(package, toVisibleName(package.key), measurePackage(package));
    }
  }

  // The size of a changed package is shown if it differs; that of any other one always.
  void writeFiles(const std::vector<FilesChange>& packages) {
    writeHeading("Packages with single files to delete", packages);
    for (const FilesChange& package : packages) {
      const std::size_t added = package.files.added.size();
      const std::size_t removed = package.files.removed.size();
      const Measure size =
          measureSize("size", package.before.value_or(0), package.after.value_or(0));
      FlowingLine line = beginItem(package, toVisibleName(package.key));
      if (package.isKeyShared) {
        line.words(" (of component ").name(toVisibleName(package.component)).words(")");
      }
      if (const Change change = changeOf(package); change != Change::kChanged) {
        line.words(": " + output::count(added + removed, "file") + "; size " +
                   describeOnlySide(size, change));
      } else {
        line.words(": " + output::count(added, "file") + " added, " + std::to_string(removed) +
                   " removed");
        if (size.before != size.after) {
          line.words("; size " + describeSides(size));
        }
      }
      out_ << line << '\n';
      writeNames(package.files, "");
    }
  }

  void writeDoubts(const std::string& document, const summary::DoubtfulSizes& sizes,
                   bool areMarked) {
    if (sizes.any()) {
      summary::writeNote("In the " + document + " document, " + describe(sizes, areMarked), width_,
                         out_);
    }
  }

  std::ostream& out_;
  const std::size_t width_ = terminal::outputColumns();
  bool isOldMarked_ = false;
  bool isNewMarked_ = false;
};

}  // namespace

void writeText(const Difference& difference, const std::optional<Growth>& growth,
               std::ostream& out) {
  DifferenceWriter writer(out);
  if (difference.isEmpty()) {
    writer.writeLine("No differences found.");
  } else {
    writer.write(difference);
  }
  if (growth) {
    writer.writeGrowth(*growth, difference.totals.before.bytesToFetch);
  }
}

}  // namespace update_metadata_tool::diff
