#include "summary/GatherModel.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "install/datamodels/product_update/ComponentDataWithFilesToDelete.h"
#include "install/datamodels/product_update/ComponentDeltaData.h"
#include "install/datamodels/product_update/PkgDataWithFilesToDelete.h"
#include "install/datamodels/product_update/PkgDeltaData.h"
#include "install/datamodels/product_update/ProductDeltaData.h"
#include "mf/zero/fields/OwnedCollection.h"
#include "mf/zero/fields/PrimitiveSequence.h"
#include "mf/zero/text/Name.h"

namespace update_metadata_tool::summary {
namespace {

using install::datamodels::product_update::ComponentDataWithFilesToDelete;
using install::datamodels::product_update::ComponentDeltaData;
using install::datamodels::product_update::PkgDataWithFilesToDelete;
using install::datamodels::product_update::PkgDeltaData;
using install::datamodels::product_update::ProductDeltaData;
using install::datamodels::product_update::ProductUpdateMetaData;
using mf::zero::Name;
using mf::zero::OwnedCollection;

std::u16string makeKey(Name component, Name package) {
  std::u16string key;
  key.reserve(component.view().size() + 1 + package.view().size());
  key.append(component.view()).append(u"_").append(package.view());
  return key;
}

/// Where packages to delete, or to extract, are in the model and in the contents.
struct Side {
  const OwnedCollection<ComponentDeltaData>& (ProductDeltaData::Impl::*components)() const noexcept;
  const OwnedCollection<PkgDeltaData>& (ComponentDeltaData::Impl::*packages)() const noexcept;
  std::vector<Package> Contents::*gatheredPackages;
  std::vector<std::size_t> Product::*componentsOfProduct;
  std::vector<std::size_t> Component::*packagesOfComponent;
};

constexpr Side kDelete = {&ProductDeltaData::Impl::getCompsToDelete,
                          &ComponentDeltaData::Impl::getPkgsToDelete, &Contents::packagesToDelete,
                          &Product::componentsToDelete, &Component::packagesToDelete};
constexpr Side kExtract = {
    &ProductDeltaData::Impl::getCompsToExtract, &ComponentDeltaData::Impl::getPkgsToExtract,
    &Contents::packagesToExtract, &Product::componentsToExtract, &Component::packagesToExtract};

/// Lists each component once, by its name.
class ComponentTable {
 public:
  explicit ComponentTable(std::vector<Component>& components) : components_(components) {}

  /// The index of the component with that name, added if it is new.
  std::size_t add(Name name) {
    const auto [place, isNew] = numbers_.try_emplace(name.identity(), components_.size());
    if (isNew) {
      components_.push_back({std::u16string(name.view()), {}, {}});
    }
    return place->second;
  }

 private:
  std::vector<Component>& components_;
  std::unordered_map<const mf::zero::InternedString*, std::size_t> numbers_;
};

/// Lists each package once, by its key; the first one counts.
class PackageTable {
 public:
  explicit PackageTable(std::vector<Package>& packages) : packages_(packages) {}

  /// The index of the package with that key, added if it is new.
  std::size_t add(std::u16string key, const PkgDeltaData::Impl& package) {
    const auto [place, isNew] = numbers_.try_emplace(std::move(key), packages_.size());
    if (isNew) {
      packages_.push_back({{}, package.getSize(), package.getUncompressedBytes()});
    }
    return place->second;
  }

  /// Moves the keys to the packages. No package can be added afterwards.
  void finish() {
    while (!numbers_.empty()) {
      auto place = numbers_.extract(numbers_.begin());
      packages_[place.mapped()].key = std::move(place.key());
    }
  }

 private:
  std::vector<Package>& packages_;
  std::map<std::u16string, std::size_t> numbers_;  // a tree, which crafted keys cannot slow down
};

/// Remembers the last user of each number.
class LastUsers {
 public:
  /// Makes `user`, at least 1, the last user of `number`. Returns whether another one was before.
  bool isNew(std::size_t number, std::size_t user) {
    if (users_.size() <= number) {
      users_.resize(number + 1);
    }
    return std::exchange(users_[number], user) != user;
  }

  /// Returns whether `number` has no user yet.
  bool isUnused(std::size_t number) const { return users_.size() <= number || users_[number] == 0; }

 private:
  std::vector<std::size_t> users_;
};

/// Gathers the components and packages of one side, product by product.
class SideGatherer {
 public:
  SideGatherer(const Side& side, ComponentTable& componentTable, Contents& contents)
      : side_(side),
        componentTable_(componentTable),
        components_(contents.components),
        packageTable_(contents.*side.gatheredPackages) {}

