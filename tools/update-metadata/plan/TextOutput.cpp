#include "plan/TextOutput.h"

#include <algorithm>
#include <cstdint>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "DisplayWidth.h"
#include "ReadableSize.h"
#include "Text.h"
#include "summary/SumText.h"
#include "summary/SummaryText.h"

namespace update_metadata_tool {
namespace {

constexpr const char* kIndent = "  ";
constexpr const char* kDeepIndent = "    ";
constexpr std::size_t kDeepIndentWidth = 4;

// Names that would have less room behind their sizes get lines of their own.
constexpr std::size_t kNarrowestNames = 16;

void writeTitle(const std::string& title, std::size_t width, std::ostream& out) {
  out << '\n' << wrap(title, width, kDeepIndentWidth) << '\n';
}

/// Writes names with their sizes, which stand in columns in front of them, so that a name can be as
/// long as it likes. On a narrow terminal the sizes stand below the name.
class SizeColumns {
 public:
  explicit SizeColumns(std::size_t width) : width_(width) {}

  /// Makes room for a size in a column. Every size has to be told before the first row is written.
  void makeRoom(std::size_t column, std::int64_t size) {
    columns_.resize(std::max(columns_.size(), column + 1));
    Column& widths = columns_[column];
    widths.shortly = std::max(widths.shortly, displayWidth(toMarkedSize(size)));
    widths.bytes = std::max(widths.bytes, std::to_string(size).size());
  }

  void writeRow(const std::u16string& name, const std::vector<std::int64_t>& sizes,
                std::ostream& out) const {
    std::string line;
    for (std::size_t column = 0; column < sizes.size(); ++column) {
      line.append(kIndent)
          .append(padLeft(toMarkedSize(sizes[column]), columns_[column].shortly))
          .append(kIndent)
          .append(padLeft(std::to_string(sizes[column]), columns_[column].bytes));
    }
    if (displayWidth(line) + kNarrowestNames > width_) {
      out << kIndent << toVisible(name) << '\n' << kIndent << line << '\n';
    } else {
      out << line << kIndent << toVisible(name) << '\n';
    }
  }

 private:
  struct Column {
    std::size_t shortly = 0;
    std::size_t bytes = 0;
  };

  std::size_t width_;
  std::vector<Column> columns_;
};

void writeProducts(const Plan& plan, std::ostream& out) {
  out << "\nProducts: " << plan.products.size() << '\n';
  for (const Product& product : plan.products) {
    out << kIndent << toVisible(product.name);
    if (product.baseCode) {
      out << " (" << toVisible(*product.baseCode) << ')';
    }
    out << '\n';
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
    case FileState::kOutside:
      return "OUTSIDE    ";
    case FileState::kUnknown:
      break;
  }
  return "unknown    ";
}

void writeFile(const PlannedFile& file, std::ostream& out) {
  out << kDeepIndent;
  if (file.installed) {
    out << describe(file.installed->state);
  }
  out << toVisible(file.path);
  if (file.installed && !file.installed->detail.empty()) {
    out << (file.installed->state == FileState::kOutside ? ", leads to " : ": ")
        << toVisible(file.installed->detail);
  }
  out << '\n';
}

void writeFilesToDelete(const Plan& plan, std::size_t width, std::ostream& out) {
  std::size_t files = 0;
  SizeColumns columns(width);
  for (const PlannedFiles& package : plan.filesToDelete) {
    files += package.files.size();
    columns.makeRoom(0, package.size);
  }
  std::string title = "Files to delete: " + std::to_string(files);
  if (!plan.filesToDelete.empty()) {
    title += ", of " + count(plan.filesToDelete.size(), "package") + " kept otherwise";
  }
  writeTitle(title, width, out);
  for (const PlannedFiles& package : plan.filesToDelete) {
    columns.writeRow(package.key, {package.size}, out);
    for (const PlannedFile& file : package.files) {
      writeFile(file, out);
    }
  }
}

// The one sentence that sums up.
void writeTotals(const Totals& totals, std::size_t width, std::ostream& out) {
  out << '\n'
      << wrap("This fetches " + toReadableSize(totals.bytesToFetch) + ", unpacks " +
                  toReadableSize(totals.bytesUnpacked) + " and frees " +
                  toReadableSize(totals.bytesDeleted) + ": a net change of " +
                  toReadableSize(totals.netChange()) + ", with a peak need of " +
                  toReadableSize(totals.peakNeed()) + " before anything is freed.",
              width, 0)
      << '\n';
}

void writeNotes(const Plan& plan, std::size_t width, std::ostream& out) {
  for (const Product& product : plan.leftOut) {
    writeNote("The product " + toVisible(product.name) +
                  " is not in this plan. It has the base code " +
                  toVisible(product.baseCode.value_or(std::u16string())) +
                  ", too, but the product data give that code to another one.",
              width, out);
  }
  if (plan.doubtfulSizes.areAny()) {
    writeNote(describe(plan.doubtfulSizes), width, out);
  }
}

}  // namespace

void writeText(const Contents& contents, const Plan& plan, std::size_t width, std::ostream& out) {
  writeReleases(contents, width, out);
  writeProducts(plan, out);
  writePackagesToDelete(plan, width, out);
  writeFilesToDelete(plan, width, out);
  writePackagesToExtract(plan, width, out);
  writeNotes(plan, width, out);
  writeTotals(plan.totals, width, out);
}

}  // namespace update_metadata_tool
