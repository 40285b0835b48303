// All six queries on generated models, compared with a plain computation that follows the contract
// step by step and does not use the model.

#include <cstddef>
#include <cstdint>
#include <map>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "handler/NaiveQueries.h"
#include "install/update_metadata_parser/UpdateMetaDataHandler.h"
#include "support/CatalogueHandler.h"
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
using test_support::PkgWithFiles;
using test_support::Product;

// --- the generator

// The size of a generated content and the number of names to draw from.
struct Shape {
  const char* name;
  unsigned seeds;
  std::size_t products;
  std::size_t components;
  std::size_t pkgs;
  std::size_t names;
};

class Generator {
 public:
  Generator(unsigned seed, const Shape& shape) : random_(seed), shape_(shape) {
    while (names_.size() < shape.names) {
      names_.push_back(makeName());
    }
  }

  std::size_t below(std::size_t limit) { return limit == 0 ? 0 : random_() % limit; }

  bool oneIn(std::size_t count) { return below(count) == 0; }

  const std::u16string& name() { return names_[below(names_.size())]; }

  std::int64_t size() { return static_cast<std::int64_t>(random_()) - (std::int64_t{1} << 31); }

  // A list of packages in any order, with repeated names. It mostly reuses the packages of an
  // earlier component of the same name, sometimes with a change.
  std::vector<UpdatePkgData> pkgs(std::map<std::u16string, std::vector<UpdatePkgData>>& known,
                                  const std::u16string& component) {
    const auto found = known.find(component);
    if (found != known.end() && !oneIn(3)) {
      std::vector<UpdatePkgData> list = found->second;
      for (UpdatePkgData& pkg : list) {
        pkg.size = size();
      }
      if (!list.empty() && oneIn(3)) {
        list[below(list.size())].name = name();
      }
      return list;
    }
    std::vector<UpdatePkgData> list;
    for (std::size_t count = below(shape_.pkgs + 1); count > 0; --count) {
      list.push_back({name(), size(), size()});
    }
    known[component] = list;
    return list;
  }

  std::vector<Component> components(std::map<std::u16string, std::vector<UpdatePkgData>>& known) {
    std::vector<Component> list;
    for (std::size_t count = below(shape_.components + 1); count > 0; --count) {
      const std::u16string component = name();
      list.push_back({component, pkgs(known, component)});
    }
    return list;
  }

  Content content() {
    Content result;
    for (std::size_t count = below(shape_.products + 1); count > 0; --count) {
      result.products.push_back({name(), components(toDelete_), components(toExtract_)});
    }
    for (std::size_t count = below(shape_.components + 1); count > 0; --count) {
      result.withFiles.push_back({name(), {}});
      for (std::size_t pkg = below(shape_.pkgs + 1); pkg > 0; --pkg) {
        result.withFiles.back().pkgs.push_back({name(), size(), {}});
        for (std::size_t file = below(5); file > 0; --file) {
          result.withFiles.back().pkgs.back().files.push_back(name());
        }
      }
    }
    return result;
  }

 private:
  // Short names built from few pieces, so that keys collide: with underscores at every place, units
  // next to the underscore, units beyond the basic plane, units above the surrogates, unpaired
  // surrogates, and NUL.
  std::u16string makeName() {
    static const std::vector<std::u16string> kPieces = {u"a",
                                                        u"b",
                                                        u"_",
                                                        u"^",
                                                        u"`",
                                                        u"Z",
                                                        u"\U0001F600",
                                                        u"\uE000",
                                                        std::u16string(1, u'\0'),
                                                        std::u16string(1, u'\xD83D')};
    std::u16string text;
    const std::size_t pieces = oneIn(4) ? kPieces.size() : 3;
    for (std::size_t count = below(5); count > 0; --count) {
      text += kPieces[below(pieces)];
    }
    return text;
  }

  std::mt19937 random_;
  const Shape& shape_;
  std::vector<std::u16string> names_;
  std::map<std::u16string, std::vector<UpdatePkgData>> toDelete_;
  std::map<std::u16string, std::vector<UpdatePkgData>> toExtract_;
};

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
  for (unsigned seed = 0; seed < GetParam().seeds; ++seed) {
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
  for (int count = 0; count < 200; ++count) {
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