  void addProduct(const ProductDeltaData::Impl& element, Product& product) {
    ++productsSeen_;
    const OwnedCollection<ComponentDeltaData>& components = (element.*side_.components)();
    for (std::size_t i = 0; i < components.size(); ++i) {
      const ComponentDeltaData::Impl& component = components.readAt(i);
      const std::size_t number = componentTable_.add(component.name());
      if (lastProducts_.isUnused(number)) {
        addPackages(component, number);
      }
      if (lastProducts_.isNew(number, productsSeen_)) {
        (product.*side_.componentsOfProduct).push_back(number);
      }
    }
  }

  void finish() { packageTable_.finish(); }

 private:
  void addPackages(const ComponentDeltaData::Impl& component, std::size_t componentNumber) {
    const OwnedCollection<PkgDeltaData>& packages = (component.*side_.packages)();
    std::vector<std::size_t>& numbers = components_[componentNumber].*side_.packagesOfComponent;
    numbers.reserve(packages.size());
    for (std::size_t i = 0; i < packages.size(); ++i) {
      const PkgDeltaData::Impl& package = packages.readAt(i);
      const std::size_t number =
          packageTable_.add(makeKey(component.name(), package.name()), package);
      if (lastComponents_.isNew(number, componentNumber + 1)) {
        numbers.push_back(number);
      }
    }
  }

  const Side& side_;
  ComponentTable& componentTable_;
  std::vector<Component>& components_;
  PackageTable packageTable_;
  std::size_t productsSeen_ = 0;
  LastUsers lastProducts_;    // of components
  LastUsers lastComponents_;  // of packages
};

void gatherProducts(const ProductUpdateMetaData& root, Contents& contents,
                    terminal::ProgressLine& progress) {
  ComponentTable components(contents.components);
  SideGatherer toDelete(kDelete, components, contents);
  SideGatherer toExtract(kExtract, components, contents);
  const OwnedCollection<ProductDeltaData>& products = root->getProductsDeltaData();
  contents.products.reserve(products.size());
  for (std::size_t i = 0; i < products.size(); ++i) {
    const ProductDeltaData::Impl& element = products.readAt(i);
    Product& product = contents.products.emplace_back();
    product.name = element.getName();
    progress.update();
    toDelete.addProduct(element, product);
    toExtract.addProduct(element, product);
  }
  toDelete.finish();
  toExtract.finish();
}

std::vector<std::u16string> gatherFiles(const PkgDataWithFilesToDelete::Impl& package) {
  const mf::zero::PrimitiveSequence<std::u16string>& sequence = package.getFilesToDelete();
  std::vector<std::u16string> files(sequence.begin(), sequence.end());
  std::sort(files.begin(), files.end());
  files.erase(std::unique(files.begin(), files.end()), files.end());
  return files;
}

void gatherComponentsWithFiles(const ProductUpdateMetaData& root, Contents& contents,
                               terminal::ProgressLine& progress) {
  std::unordered_map<const mf::zero::InternedString*, std::size_t> numbers;
  std::set<std::u16string> keys;
  const OwnedCollection<ComponentDataWithFilesToDelete>& components =
      root->getCompsWithFilesToDelete();
  for (std::size_t i = 0; i < components.size(); ++i) {
    progress.update();
    const ComponentDataWithFilesToDelete::Impl& element = components.readAt(i);
    const auto [place, isNew] =
        numbers.try_emplace(element.name().identity(), contents.componentsWithFiles.size());
    if (isNew) {
      contents.componentsWithFiles.push_back({element.getName(), {}, {}});
    }
    ComponentWithFiles& component = contents.componentsWithFiles[place->second];
    const OwnedCollection<PkgDataWithFilesToDelete>& packages = element.getPkgsWithFilesToDelete();
    for (std::size_t j = 0; j < packages.size(); ++j) {
      const PkgDataWithFilesToDelete::Impl& package = packages.readAt(j);
      std::u16string key = makeKey(element.name(), package.name());
      std::vector<PackageWithFiles>& packagesOfKind =
          keys.insert(key).second ? component.packages : component.repeatedPackages;
      packagesOfKind.push_back({std::move(key), package.getSize(), gatherFiles(package)});
    }
  }
}

}  // namespace

void gatherModel(const ProductUpdateMetaData& root, Contents& contents,
                 terminal::ProgressLine& progress) {
  gatherProducts(root, contents, progress);
  gatherComponentsWithFiles(root, contents, progress);
}

void gatherBaseCodes(install::update_metadata_parser::UpdateMetaDataHandler& handler,
                     const std::u16string& productData, Contents& contents) {
  for (Product& product : contents.products) {
    std::u16string baseCode = handler.getProductBaseCode(product.name, productData);
    if (!baseCode.empty()) {
      product.baseCode = std::move(baseCode);
    }
  }
}

}  // namespace update_metadata_tool::summary
