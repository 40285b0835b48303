// The operations of UpdateMetaDataHandler that add products, components and packages to its model.
// Each element is complete before it is attached: what fails halfway leaves the tree as it was.

#include "install/datamodels/product_update/ComponentDataWithFilesToDelete.h"
#include "install/update_metadata_parser/UpdateMetaDataHandler.h"
#include "mf/zero/elements/Uuid.h"
#include "mf/zero/fields/RowStore.h"

namespace install::update_metadata_parser {
namespace {

using datamodels::product_update::ComponentDataWithFilesToDelete;
using datamodels::product_update::ComponentDeltaData;
using datamodels::product_update::PkgDataWithFilesToDelete;
using datamodels::product_update::PkgDeltaData;
using datamodels::product_update::ProductDeltaData;
using mf::zero::ComponentRow;
using mf::zero::Model;
using mf::zero::Name;
using mf::zero::OwnedCollection;
using mf::zero::RowList;
using mf::zero::RowStore;
using mf::zero::Uuid;

// The differences between packages to delete and packages to extract.
struct Delete {
  using Table = UpdateMetaDataHandler::PkgsToDelete;
  static constexpr std::uint8_t kField = ComponentDeltaData::Impl::kPkgsToDelete;

  static OwnedCollection<ComponentDeltaData>& components(const ProductDeltaData& product) {
    return product->getCompsToDeleteMutable();
  }
  static OwnedCollection<PkgDeltaData>& pkgs(const ComponentDeltaData& component) {
    return component->getPkgsToDeleteMutable();
  }
  static RowStore::NewPackage newPackage(const std::pair<const std::u16string, std::int64_t>& pkg) {
    return {pkg.first, pkg.second, 0};
  }
  static PkgDeltaData create(const UpdateMetaDataHandler& handler,
                             const std::pair<const std::u16string, std::int64_t>& pkg) {
    return handler.initializePkgDataForDelete(pkg.first, pkg.second);
  }
};

struct Extract {
  using Table = UpdateMetaDataHandler::PkgsToExtract;
  static constexpr std::uint8_t kField = ComponentDeltaData::Impl::kPkgsToExtract;

