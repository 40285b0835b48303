#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "install/datamodels/product_update/ComponentDeltaData.h"
#include "install/datamodels/product_update/PkgDeltaData.h"
#include "mf/zero/elements/Model.h"
#include "mf/zero/fields/OwnedCollection.h"

namespace test_support {

using install::datamodels::product_update::ComponentDeltaData;
using install::datamodels::product_update::PkgDeltaData;
using mf::zero::Model;
using mf::zero::ModelSpec;
using mf::zero::OwnedCollection;
using mf::zero::Uuid;

inline PkgDeltaData makePkg(const Model& model, const std::u16string& name = u"") {
  PkgDeltaData pkg = PkgDeltaData::create(model, Uuid());
  pkg->setName(name);
  return pkg;
}

inline std::vector<PkgDeltaData> elementsOf(const OwnedCollection<PkgDeltaData>& list) {
  std::vector<PkgDeltaData> elements;
  for (std::size_t index = 0; index < list.size(); ++index) {
    elements.push_back(list[index]);
  }
  return elements;
}

/// A component whose list of packages to delete is under test.
class OwnedList : public ::testing::Test {
 protected:
  PkgDeltaData make(const std::u16string& name = u"") const { return makePkg(model, name); }

  OwnedCollection<PkgDeltaData>& list() const { return component->getPkgsToDeleteMutable(); }

  std::vector<PkgDeltaData> elements() const { return elementsOf(component->getPkgsToDelete()); }

  Model model = Model::create(ModelSpec());
  ComponentDeltaData component = ComponentDeltaData::create(model, Uuid());
};

}  // namespace test_support
