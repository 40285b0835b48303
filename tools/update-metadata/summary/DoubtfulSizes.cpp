#include "summary/DoubtfulSizes.h"

#include <limits>
#include <vector>

#include "output/Count.h"

namespace update_metadata_tool::summary {
namespace {

// How the library reads a size that does not fit into 64 bits.
constexpr std::int64_t kTruncated = std::numeric_limits<std::int64_t>::min();

void countAmong(const std::vector<Package>& packages, const std::vector<std::size_t>& numbers,
                DoubtfulSizes& sizes) {
  for (const std::size_t number : numbers) {
    sizes.count(packages[number].size, packages[number].uncompressedBytes);
  }
}

}  // namespace

bool isDoubtful(std::int64_t size) {
  return size < 0;
}

bool isDoubtful(const Package& package) {
  return isDoubtful(package.size) || isDoubtful(package.uncompressedBytes);
}

void DoubtfulSizes::count(std::int64_t size, std::int64_t uncompressedBytes) {
  if (size == kTruncated || uncompressedBytes == kTruncated) {
    ++truncated;
  } else if (isDoubtful(size) || isDoubtful(uncompressedBytes)) {
    ++negative;
  }
}

DoubtfulSizes countDoubtfulSizes(const Contents& contents, const Selection& selection) {
  DoubtfulSizes sizes;
  countAmong(contents.packagesToDelete, selection.packagesToDelete, sizes);
  countAmong(contents.packagesToExtract, selection.packagesToExtract, sizes);
  return sizes;
}

std::string describe(const DoubtfulSizes& sizes, bool areMarked) {
  std::string text = areMarked ? "'!' marks doubtful sizes: " : "there are doubtful sizes: ";
  if (sizes.negative != 0) {
    text += output::count(sizes.negative, "package") + " with a negative size";
  }
  if (sizes.truncated != 0) {
    text += (sizes.negative == 0 ? "" : ", ") + output::count(sizes.truncated, "package") +
            " with a size that does not fit into 64 bits and is read as " +
            std::to_string(kTruncated);
  }
  return text + ". Totals include these sizes.";
}

}  // namespace update_metadata_tool::summary
