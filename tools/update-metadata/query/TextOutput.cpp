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

void writeHeading(const std::string& title, bool hasItems, const std::string& description,
                  std::ostream& out) {
  out << '\n' << title << ": " << (hasItems ? description : "none") << '\n';
}

void writePackages(const std::string& title, const Question& question, const Packages& packages,
                   std::ostream& out) {
  if (const auto* keys = std::get_if<PackageKeys>(&packages)) {
    writeHeading(title + " for base code " + toVisible(question.baseCode.value_or(u"")),
                 !keys->empty(), count(keys->size(), "package"), out);
    writeKeys(*keys, "  ", out);
    return;
  }
  const auto& byBaseCode = std::get<PackageKeysByBaseCode>(packages);
  writeHeading(title, !byBaseCode.empty(), "for " + count(byBaseCode.size(), "base code"), out);
  for (const auto& [baseCode, keys] : byBaseCode) {
    out << "  " << toVisible(baseCode) << ": " << count(keys.size(), "package") << '\n';
    writeKeys(keys, "    ", out);
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
  writeHeading("Sizes of the packages to extract", !answers.sizesToExtract.empty(),
               count(answers.sizesToExtract.size(), "package"), out);
  for (const auto& [key, sizes] : answers.sizesToExtract) {
    out << "  " << toVisible(key) << ": " << output::toReadableSize(sizes.first) << ", unpacked "
        << output::toReadableSize(sizes.second) << '\n';
  }
}

void writeFiles(const Answers& answers, std::ostream& out) {
  std::size_t files = 0;
  for (const auto& entry : answers.filesToDelete) {
    files += entry.second.first.size();
  }
  writeHeading("Packages with single files to delete", !answers.filesToDelete.empty(),
               count(answers.filesToDelete.size(), "package") + ", " + count(files, "file"), out);
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
  writePackages("Packages to delete", answers.question, answers.packagesToDelete, out);
  writePackages("Packages to extract", answers.question, answers.packagesToExtract, out);
  writeSizes(answers, out);
  writeFiles(answers, out);
}

}  // namespace update_metadata_tool::query
