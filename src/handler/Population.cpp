// The operations of UpdateMetaDataHandler that add products, components and packages to its model.
// Each element is complete before it is attached: what fails halfway leaves the tree as it was.

#include "install/datamodels/product_update/ComponentDataWithFilesToDelete.h"
#include "install/update_metadata_parser/UpdateMetaDataHandler.h"
#include "mf/zero/elements/Uuid.h"

namespace install::update_metadata_parser {
namespace {

using datamodels::product_update::ComponentDataWithFilesToDelete;
using datamodels::product_update::ComponentDeltaData;
using datamodels::product_update::PkgDataWithFilesToDelete;
using datamodels::product_update::PkgDeltaData;
using datamodels::product_update::ProductDeltaData;
using mf::zero::Model;
using mf::zero::OwnedCollection;
using mf::zero::Uuid;

// Appends a component to `components` for each name, once `setPkgs` has given it its packages.
template <class SetPkgs>
void appendComponents(const Model& model, OwnedCollection<ComponentDeltaData>& components,
                      const std::vector<std::u16string>& names, SetPkgs setPkgs) {
  components.reserve(components.size() + names.size());
  for (const std::u16string& name : names) {
    const ComponentDeltaData component = ComponentDeltaData::create(model, Uuid());
    component->setName(name);
    setPkgs(name, component);
    components.append(component);
  }
}

// Appends to `pkgs` what `makePkg` makes of each entry that `table` holds for a component.
template <class Table, class MakePkg>
void appendPkgs(OwnedCollection<PkgDeltaData>& pkgs, const Table& table,
                const std::u16string& componentName, MakePkg makePkg) {
  const auto found = table.find(componentName);
  if (found == table.end()) {
    return;
  }
  pkgs.reserve(pkgs.size() + found->second.size());
  for (const auto& entry : found->second) {
    pkgs.append(makePkg(entry));
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
  appendComponents(model, product->getCompsToDeleteMutable(), names,
                   [&](const std::u16string& name, const ComponentDeltaData& component) {
                     setPkgsToDelete(name, component, pkgsToDelete);
                   });
}

void UpdateMetaDataHandler::setCompsToExtract(const ProductDeltaData& product,
                                              const std::vector<std::u16string>& names,
                                              const PkgsToExtract& pkgsToExtract) const {
  appendComponents(model, product->getCompsToExtractMutable(), names,
                   [&](const std::u16string& name, const ComponentDeltaData& component) {
                     setPkgsToExtract(name, component, pkgsToExtract);
                   });
}

void UpdateMetaDataHandler::setPkgsToDelete(const std::u16string& componentName,
                                            const ComponentDeltaData& component,
                                            const PkgsToDelete& pkgsToDelete) const {
  appendPkgs(component->getPkgsToDeleteMutable(), pkgsToDelete, componentName,
             [&](const std::pair<const std::u16string, std::int64_t>& pkg) {
               return initializePkgDataForDelete(pkg.first, pkg.second);
             });
}

void UpdateMetaDataHandler::setPkgsToExtract(const std::u16string& componentName,
                                             const ComponentDeltaData& component,
                                             const PkgsToExtract& pkgsToExtract) const {
  appendPkgs(component->getPkgsToExtractMutable(), pkgsToExtract, componentName,
             [&](const UpdatePkgData& pkg) { return initializePkgDataForExtract(pkg); });
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
