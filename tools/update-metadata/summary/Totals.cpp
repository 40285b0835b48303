#include "summary/Totals.h"

#include <algorithm>
#include <numeric>

namespace update_metadata_tool::summary {
namespace {

using Numbers = std::vector<std::size_t>;

// Appends those of `numbers` that are not selected yet.
void selectEach(const Numbers& numbers, std::vector<bool>& isSelected, Numbers& selected) {
  for (const std::size_t number : numbers) {
    if (!isSelected[number]) {
      isSelected[number] = true;
      selected.push_back(number);
    }
  }
}

// Sorts the selection and clears the flags for the next one.
void finishSelection(Numbers& selected, std::vector<bool>& isSelected) {
  for (const std::size_t number : selected) {
    isSelected[number] = false;
  }
  if (!std::is_sorted(selected.begin(), selected.end())) {
    std::sort(selected.begin(), selected.end());
  }
}

Numbers numbersBelow(std::size_t end) {
  Numbers numbers(end);
  std::iota(numbers.begin(), numbers.end(), std::size_t{0});
  return numbers;
}

}  // namespace

Tally::Tally(const Contents& contents)
    : contents_(contents),
      isComponentSelected_(contents.components.size()),
      isSelectedToDelete_(contents.packagesToDelete.size()),
      isSelectedToExtract_(contents.packagesToExtract.size()) {}

Selection Tally::select(const std::vector<std::size_t>& products) {
  Selection selection;
  for (const std::size_t number : products) {
    const Product& product = contents_.products[number];
    for (const std::size_t component : product.componentsToDelete) {
      selectEach(contents_.components[component].packagesToDelete, isSelectedToDelete_,
                 selection.packagesToDelete);
    }
    for (const std::size_t component : product.componentsToExtract) {
      selectEach(contents_.components[component].packagesToExtract, isSelectedToExtract_,
                 selection.packagesToExtract);
    }
    selectEach(product.componentsToDelete, isComponentSelected_, selection.components);
    selectEach(product.componentsToExtract, isComponentSelected_, selection.components);
  }
  finishSelection(selection.components, isComponentSelected_);
  finishSelection(selection.packagesToDelete, isSelectedToDelete_);
  finishSelection(selection.packagesToExtract, isSelectedToExtract_);
  return selection;
}

Selection Tally::selectAll() const {
  return {numbersBelow(contents_.components.size()),
          numbersBelow(contents_.packagesToDelete.size()),
          numbersBelow(contents_.packagesToExtract.size())};
}

Totals Tally::totalsOf(const Selection& selection) const {
  Totals totals;
  totals.components = selection.components.size();
  totals.packagesToDelete = selection.packagesToDelete.size();
  totals.packagesToExtract = selection.packagesToExtract.size();
  for (const std::size_t number : selection.packagesToDelete) {
    totals.bytesDeleted += ByteSum(contents_.packagesToDelete[number].size);
  }
  for (const std::size_t number : selection.packagesToExtract) {
    const Package& package = contents_.packagesToExtract[number];
    totals.bytesToFetch += ByteSum(package.size);
    totals.bytesUnpacked += ByteSum(package.uncompressedBytes);
  }
  return totals;
}

Totals Tally::totalsOfComponent(std::size_t component) const {
  const Component& named = contents_.components[component];
  return totalsOf({{component}, named.packagesToDelete, named.packagesToExtract});
}

std::size_t countFilesToDelete(const Contents& contents) {
  std::size_t count = 0;
  for (const ComponentWithFiles& component : contents.componentsWithFiles) {
    for (const PackageWithFiles& package : component.packages) {
      count += package.files.size();
    }
  }
  return count;
}

}  // namespace update_metadata_tool::summary
