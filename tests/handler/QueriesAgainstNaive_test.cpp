// All six queries on generated models, compared with a plain computation that follows the contract
// step by step and does not use the model.

#include <cstddef>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "handler/GeneratedContent.h"
#include "handler/NaiveQueries.h"
#include "install/update_metadata_parser/UpdateMetaDataHandler.h"
#include "support/CatalogueHandler.h"
#include "support/Effort.h"
#include "support/ModelDump.h"

namespace install::update_metadata_parser {
namespace {

using datamodels::product_update::ComponentDataWithFilesToDelete;
using datamodels::product_update::ComponentDeltaData;
using datamodels::product_update::PkgDataWithFilesToDelete;
using datamodels::product_update::PkgDeltaData;
using datamodels::product_update::ProductDeltaData;
using datamodels::product_update::ProductUpdateMetaData;
using test_support::CatalogueHandler;
using test_support::Component;
using test_support::ComponentWithFiles;
using test_support::Content;
using test_support::expectedByCode;
using test_support::expectedFiles;
using test_support::expectedOfCode;
using test_support::expectedSizes;
using test_support::Generator;
using test_support::kFullEffort;
using test_support::PkgWithFiles;
using test_support::Product;
using test_support::Shape;

void fillCatalogue(CatalogueHandler& handler, const Content& content, Generator& generator) {
  for (const Product& product : content.products) {
    if (!generator.oneIn(4)) {
      const std::u16string code = generator.name();
      handler.codesByName.emplace(product.name, code);
      handler.namesByCode.emplace(code, product.name);
    }
  }
}

// --- two ways to fill a handler

template <class Element>
Element make(const CatalogueHandler& handler, const std::u16string& name) {
  Element element = Element::create(handler.model, mf::zero::Uuid());
  element->setName(name);
  return element;
}

// Element by element: lists keep the order of the content, with repeated names.
void fillByHand(const CatalogueHandler& handler, const Content& content) {
  const auto fill = [&](const std::vector<Component>& components, auto& list, auto pkgsOf) {
    for (const Component& component : components) {
      const auto element = make<ComponentDeltaData>(handler, component.name);
      list.append(element);
      for (const UpdatePkgData& pkg : component.pkgs) {
        const auto pkgElement = make<PkgDeltaData>(handler, pkg.name);
        pkgElement->setSize(pkg.size);
        pkgElement->setUncompressedBytes(pkg.uncompressedBytes);
        pkgsOf(element).append(pkgElement);
      }
    }
  };
  const ProductUpdateMetaData root = handler.getProductUpdateMetaDataModel();
  for (const Product& product : content.products) {
    const auto element = make<ProductDeltaData>(handler, product.name);
    root->getProductsDeltaDataMutable().append(element);
    fill(
        product.toDelete, element->getCompsToDeleteMutable(),
        [](const ComponentDeltaData& c) -> auto& { return c->getPkgsToDeleteMutable(); });
    fill(
        product.toExtract, element->getCompsToExtractMutable(),
        [](const ComponentDeltaData& c) -> auto& { return c->getPkgsToExtractMutable(); });
  }
  for (const ComponentWithFiles& component : content.withFiles) {
    const auto element = make<ComponentDataWithFilesToDelete>(handler, component.name);
    root->getCompsWithFilesToDeleteMutable().append(element);
    for (const PkgWithFiles& pkg : component.pkgs) {
      element->getPkgsWithFilesToDeleteMutable().append(
          handler.createPkgDataWithFilesToDelete(pkg.name, pkg.size, pkg.files));
    }
  }
}

// Through the handler's setters, with tables of packages for each product. A component that a
// product names twice, or a package that is deleted twice, has a single entry in such a table, so
// the content is adjusted to what the model then contains.
void fillThroughHandler(const UpdateMetaDataHandler& handler, Content& content) {
  const auto namesOf = [](const std::vector<Component>& components) {
    std::vector<std::u16string> names;
    for (const Component& component : components) {
      names.push_back(component.name);
    }
    return names;
  };
  for (Product& product : content.products) {
    UpdateMetaDataHandler::PkgsToDelete pkgsToDelete;
    UpdateMetaDataHandler::PkgsToExtract pkgsToExtract;
    for (const Component& component : product.toDelete) {
      for (const UpdatePkgData& pkg : component.pkgs) {
        pkgsToDelete[component.name].emplace(pkg.name, pkg.size);
      }
    }
    for (const Component& component : product.toExtract) {
      pkgsToExtract.emplace(component.name, component.pkgs);
    }
    handler.setProductDeltaData(product.name, namesOf(product.toDelete), namesOf(product.toExtract),
                                pkgsToDelete, pkgsToExtract);
    for (Component& component : product.toDelete) {
      component.pkgs.clear();
      for (const auto& [name, size] : pkgsToDelete[component.name]) {
        component.pkgs.push_back({name, size, 0});
      }
    }
    for (Component& component : product.toExtract) {
      component.pkgs = pkgsToExtract[component.name];
    }
  }
  for (const ComponentWithFiles& component : content.withFiles) {
    std::vector<PkgDataWithFilesToDelete> pkgs;
    for (const PkgWithFiles& pkg : component.pkgs) {
      pkgs.push_back(handler.createPkgDataWithFilesToDelete(pkg.name, pkg.size, pkg.files));
    }
    handler.setComponentDataWithFilesToDelete(component.name, pkgs);
  }
}

// --- the comparison

void compareAll(CatalogueHandler& handler, const Content& content) {
  handler.lookUps.clear();
  CatalogueHandler expected;
  expected.namesByCode = handler.namesByCode;
  expected.codesByName = handler.codesByName;
  EXPECT_EQ(handler.getComponentsToDelete(u"there"),
            expectedByCode(content, &Product::toDelete, expected));
  EXPECT_EQ(handler.getComponentsToExtract(u"there"),
            expectedByCode(content, &Product::toExtract, expected));
  std::set<std::u16string> codes = {u"", u"unknown"};
  for (const auto& [code, name] : handler.namesByCode) {
    codes.insert(code);
  }
  for (const std::u16string& code : codes) {
    EXPECT_EQ(handler.getComponentsToDelete(code, u"there"),
              expectedOfCode(content, &Product::toDelete, expected, code));
    EXPECT_EQ(handler.getComponentsToExtract(code, u"there"),
              expectedOfCode(content, &Product::toExtract, expected, code));
  }
  EXPECT_EQ(handler.lookUps, expected.lookUps);
  EXPECT_EQ(handler.getUpdateSizeForComponentsToExtract(), expectedSizes(content));
  EXPECT_EQ(handler.getComponentsWithFilesToDelete(), expectedFiles(content));
}

// Changes one package's name and sizes, in the model and in the content. Nothing but the two lists
// that it is in becomes elements.
void changeOne(const CatalogueHandler& handler, Content& content, Generator& generator) {
  if (content.products.empty()) {
    return;
  }
  const std::size_t place = generator.below(content.products.size());
  Product& product = content.products[place];
  const ProductDeltaData element =
      handler.getProductUpdateMetaDataModel()->getProductsDeltaData()[place];
  const bool deletes = generator.oneIn(2);
  std::vector<Component>& components = deletes ? product.toDelete : product.toExtract;
  if (components.empty()) {
    return;
  }
  const std::size_t index = generator.below(components.size());
  std::vector<UpdatePkgData>& pkgs = components[index].pkgs;
  if (pkgs.empty()) {
    return;
  }
  UpdatePkgData& pkg = pkgs[generator.below(pkgs.size())];
  const auto& component =
      (deletes ? element->getCompsToDelete() : element->getCompsToExtract())[index];
  const PkgDeltaData changed =
      (deletes ? component->getPkgsToDelete()
               : component->getPkgsToExtract())[static_cast<std::size_t>(&pkg - pkgs.data())];
  pkg = {generator.name(), generator.size(), generator.size()};
  changed->setName(pkg.name);
  changed->setSize(pkg.size);
  changed->setUncompressedBytes(pkg.uncompressedBytes);
}

class GeneratedModel : public ::testing::TestWithParam<Shape> {};

TEST_P(GeneratedModel, IsAnsweredAsThePlainWalkDoes) {
  for (unsigned seed = 0; seed < GetParam().seeds; seed += kFullEffort ? 1 : 5) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    Generator generator(seed, GetParam());
    Content content = generator.content();
    CatalogueHandler handler;
    fillCatalogue(handler, content, generator);
    if (seed % 2 == 0) {
      fillByHand(handler, content);
    } else {
      fillThroughHandler(handler, content);
    }
    compareAll(handler, content);
    for (int count = 0; count < 3; ++count) {
      changeOne(handler, content, generator);
    }
    compareAll(handler, content);
    if (::testing::Test::HasFailure()) {
      FAIL() << test_support::dump(handler.getProductUpdateMetaDataModel());
    }
  }
}

constexpr Shape kShapes[] = {
    {"Tiny", 2000, 3, 2, 3, 3},
    {"OfFewNames", 1000, 6, 6, 5, 5},
    {"OfManyNames", 300, 6, 10, 10, 60},
    {"WithLongLists", 30, 4, 3, 400, 80},
    {"WithManyComponents", 20, 8, 100, 6, 40},
    {"WithManyProducts", 10, 300, 6, 6, 20},
};

INSTANTIATE_TEST_SUITE_P(Content, GeneratedModel, ::testing::ValuesIn(kShapes),
                         [](const auto& row) { return row.param.name; });

// Products that share components, as in documents: one table for all.
TEST(SharedComponents, AreAnsweredAsThePlainWalkDoes) {
  constexpr Shape kShape = {"", 0, 0, 0, 0, 40};
  Generator generator(7, kShape);
  Content content;
  std::vector<Component> components;
  for (int count = 0; count < 60; ++count) {
    Component component{generator.name(), {}};
    for (std::size_t pkg = generator.below(20); pkg > 0; --pkg) {
      component.pkgs.push_back({generator.name(), generator.size(), generator.size()});
    }
    components.push_back(component);
  }
  constexpr int kProducts = kFullEffort ? 200 : 50;
  for (int count = 0; count < kProducts; ++count) {
    Product product{generator.name(), {}, {}};
    for (std::size_t component = generator.below(30); component > 0; --component) {
      product.toDelete.push_back(components[generator.below(components.size())]);
      product.toExtract.push_back(components[generator.below(components.size())]);
    }
    content.products.push_back(product);
  }
  for (const bool byHand : {true, false}) {
    SCOPED_TRACE(byHand);
    CatalogueHandler handler;
    fillCatalogue(handler, content, generator);
    if (byHand) {
      fillByHand(handler, content);
    } else {
      fillThroughHandler(handler, content);
    }
    compareAll(handler, content);
    for (int count = 0; count < 20; ++count) {
      changeOne(handler, content, generator);
    }
    compareAll(handler, content);
  }
}

}  // namespace
}  // namespace install::update_metadata_parser
