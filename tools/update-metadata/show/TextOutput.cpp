#include "show/TextOutput.h"

#include <algorithm>
#include <ostream>
#include <string>
#include <utility>

#include "output/Count.h"
#include "output/Text.h"
#include "summary/DoubtfulSizes.h"
#include "summary/SumText.h"
#include "summary/SummaryText.h"
#include "terminal/Table.h"
#include "terminal/Terminal.h"

namespace update_metadata_tool::show {
namespace {

using output::count;
using output::toVisibleName;
using terminal::Table;

terminal::Cell sizeCell(const summary::ByteSum& sum) {
  return {summary::toShortSize(sum), summary::toPlainNumber(sum)};
}

terminal::Cell sizeCell(std::int64_t bytes) {
  return {summary::toMarkedSize(bytes), std::to_string(bytes)};
}

// A table of names with totals.
Table makeTable(const std::string& heading) {
  return {heading, {"Delete", "Extract", "To fetch", "Unpacked", "Deleted"}};
}

void addRow(terminal::RowName name, const summary::Totals& totals, Table& table) {
  table.addRow(std::move(name), {{std::to_string(totals.packagesToDelete)},
                                 {std::to_string(totals.packagesToExtract)},
                                 sizeCell(totals.bytesToFetch),
                                 sizeCell(totals.bytesUnpacked),
                                 sizeCell(totals.bytesDeleted)});
}

terminal::Label describeComponents(const summary::Totals& totals) {
  return {"", count(totals.components, "component")};
}

terminal::RowName describeProduct(const NamedTotals& product) {
  terminal::Label below = describeComponents(product.totals);
  if (product.baseCode) {
    below = {toVisibleName(*product.baseCode), ", " + below.words};
  }
  return {{toVisibleName(product.name)}, std::move(below)};
}

// "and 3 more products", or "3 products" if none is listed.
std::string describeOthers(std::size_t others, std::size_t listed) {
  return listed == 0 ? count(others, "product") : "and " + count(others, "more product");
}

void writeProducts(const Overview& overview, std::size_t width, std::ostream& out) {
  out << '\n';
  Table table = makeTable("Products");
  for (const NamedTotals& product : overview.largestProducts) {
    addRow(describeProduct(product), product.totals, table);
  }
  // Without sums, which would count packages again that belong to products above.
  const std::size_t listed = overview.largestProducts.size();
  const std::size_t others = overview.products.size() - listed;
  if (others != 0) {
    table.addRow({{"", describeOthers(others, listed)}}, {{}, {}, {}, {}, {}});
  }
  addRow({{"", "Total"}, describeComponents(overview.totals)}, overview.totals, table);
  table.write(width, out);
  std::string files = "Files to delete: " + std::to_string(overview.filesToDelete);
  if (overview.packagesWithFiles != 0) {
    files += ", from " + count(overview.packagesWithFiles, "package");
  }
  summary::writeLine(files, width, out);
}

void writeLargest(const Overview& overview, std::size_t width, std::ostream& out) {
  if (!overview.largestComponents.empty()) {
    out << '\n';
    Table table = makeTable("Largest components");
    for (const NamedTotals& component : overview.largestComponents) {
      addRow({{toVisibleName(component.name)}}, component.totals, table);
    }
    table.write(width, out);
  }
  if (!overview.largestPackages.empty()) {
    out << '\n';
    Table table("Largest packages", {"Action", "Size", "Unpacked"});
    for (const LargePackage& large : overview.largestPackages) {
      table.addRow(
          {{toVisibleName(large.package.key)}},
          {{large.isDeleted ? "delete" : "extract"},
           sizeCell(large.package.size),
           large.isDeleted ? terminal::Cell() : sizeCell(large.package.uncompressedBytes)});
    }
    table.write(width, out);
  }
}

// "3 packages to delete and 1 package to extract", or only one of them if the other is zero.
std::string describeShared(const Overview& overview) {
  std::string text;
  if (overview.sharedPackagesToDelete != 0) {
    text = count(overview.sharedPackagesToDelete, "package") + " to delete";
  }
  if (overview.sharedPackagesToExtract != 0) {
    text += (text.empty() ? "" : " and ") + count(overview.sharedPackagesToExtract, "package") +
            " to extract";
  }
  return text;
}

bool isAnyMarked(const Overview& overview) {
  return std::any_of(overview.largestPackages.begin(), overview.largestPackages.end(),
                     [](const LargePackage& large) { return summary::isDoubtful(large.package); });
}

// Writes what the tables do not show.
void writeNotes(const Overview& overview, std::size_t width, std::ostream& out) {
  const std::string shared = describeShared(overview);
  if (!shared.empty()) {
    summary::writeNote("Several products name " + shared + ": each counts once in the total.",
                       width, out);
  }
  if (overview.doubtfulSizes.any()) {
    const std::string doubts = describe(overview.doubtfulSizes, isAnyMarked(overview));
    summary::writeNote("In this document, " + doubts, width, out);
  }
}

}  // namespace

void writeText(const summary::Contents& contents, const Overview& overview, std::ostream& out) {
  const std::size_t width = terminal::outputColumns();
  summary::writeReleases(contents, width, out);
  writeProducts(overview, width, out);
  writeLargest(overview, width, out);
  writeNotes(overview, width, out);
}

}  // namespace update_metadata_tool::show