  static OwnedCollection<ComponentDeltaData>& components(const ProductDeltaData& product) {
    return product->getCompsToExtractMutable();
  }
  static OwnedCollection<PkgDeltaData>& pkgs(const ComponentDeltaData& component) {
    return component->getPkgsToExtractMutable();
  }
  static RowStore::NewPackage newPackage(const UpdatePkgData& pkg) {
    return {pkg.name, pkg.size, pkg.uncompressedBytes};
  }
  static PkgDeltaData create(const UpdateMetaDataHandler& handler, const UpdatePkgData& pkg) {
    return handler.initializePkgDataForExtract(pkg);
  }
};

// The rows of a component's packages, or null if `table` has none for it.
template <class Side>
const RowList* rowsOf(const Model& model, Name component, const std::u16string& componentName,
                      const typename Side::Table& table, std::uint64_t round) {
  const auto found = table.find(componentName);
  if (found == table.end() || found->second.empty()) {
    return nullptr;
  }
  return &RowStore::of(model).packages(component, Side::kField, round, found->second,
                                       Side::newPackage);
}

// Gives a component its packages from `table`: as rows, which other components share, or as
// elements if it already has packages. A component of another model rejects the elements.
template <class Side>
void setPkgs(const UpdateMetaDataHandler& handler, const Model& model,
             const ComponentDeltaData& component, const std::u16string& componentName,
             const typename Side::Table& table, std::uint64_t round) {
  OwnedCollection<PkgDeltaData>& pkgs = Side::pkgs(component);
  if (pkgs.empty() && &component->model() == &model.impl()) {
    if (const RowList* rows = rowsOf<Side>(model, component->name(), componentName, table, round)) {
      RowStore::refer(pkgs, *rows);
    }
    return;
  }
  if (const auto found = table.find(componentName); found != table.end()) {
    for (const auto& entry : found->second) {
      pkgs.append(Side::create(handler, entry));
    }
  }
}

// Appends a component with its packages to `product` for each name: as rows, or as elements if the
// product already has components.
template <class Side>
void setComps(const UpdateMetaDataHandler& handler, const Model& model,
              const ProductDeltaData& product, const std::vector<std::u16string>& names,
              const typename Side::Table& table) {
  if (names.empty()) {
    return;
  }
  OwnedCollection<ComponentDeltaData>& components = Side::components(product);
  RowStore& store = RowStore::of(model);
  const std::uint64_t round = store.beginRound();
  if (components.empty() && &product->model() == &model.impl()) {
    RowStore::refer(components,
                    store.addComponents(Side::kField, names, [&](const std::u16string& text) {
                      const Name name = store.nameOf(text);
                      return ComponentRow{name, rowsOf<Side>(model, name, text, table, round)};
                    }));
    return;
  }
  components.reserve(components.size() + names.size());
  for (const std::u16string& name : names) {
    const ComponentDeltaData component = ComponentDeltaData::create(model, Uuid());
    component->setName(name);
    setPkgs<Side>(handler, model, component, name, table, round);
    components.append(component);
  }
}

PkgDeltaData createPkg(const Model& model, const std::u16string& name, std::int64_t size) {
  PkgDeltaData pkg = PkgDeltaData::create(model, Uuid());
  pkg->setName(name);
  pkg->setSize(size);
  return pkg;
}

}  // namespace

void UpdateMetaDataHandler::setProductDeltaData(const std::u16string& name,
                                                const std::vector<std::u16string>& compsToDelete,
                                                const std::vector<std::u16string>& compsToExtract,
                                                const PkgsToDelete& pkgsToDelete,
                                                const PkgsToExtract& pkgsToExtract) const {
  const ProductDeltaData product = ProductDeltaData::create(model, Uuid());
  product->setName(name);
  setCompsToDelete(product, compsToDelete, pkgsToDelete);
  setCompsToExtract(product, compsToExtract, pkgsToExtract);
  root->getProductsDeltaDataMutable().append(product);
}

void UpdateMetaDataHandler::setCompsToDelete(const ProductDeltaData& product,
                                             const std::vector<std::u16string>& names,
                                             const PkgsToDelete& pkgsToDelete) const {
  setComps<Delete>(*this, model, product, names, pkgsToDelete);
}

void UpdateMetaDataHandler::setCompsToExtract(const ProductDeltaData& product,
                                              const std::vector<std::u16string>& names,
                                              const PkgsToExtract& pkgsToExtract) const {
  setComps<Extract>(*this, model, product, names, pkgsToExtract);
}

void UpdateMetaDataHandler::setPkgsToDelete(const std::u16string& componentName,
                                            const ComponentDeltaData& component,
                                            const PkgsToDelete& pkgsToDelete) const {
  setPkgs<Delete>(*this, model, component, componentName, pkgsToDelete,
                  RowStore::of(model).beginRound());
}

void UpdateMetaDataHandler::setPkgsToExtract(const std::u16string& componentName,
                                             const ComponentDeltaData& component,
                                             const PkgsToExtract& pkgsToExtract) const {
  setPkgs<Extract>(*this, model, component, componentName, pkgsToExtract,
                   RowStore::of(model).beginRound());
}

PkgDeltaData UpdateMetaDataHandler::initializePkgDataForDelete(const std::u16string& name,
                                                               std::int64_t size) const {
  return createPkg(model, name, size);
}

PkgDeltaData UpdateMetaDataHandler::initializePkgDataForExtract(const UpdatePkgData& pkg) const {
  PkgDeltaData element = createPkg(model, pkg.name, pkg.size);
  element->setUncompressedBytes(pkg.uncompressedBytes);
  return element;
}

PkgDataWithFilesToDelete UpdateMetaDataHandler::createPkgDataWithFilesToDelete(
    const std::u16string& name, std::int64_t size, const std::vector<std::u16string>& files) const {
  PkgDataWithFilesToDelete pkg = PkgDataWithFilesToDelete::create(model, Uuid());
  pkg->setName(name);
  pkg->setSize(size);
  auto& filesToDelete = pkg->getFilesToDeleteMutable();
  for (const std::u16string& file : files) {
    filesToDelete.push_back(file);
  }
  return pkg;
}

void UpdateMetaDataHandler::setComponentDataWithFilesToDelete(
    const std::u16string& name, const std::vector<PkgDataWithFilesToDelete>& pkgs) const {
  const ComponentDataWithFilesToDelete component =
      ComponentDataWithFilesToDelete::create(model, Uuid());
  component->setName(name);
  auto& pkgsWithFilesToDelete = component->getPkgsWithFilesToDeleteMutable();
  pkgsWithFilesToDelete.reserve(pkgs.size());
  for (const PkgDataWithFilesToDelete& pkg : pkgs) {
    pkgsWithFilesToDelete.append(pkg);
  }
  root->getCompsWithFilesToDeleteMutable().append(component);
}

}  // namespace install::update_metadata_parser
