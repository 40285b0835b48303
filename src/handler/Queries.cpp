// The six queries of UpdateMetaDataHandler. They walk the model front to back, in place, and build
// each answer from the ordered stream of its keys.

#include <algorithm>
#include <utility>

#include "handler/DistinctKeys.h"
#include "install/datamodels/product_update/ComponentDataWithFilesToDelete.h"
#include "install/update_metadata_parser/UpdateMetaDataHandler.h"

namespace install::update_metadata_parser {
namespace {

using datamodels::product_update::ComponentDataWithFilesToDelete;
using datamodels::product_update::ComponentDeltaData;
using datamodels::product_update::PkgDataWithFilesToDelete;
using datamodels::product_update::PkgDeltaData;
using datamodels::product_update::ProductDeltaData;
using datamodels::product_update::ProductUpdateMetaData;
using mf::zero::OwnedCollection;

using KeySet = std::set<std::u16string>;
using FilesAndSize = std::pair<KeySet, std::int64_t>;
using SizePair = std::pair<std::int64_t, std::int64_t>;

// The side of an update that a query is about: packages to delete or packages to extract.
struct Side {
  const OwnedCollection<ComponentDeltaData>& (ProductDeltaData::Impl::*components)() const noexcept;
  const OwnedCollection<PkgDeltaData>& (ComponentDeltaData::Impl::*pkgs)() const noexcept;
};

constexpr Side kDelete = {&ProductDeltaData::Impl::getCompsToDelete,
                          &ComponentDeltaData::Impl::getPkgsToDelete};
constexpr Side kExtract = {&ProductDeltaData::Impl::getCompsToExtract,
                           &ComponentDeltaData::Impl::getPkgsToExtract};

void addComponents(DistinctKeys<PkgDeltaData>& packages, const ProductDeltaData::Impl& product,
                   const Side& side) {
  const OwnedCollection<ComponentDeltaData>& components = (product.*side.components)();
  if (const mf::zero::RowList* rows = mf::zero::RowStore::rowsOf(components)) {
    for (std::size_t i = 0; i < rows->size; ++i) {
      packages.addComponent(rows->at<mf::zero::ComponentRow>(i));
    }
    return;
  }
  for (std::size_t i = 0; i < components.size(); ++i) {
    const ComponentDeltaData::Impl& component = components.readAt(i);
    packages.addComponent(component.name(), (component.*side.pkgs)());
  }
}

void addKeys(KeySet& keys, DistinctKeys<PkgDeltaData>& packages) {
  packages.forEachDescending([&keys](const std::u16string& key, const auto&, std::size_t) {
    keys.emplace_hint(keys.begin(), key);
  });
}

// A package's sizes, of a row or an element.
SizePair sizesAt(const PackageList<PkgDeltaData>& pkgs, std::size_t index) {
  if (pkgs.rows() != nullptr) {
    const mf::zero::PackageRow& row = pkgs.rowAt(index);
    return {row.size, row.uncompressedBytes};
  }
  const PkgDeltaData::Impl& pkg = pkgs.elementAt(index);
  return {pkg.getSize(), pkg.getUncompressedBytes()};
}

// Returns the packages of all products with the name that the catalogue gives for a base code.
//
// Lists are read by index throughout: the virtual operations may append to them.
KeySet keysOfOneProduct(UpdateMetaDataHandler& handler, const ProductUpdateMetaData& root,
                        const Side& side, const std::u16string& productBaseCode,
                        const std::u16string& productDataLocation) {
  KeySet keys;
  DistinctKeys<PkgDeltaData> packages;
  const OwnedCollection<ProductDeltaData>& products = root->getProductsDeltaData();
  for (std::size_t i = 0; i < products.size(); ++i) {
    const ProductDeltaData product = products[i];
    const std::u16string name = product->getName();
    if (name == handler.getProductName(productBaseCode, productDataLocation)) {
      packages.clear();
      addComponents(packages, *product.operator->(), side);
      addKeys(keys, packages);
    }
  }
  return keys;
}

// Returns the packages of each product that has any, by the base code that the catalogue gives for
// its name.
std::map<std::u16string, KeySet> keysByProduct(UpdateMetaDataHandler& handler,
                                               const ProductUpdateMetaData& root, const Side& side,
                                               const std::u16string& productDataLocation) {
  std::map<std::u16string, KeySet> keysByCode;
  const OwnedCollection<ProductDeltaData>& products = root->getProductsDeltaData();
  DistinctKeys<PkgDeltaData> packages;
  for (std::size_t i = 0; i < products.size(); ++i) {
    const ProductDeltaData product = products[i];
    const std::u16string name = product->getName();
    packages.clear();
    addComponents(packages, *product.operator->(), side);
    if (packages.empty()) {
      continue;
    }
    KeySet keys;
    addKeys(keys, packages);
    // The first of several products with one base code counts.
    keysByCode.try_emplace(handler.getProductBaseCode(name, productDataLocation), std::move(keys));
  }
  return keysByCode;
}

KeySet fileSet(const mf::zero::PrimitiveSequence<std::u16string>& files) {
  std::vector<mf::zero::CompactString> ordered(files.begin(), files.end());
  const auto precedes = [](const mf::zero::CompactString& left,
                           const mf::zero::CompactString& right) {
    return left.compare(right) < 0;
  };
  if (!std::is_sorted(ordered.begin(), ordered.end(), precedes)) {
    std::sort(ordered.begin(), ordered.end(), precedes);
  }
  KeySet set;
  for (auto file = ordered.rbegin(); file != ordered.rend(); ++file) {
    set.emplace_hint(set.begin(), file->text());
  }
  return set;
}

}  // namespace

std::map<std::u16string, std::set<std::u16string>> UpdateMetaDataHandler::getComponentsToExtract(
    const std::u16string& productDataLocation) {
  return keysByProduct(*this, ProductUpdateMetaData(root), kExtract, productDataLocation);
}

std::set<std::u16string> UpdateMetaDataHandler::getComponentsToExtract(
    const std::u16string& productBaseCode, const std::u16string& productDataLocation) {
  return keysOfOneProduct(*this, ProductUpdateMetaData(root), kExtract, productBaseCode,
                          productDataLocation);
}

std::map<std::u16string, std::set<std::u16string>> UpdateMetaDataHandler::getComponentsToDelete(
    const std::u16string& productDataLocation) {
  return keysByProduct(*this, ProductUpdateMetaData(root), kDelete, productDataLocation);
}

std::set<std::u16string> UpdateMetaDataHandler::getComponentsToDelete(
    const std::u16string& productBaseCode, const std::u16string& productDataLocation) {
  return keysOfOneProduct(*this, ProductUpdateMetaData(root), kDelete, productBaseCode,
                          productDataLocation);
}

std::map<std::u16string, std::pair<std::set<std::u16string>, std::int64_t>>
UpdateMetaDataHandler::getComponentsWithFilesToDelete() const {
  DistinctKeys<PkgDataWithFilesToDelete> packages;
  const OwnedCollection<ComponentDataWithFilesToDelete>& components =
      root->getCompsWithFilesToDelete();
  for (std::size_t i = 0; i < components.size(); ++i) {
    const ComponentDataWithFilesToDelete::Impl& component = components.readAt(i);
    packages.addComponent(component.name(), component.getPkgsWithFilesToDelete());
  }
  std::map<std::u16string, std::pair<std::set<std::u16string>, std::int64_t>> filesByKey;
  packages.forEachDescending([&](const std::u16string& key, const auto& pkgs, std::size_t index) {
    const PkgDataWithFilesToDelete::Impl& pkg = pkgs.elementAt(index);
    filesByKey.emplace_hint(filesByKey.begin(), key,
                            FilesAndSize(fileSet(pkg.getFilesToDelete()), pkg.getSize()));
  });
  return filesByKey;
}

std::map<std::u16string, std::pair<std::int64_t, std::int64_t>>
UpdateMetaDataHandler::getUpdateSizeForComponentsToExtract() const {
  DistinctKeys<PkgDeltaData> packages;
  const OwnedCollection<ProductDeltaData>& products = root->getProductsDeltaData();
  for (std::size_t i = 0; i < products.size(); ++i) {
    addComponents(packages, products.readAt(i), kExtract);
  }
  std::map<std::u16string, std::pair<std::int64_t, std::int64_t>> sizesByKey;
  packages.forEachDescending([&](const std::u16string& key, const auto& pkgs, std::size_t index) {
    sizesByKey.emplace_hint(sizesByKey.begin(), key, sizesAt(pkgs, index));
  });
  return sizesByKey;
}

}  // namespace install::update_metadata_parser
