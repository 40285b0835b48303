#pragma once

#include <string>

#include <gtest/gtest.h>

#include "install/datamodels/product_update/ComponentDeltaData.h"
#include "support/CatalogueHandler.h"
#include "support/ModelDump.h"

namespace test_support {

/// A handler that is filled by its setters.
class Population : public ::testing::Test {
 protected:
  std::string tree() const { return dump(handler.getProductUpdateMetaDataModel()); }

  install::datamodels::product_update::ComponentDeltaData makeComponent() const {
    return install::datamodels::product_update::ComponentDeltaData::create(handler.model,
                                                                           mf::zero::Uuid());
  }

  CatalogueHandler handler;
};

}  // namespace test_support
