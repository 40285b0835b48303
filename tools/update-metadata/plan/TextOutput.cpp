#include "plan/TextOutput.h"

#include <algorithm>
#include <cstdint>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "output/Count.h"
#include "output/ReadableSize.h"
#include "output/Text.h"
#include "summary/SumText.h"
#include "summary/SummaryText.h"
#include "terminal/DisplayWidth.h"
#include "terminal/FlowingLine.h"

namespace update_metadata_tool::plan {
namespace {

using output::toReadableSize;
using output::toVisibleName;
using summary::Package;
using summary::toReadableSize;
using terminal::FlowingLine;

constexpr const char* kIndent = "  ";
constexpr const char* kDeepIndent = "    ";

// Names that would have less room behind their sizes get lines of their own.
constexpr std::size_t kNarrowestNames = 16;

void writeTitle(const std::string& title, std::size_t width, std::ostream& out) {
  out << '\n';
  summary::writeLine(title, width, out);
}

/// Writes names with their sizes, which stand in columns in front of them, so that a name can be as
/// long as it likes and goes on in further lines. On a narrow terminal each size stands below it.
class SizeColumns {
 public:
  explicit SizeColumns(std::size_t width) : width_(width) {}

  /// Makes room for a size in a column. Every size has to be told before the first row is written.
  void makeRoom(std::size_t column, std::int64_t size) {
    columns_.resize(std::max(columns_.size(), column + 1));
    Column& widths = columns_[column];
    widths.shortly = std::max(widths.shortly, terminal::displayWidth(summary::toMarkedSize(size)));
    widths.bytes = std::max(widths.bytes, std::to_string(size).size());
  }

  void writeRow(const std::u16string& name, const std::vector<std::int64_t>& sizes,
                std::ostream& out) const {
    std::string line;
    for (std::size_t column = 0; column < sizes.size(); ++column) {
      line += describeSize(columns_[column], sizes[column]);
    }
    if (terminal::displayWidth(line) + kNarrowestNames <= width_) {
      out << beginRow(line + kIndent).name(toVisibleName(name)) << '\n';
      return;
    }
    out << beginRow(kIndent).name(toVisibleName(name)) << '\n';
    for (const std::int64_t size : sizes) {
      out << beginRow(kIndent + describeSize(widest(), size)) << '\n';
    }
  }

 private:
  struct Column {
    std::size_t shortly = 0;
    std::size_t bytes = 0;
  };

  FlowingLine beginRow(const std::string& words) const {
    constexpr std::size_t kIndentOfFurtherLines = 6;
    return FlowingLine(width_, kIndentOfFurtherLines).words(words);
  }

  static std::string describeSize(const Column& widths, std::int64_t size) {
    return kIndent + terminal::padLeft(summary::toMarkedSize(size), widths.shortly) + kIndent +
           terminal::padLeft(std::to_string(size), widths.bytes);
  }

  // Wide enough for the sizes of every column.
  Column widest() const {
    Column widths;
    for (const Column& column : columns_) {
      widths.shortly = std::max(widths.shortly, column.shortly);
      widths.bytes = std::max(widths.bytes, column.bytes);
    }
    return widths;
  }

