#include "support/PlainTotals.h"

namespace test_support {
namespace {

using SizesByKey = PlainTotals::SizesByKey;

// Adds the packages of one side of some components, except those with a key that already exists.
void addPackages(const PlainDocument& document, const std::vector<std::string>& components,
                 SizesByKey PlainDocument::Component::*side, SizesByKey& packages) {
  for (const std::string& name : components) {
    const auto found = document.components.find(name);
    if (found != document.components.end()) {
      for (const auto& [package, sizes] : found->second.*side) {
        packages.emplace(name + '_' + package, sizes);
      }
    }
  }
}

}  // namespace

PlainTotals::PlainTotals(const PlainDocument& document) : document_(document) {
  for (const auto& [name, product] : document.products) {
    addPackages(document, product.toDelete, &PlainDocument::Component::toDelete, allToDelete_);
    addPackages(document, product.toExtract, &PlainDocument::Component::toExtract, allToExtract_);
  }
}

SizesByKey PlainTotals::pick(const SizesByKey& all, const SizesByKey& named) {
  SizesByKey picked;
  for (const auto& entry : named) {
    picked.emplace(entry.first, all.at(entry.first));
  }
  return picked;
}

SizesByKey PlainTotals::toDelete(const std::vector<std::string>& products) const {
  SizesByKey named;
  for (const std::string& product : products) {
    addPackages(document_, document_.products.at(product).toDelete,
                &PlainDocument::Component::toDelete, named);
  }
  return pick(allToDelete_, named);
}

SizesByKey PlainTotals::toExtract(const std::vector<std::string>& products) const {
  SizesByKey named;
  for (const std::string& product : products) {
    addPackages(document_, document_.products.at(product).toExtract,
                &PlainDocument::Component::toExtract, named);
  }
  return pick(allToExtract_, named);
}

PlainTotals::Sums PlainTotals::of(const std::vector<std::string>& products) const {
  Sums sums;
  std::set<std::string> components;
  for (const std::string& name : products) {
    const PlainDocument::Product& product = document_.products.at(name);
    components.insert(product.toDelete.begin(), product.toDelete.end());
    components.insert(product.toExtract.begin(), product.toExtract.end());
  }
  sums.components = components.size();
  for (const auto& entry : toDelete(products)) {
    ++sums.packagesToDelete;
    sums.bytesDeleted += entry.second.size;
  }
  for (const auto& entry : toExtract(products)) {
    ++sums.packagesToExtract;
    sums.bytesToFetch += entry.second.size;
    sums.bytesUnpacked += entry.second.uncompressedBytes;
  }
  return sums;
}

std::vector<std::string> PlainTotals::products() const {
  std::vector<std::string> names;
  for (const auto& [name, product] : document_.products) {
    if (!product.toDelete.empty() || !product.toExtract.empty()) {
      names.push_back(name);
    }
  }
  return names;
}

std::size_t PlainTotals::files() const {
  std::map<std::string, std::size_t> filesByKey;
  for (const auto& [component, packages] : document_.componentsWithFiles) {
    for (const auto& [name, package] : packages) {
      const std::set<std::string> paths(package.files.begin(), package.files.end());
      filesByKey.emplace(component + '_' + name, paths.size());
    }
  }
  std::size_t count = 0;
  for (const auto& entry : filesByKey) {
    count += entry.second;
  }
  return count;
}

}  // namespace test_support
