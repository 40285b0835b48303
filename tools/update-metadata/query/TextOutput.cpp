#include "query/TextOutput.h"

#include <cstddef>
#include <ostream>
#include <string>

#include "output/Count.h"
#include "output/ReadableSize.h"
#include "output/Text.h"
#include "summary/SummaryText.h"
#include "terminal/Terminal.h"

namespace update_metadata_tool::query {
namespace {

using output::count;
using output::toVisible;

void writeKeys(const PackageKeys& keys, const char* indent, std::ostream& out) {
  for (const std::u16string& key : keys) {
    out << indent << toVisible(key) << '\n';
  }
}

void writePackagesOfOneProduct(const char* title, const std::u16string& baseCode,
                               const PackageKeys& keys, std::ostream& out) {
  out << '\n' << title << " for base code " << toVisible(baseCode) << ": ";
  if (keys.empty()) {
    out << "none\n";
    return;
  }
  out << count(keys.size(), "package") << '\n';
  writeKeys(keys, "  ", out);
}

void writePackagesOfAllProducts(const char* title, const PackageKeysByBaseCode& packages,
                                std::ostream& out) {
  out << '\n' << title << ": ";
  if (packages.empty()) {
    out << "none\n";
    return;
  }
  out << "for " << count(packages.size(), "base code") << '\n';
  for (const auto& [baseCode, keys] : packages) {
    out << "  " << toVisible(baseCode) << ": " << count(keys.size(), "package") << '\n';
    writeKeys(keys, "    ", out);
  }
}

void writePackages(const char* title, const std::optional<std::u16string>& baseCode,
                   const Packages& packages, std::ostream& out) {
  if (const auto* keys = std::get_if<PackageKeys>(&packages)) {
    writePackagesOfOneProduct(title, baseCode.value_or(std::u16string()), *keys, out);
  } else {
    writePackagesOfAllProducts(title, std::get<PackageKeysByBaseCode>(packages), out);
  }
}

bool hasEmptyBaseCode(const Packages& packages) {
  const auto* byBaseCode = std::get_if<PackageKeysByBaseCode>(&packages);
  return byBaseCode != nullptr && byBaseCode->count(std::u16string()) != 0;
}

// Explains the base codes of the lists.
void writeNotes(const Answers& answers, std::ostream& out) {
  const std::optional<std::u16string>& productData = answers.question.productData;
  if (!productData) {
    out << "\nNote: no product data were given (--product-data DIR), so product names are used as "
           "base codes.\n";
  } else if (hasEmptyBaseCode(answers.packagesToDelete) ||
             hasEmptyBaseCode(answers.packagesToExtract)) {
    out << "\nNote: the product data at " << toVisible(*productData)
        << " do not contain every product of the document. A missing product has an empty base "
           "code;\nif there are several, only the first is listed.\n";
  }
}

void writeSizes(const Answers& answers, std::ostream& out) {
  out << "\nSizes of the packages to extract: ";
  if (answers.sizesToExtract.empty()) {
    out << "none\n";
    return;
  }
  out << count(answers.sizesToExtract.size(), "package") << '\n';
  for (const auto& [key, sizes] : answers.sizesToExtract) {
    out << "  " << toVisible(key) << ": " << output::toReadableSize(sizes.first) << ", unpacked "
        << output::toReadableSize(sizes.second) << '\n';
  }
}

void writeFiles(const Answers& answers, std::ostream& out) {
  out << "\nPackages with single files to delete: ";
  if (answers.filesToDelete.empty()) {
    out << "none\n";
    return;
  }
  std::size_t files = 0;
  for (const auto& entry : answers.filesToDelete) {
    files += entry.second.first.size();
  }
  out << count(answers.filesToDelete.size(), "package") << ", " << count(files, "file") << '\n';
  for (const auto& [key, filesAndSize] : answers.filesToDelete) {
    out << "  " << toVisible(key) << ": " << output::toReadableSize(filesAndSize.second) << ", "
        << count(filesAndSize.first.size(), "file") << '\n';
    writeKeys(filesAndSize.first, "    ", out);
  }
}

}  // namespace

void writeText(const Answers& answers, std::ostream& out) {
  summary::writeReleases(answers.base, answers.target, answers.targetUpdateLevel,
                         terminal::kUnlimitedColumns, out);
  writeNotes(answers, out);
  writePackages("Packages to delete", answers.question.baseCode, answers.packagesToDelete, out);
  writePackages("Packages to extract", answers.question.baseCode, answers.packagesToExtract, out);
  writeSizes(answers, out);
  writeFiles(answers, out);
}

}  // namespace update_metadata_tool::query