  std::size_t width_;
  std::vector<Column> columns_;
};

void writeProducts(const Plan& plan, std::size_t width, std::ostream& out) {
  writeTitle("Products: " + std::to_string(plan.products.size()), width, out);
  for (const summary::Product& product : plan.products) {
    out << summary::beginLine(kIndent, width)
               .name(summary::describeProduct(product.name, product.baseCode))
        << '\n';
  }
}

void writePackagesToDelete(const Plan& plan, std::size_t width, std::ostream& out) {
  const std::vector<Package>& packages = plan.packagesToDelete;
  writeTitle("Packages to delete: " + std::to_string(packages.size()), width, out);
  SizeColumns columns(width);
  for (const Package& package : packages) {
    columns.makeRoom(0, package.size);
  }
  for (const Package& package : packages) {
    columns.writeRow(package.key, {package.size}, out);
  }
}

void writePackagesToExtract(const Plan& plan, std::size_t width, std::ostream& out) {
  const std::vector<Package>& packages = plan.packagesToExtract;
  const std::string number = std::to_string(packages.size());
  writeTitle("Packages to extract: " + number +
                 (packages.empty() ? "" : ", with bytes to fetch and bytes after unpacking"),
             width, out);
  SizeColumns columns(width);
  for (const Package& package : packages) {
    columns.makeRoom(0, package.size);
    columns.makeRoom(1, package.uncompressedBytes);
  }
  for (const Package& package : packages) {
    columns.writeRow(package.key, {package.size, package.uncompressedBytes}, out);
  }
}

const char* describe(FileState state) {
  switch (state) {
    case FileState::kPresent:
      return "there      ";
    case FileState::kMissing:
      return "not there  ";
    case FileState::kFolder:
      return "a folder   ";
    case FileState::kOutside:
      return "OUTSIDE    ";
    case FileState::kUnknown:
      break;
  }
  return "unknown    ";
}

void writeFile(const PlannedFile& file, std::size_t width, std::ostream& out) {
  FlowingLine line = summary::beginLine(kDeepIndent, width);
  if (file.installed) {
    line.words(describe(file.installed->state));
  }
  line.name(toVisibleName(file.path));
  if (file.installed && !file.installed->detail.empty()) {
    line.words(file.installed->state == FileState::kOutside ? ", leads to " : ": ");
    line.name(output::toVisible(file.installed->detail));
  }
  out << line << '\n';
}

void writeCounts(const InstalledCounts& counts, std::size_t width, std::ostream& out) {
  summary::writeLine("In the installation: " + std::to_string(counts.present) + " there, " +
                         std::to_string(counts.missing) + " not there, " +
                         output::count(counts.folder, "folder") + ", " +
                         std::to_string(counts.outside) + " outside, " +
                         std::to_string(counts.unknown) + " unknown",
                     width, out);
}

void writeFilesToDelete(const Plan& plan, const std::optional<InstalledCounts>& counts,
                        std::size_t width, std::ostream& out) {
  std::size_t files = 0;
  SizeColumns columns(width);
  for (const PlannedFiles& package : plan.filesToDelete) {
    files += package.files.size();
    columns.makeRoom(0, package.size);
  }
  std::string title = "Files to delete: " + std::to_string(files);
  if (!plan.filesToDelete.empty()) {
    title += ", of " + output::count(plan.filesToDelete.size(), "package") + " kept otherwise";
  }
  writeTitle(title, width, out);
  if (counts) {
    writeCounts(*counts, width, out);
  }
  for (const PlannedFiles& package : plan.filesToDelete) {
    columns.writeRow(package.key, {package.size}, out);
    for (const PlannedFile& file : package.files) {
      writeFile(file, width, out);
    }
  }
}

// The one sentence that sums up.
void writeTotals(const summary::Totals& totals, std::size_t width, std::ostream& out) {
  out << '\n'
      << FlowingLine(width, 0).words("This fetches " + toReadableSize(totals.bytesToFetch) +
                                     ", unpacks " + toReadableSize(totals.bytesUnpacked) +
                                     " and frees " + toReadableSize(totals.bytesDeleted) +
                                     ": a net change of " + toReadableSize(totals.netChange()) +
                                     ", with a peak need of " + toReadableSize(totals.peakNeed()) +
                                     " before anything is freed.")
      << '\n';
}

void writeNotes(const Plan& plan, std::size_t width, std::ostream& out) {
  for (const summary::Product& product : plan.leftOut) {
    FlowingLine note = summary::beginNote("The product ", width);
    note.name(toVisibleName(product.name)).words(" is not in this plan. It has the base code ");
    note.name(toVisibleName(product.baseCode.value_or(std::u16string())));
    note.words(", too, but the product data give that code to another one.");
    out << '\n' << note << '\n';
  }
  if (plan.doubtfulSizes.any()) {
    summary::writeNote(describe(plan.doubtfulSizes), width, out);
  }
}

}  // namespace

void writeText(const summary::Contents& contents, const Plan& plan,
               const std::optional<InstalledCounts>& counts, std::size_t width, std::ostream& out) {
  summary::writeReleases(contents, width, out);
  writeProducts(plan, width, out);
  writePackagesToDelete(plan, width, out);
  writeFilesToDelete(plan, counts, width, out);
  writePackagesToExtract(plan, width, out);
  writeNotes(plan, width, out);
  writeTotals(plan.totals, width, out);
}

}  // namespace update_metadata_tool::plan
