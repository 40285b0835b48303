#include "plan/TextOutput.h"

#include <cstdint>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "output/Count.h"
#include "output/ReadableSize.h"
#include "output/Text.h"
#include "summary/DoubtfulSizes.h"
#include "summary/SumText.h"
#include "summary/SummaryText.h"
#include "terminal/DisplayWidth.h"
#include "terminal/FlowingLine.h"
#include "terminal/Table.h"
#include "terminal/Terminal.h"

namespace update_metadata_tool::plan {
namespace {

using output::toReadableSize;
using output::toVisibleName;
using summary::Package;
using summary::toReadableSize;
using terminal::FlowingLine;
using terminal::Table;

constexpr const char* kIndent = "  ";
constexpr const char* kDeepIndent = "    ";

void writeTitle(const std::string& title, std::size_t width, std::ostream& out) {
  out << '\n';
  summary::writeLine(title, width, out);
}

void writeProducts(const Plan& plan, std::size_t width, std::ostream& out) {
  writeTitle("Products: " + std::to_string(plan.products.size()), width, out);
  for (const summary::Product& product : plan.products) {
    out << summary::beginLine(kIndent, width)
               .name(summary::describeProduct(product.name, product.baseCode))
        << '\n';
  }
}

/// A size of packages, with the heading of its column.
struct SizeColumn {
  const char* heading;
  std::int64_t Package::*size;
};

// Each size takes two columns: the short size, and the exact number of bytes.
void writePackages(const std::string& title, const std::vector<Package>& packages,
                   const std::vector<SizeColumn>& columns, std::size_t width, std::ostream& out) {
  std::vector<std::string> headings;
  for (const SizeColumn& column : columns) {
    headings.insert(headings.end(), {column.heading, "Bytes"});
  }
  Table table(title + ": " + std::to_string(packages.size()), std::move(headings),
              terminal::LongNames::kWrap);
  for (const Package& package : packages) {
    std::vector<terminal::Cell> cells;
    for (const SizeColumn& column : columns) {
      cells.push_back({summary::toMarkedSize(package.*column.size)});
      cells.push_back({std::to_string(package.*column.size)});
    }
    table.addRow({{toVisibleName(package.key)}}, std::move(cells));
  }
  out << '\n';
  table.write(width, out);
}

void writeFile(const PlannedFile& file, std::size_t width, std::ostream& out) {
  constexpr std::size_t kStateWidth = 9;
  FlowingLine line = summary::beginLine(kDeepIndent, width);
  const bool isOutside = file.installed && file.installed->state == FileState::kOutside;
  if (file.installed) {
    line.words(
        terminal::padRight(isOutside ? "OUTSIDE" : nameOf(file.installed->state), kStateWidth));
  }
  line.name(toVisibleName(file.path));
  if (file.installed && !file.installed->detail.empty()) {
    line.words(isOutside ? ", leads to " : ": ");
    line.name(output::toVisible(file.installed->detail));
  }
  out << line << '\n';
}

void writeCounts(const InstalledCounts& counts, std::size_t width, std::ostream& out) {
  std::string text;
  for (const auto& [state, count] : counts) {
    text += (text.empty() ? "In the installation: " : ", ") +
            (state == FileState::kFolder ? output::count(count, "folder")
                                         : std::to_string(count) + ' ' + nameOf(state));
  }
  summary::writeLine(text, width, out);
}

void writeFilesToDelete(const Plan& plan, const std::optional<InstalledCounts>& counts,
                        std::size_t width, std::ostream& out) {
  std::size_t files = 0;
  for (const PlannedFiles& package : plan.filesToDelete) {
    files += package.files.size();
  }
  std::string title = "Files to delete: " + std::to_string(files);
  if (const std::size_t packages = plan.filesToDelete.size()) {
    title += ", from " + output::count(packages, "package") +
             (packages == 1 ? " that is" : " that are") + " otherwise kept";
  }
  writeTitle(title, width, out);
  if (counts) {
    writeCounts(*counts, width, out);
  }
  for (const PlannedFiles& package : plan.filesToDelete) {
    const char* const mark = summary::isDoubtful(package.size) ? summary::kDoubtMark : "";
    out << summary::beginLine(kIndent, width)
               .name(toVisibleName(package.key))
               .words(": " + (mark + toReadableSize(package.size)))
        << '\n';
    for (const PlannedFile& file : package.files) {
      writeFile(file, width, out);
    }
  }
}

void writeTotals(const summary::Totals& totals, std::size_t width, std::ostream& out) {
  out << '\n'
      << FlowingLine(width, 0).words("The update fetches " + toReadableSize(totals.bytesToFetch) +
                                     ", unpacks " + toReadableSize(totals.bytesUnpacked) +
                                     " and frees " + toReadableSize(totals.bytesDeleted) +
                                     ": a net change of " + toReadableSize(totals.netChange()) +
                                     ", and a peak need of " + toReadableSize(totals.peakNeed()) +
                                     " before anything is freed.")
      << '\n';
}

void writeNotes(const Plan& plan, std::size_t width, std::ostream& out) {
  for (const summary::Product& product : plan.leftOut) {
    FlowingLine note = summary::beginNote("The product ", width);
    note.name(toVisibleName(product.name));
    note.words(" is not in this plan: the product data assign its base code ");
    note.name(toVisibleName(product.baseCode.value_or(std::u16string())));
    note.words(" to another product.");
    out << '\n' << note << '\n';
  }
  if (plan.doubtfulSizes.any()) {
    summary::writeNote(describe(plan.doubtfulSizes), width, out);
  }
}

}  // namespace

void writeText(const summary::Contents& contents, const Plan& plan,
               const std::optional<InstalledCounts>& counts, std::ostream& out) {
  const std::size_t width = terminal::outputColumns();
  summary::writeReleases(contents, width, out);
  writeProducts(plan, width, out);
  writePackages("Packages to delete", plan.packagesToDelete, {{"Size", &Package::size}}, width,
                out);
  writeFilesToDelete(plan, counts, width, out);
  writePackages("Packages to extract", plan.packagesToExtract,
                {{"To fetch", &Package::size}, {"Unpacked", &Package::uncompressedBytes}}, width,
                out);
  writeNotes(plan, width, out);
  writeTotals(plan.totals, width, out);
}

}  // namespace update_metadata_tool::plan
