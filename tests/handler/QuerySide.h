#pragma once

#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "install/update_metadata_parser/UpdateMetaDataHandler.h"
#include "install/update_metadata_parser/UpdatePkgData.h"

namespace test_support {

using install::update_metadata_parser::UpdateMetaDataHandler;

using Keys = std::set<std::u16string>;
using KeysByCode = std::map<std::u16string, Keys>;

// Components and the names of their packages.
using Components = std::vector<std::pair<std::u16string, std::vector<std::u16string>>>;

// Packages to delete or packages to extract: the same tests run for both.
struct Side {
  const char* name;
  void (*addProduct)(const UpdateMetaDataHandler& handler, const std::u16string& name,
                     const Components& components);
  KeysByCode (UpdateMetaDataHandler::*byCode)(const std::u16string& productDataLocation);
  Keys (UpdateMetaDataHandler::*ofCode)(const std::u16string& productBaseCode,
                                        const std::u16string& productDataLocation);
};

inline void addProductToDelete(const UpdateMetaDataHandler& handler, const std::u16string& name,
                               const Components& components) {
  std::vector<std::u16string> names;
  UpdateMetaDataHandler::PkgsToDelete pkgsToDelete;
  for (const auto& [component, pkgs] : components) {
    names.push_back(component);
    for (const std::u16string& pkg : pkgs) {
      pkgsToDelete[component][pkg] = 1;
    }
  }
  handler.setProductDeltaData(name, names, {}, pkgsToDelete, {});
}

inline void addProductToExtract(const UpdateMetaDataHandler& handler, const std::u16string& name,
                                const Components& components) {
  std::vector<std::u16string> names;
  UpdateMetaDataHandler::PkgsToExtract pkgsToExtract;
  for (const auto& [component, pkgs] : components) {
    names.push_back(component);
    for (const std::u16string& pkg : pkgs) {
      pkgsToExtract[component].push_back({pkg, 1, 2});
    }
  }
  handler.setProductDeltaData(name, {}, names, {}, pkgsToExtract);
}

inline const Side kDelete = {"ToDelete", addProductToDelete,
                             &UpdateMetaDataHandler::getComponentsToDelete,
                             &UpdateMetaDataHandler::getComponentsToDelete};
inline const Side kExtract = {"ToExtract", addProductToExtract,
                              &UpdateMetaDataHandler::getComponentsToExtract,
                              &UpdateMetaDataHandler::getComponentsToExtract};

}  // namespace test_support
