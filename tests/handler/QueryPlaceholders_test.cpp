// Queries on trees with placeholders. The handler itself never makes any.

#include <exception>
#include <functional>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "foundation/core/except.h"
#include "install/datamodels/common/Release.h"
#include "install/update_metadata_parser/UpdateMetaData.h"
#include "install/update_metadata_parser/UpdateMetaDataHandler.h"
#include "mf/zero/elements/Messages.h"
#include "mf/zero/elements/Placeholders.h"
#include "support/CatalogueHandler.h"

namespace install::update_metadata_parser {
namespace {

using datamodels::common::Release;
using datamodels::product_update::ComponentDataWithFilesToDelete;
using datamodels::product_update::ComponentDeltaData;
using datamodels::product_update::PkgDataWithFilesToDelete;
using datamodels::product_update::PkgDeltaData;
using datamodels::product_update::ProductDeltaData;
using datamodels::product_update::ProductUpdateMetaData;
using foundation::core::except::Exception;
using foundation::core::except::IMsgIDException;
using mf::zero::CannotCastIncompatibleTypes;
using mf::zero::IncompatibleModels;
using mf::zero::ModelElement;
using mf::zero::Placeholders;
using test_support::CatalogueHandler;
using ::testing::PrintToString;

// A tree with one element of every kind; on request, each element of a list is behind a
// placeholder.
class PlaceholderTree {
 public:
  // Returns what the placeholder for the given real element resolves to.
  using Target = std::function<ModelElement(const ModelElement& real)>;

  // Level 1: the products and components right below the root; levels 2 and 3 are below them.
  PlaceholderTree(int placeholderLevel, Target target)
      : level_(placeholderLevel), target_(std::move(target)) {
    handler.namesByCode = {{u"C", u"P"}};
    handler.codesByName = {{u"P", u"C"}};
    const ProductUpdateMetaData root = handler.getProductUpdateMetaDataModel();

    const auto component = make<ComponentDeltaData>(u"core");
    append(3, component->getPkgsToDeleteMutable(), make<PkgDeltaData>(u"old"));
    const auto pkg = make<PkgDeltaData>(u"new");
    pkg->setSize(1);
    pkg->setUncompressedBytes(2);
    append(3, component->getPkgsToExtractMutable(), pkg);

    const auto product = make<ProductDeltaData>(u"P");
    append(2, product->getCompsToDeleteMutable(), component);
    append(2, product->getCompsToExtractMutable(), component);
    append(1, root->getProductsDeltaDataMutable(), product);

    const auto withFiles = make<ComponentDataWithFilesToDelete>(u"docs");
    append(2, withFiles->getPkgsWithFilesToDeleteMutable(),
           handler.createPkgDataWithFilesToDelete(u"guide", 7, {u"b", u"a"}));
    append(1, root->getCompsWithFilesToDeleteMutable(), withFiles);
  }

  template <class Element>
  Element make(const std::u16string& name) const {
    Element element = Element::create(handler.model, mf::zero::Uuid());
    element->setName(name);
    return element;
  }

  CatalogueHandler handler;
  int resolutions = 0;

 private:
  template <class Element>
  void append(int level, mf::zero::OwnedCollection<Element>& list, const Element& real) {
    if (level != level_) {
      list.append(real);
      return;
    }
    const auto placeholder = make<Element>(u"placeholder");
    Placeholders::make(placeholder, [this, real] {
      ++resolutions;
      return target_(real);
    });
    list.append(placeholder);
  }

  int level_;
  Target target_;
};

// One of the six queries, with its answer as text. `depth` is how many levels of lists it walks.
struct Query {
  const char* name;
  std::string (*ask)(UpdateMetaDataHandler& handler);
  std::string (*queryFacade)(const UpdateMetaData& facade);
  int depth;
};

template <class Queried>
std::string deletedByCode(Queried& queried) {
  return PrintToString(queried.getComponentsToDelete(u""));
}
template <class Queried>
std::string deletedOfCode(Queried& queried) {
  return PrintToString(queried.getComponentsToDelete(u"C", u""));
}
template <class Queried>
std::string extractedByCode(Queried& queried) {
  return PrintToString(queried.getComponentsToExtract(u""));
}
template <class Queried>
std::string extractedOfCode(Queried& queried) {
  return PrintToString(queried.getComponentsToExtract(u"C", u""));
}
template <class Queried>
std::string sizes(Queried& queried) {
  return PrintToString(queried.getUpdateSizeForComponentsToExtract());
}
template <class Queried>
std::string files(Queried& queried) {
  return PrintToString(queried.getComponentsWithFilesToDelete());
}

constexpr Query kQueries[] = {
    {"DeletedByCode", deletedByCode, deletedByCode, 3},
    {"DeletedOfCode", deletedOfCode, deletedOfCode, 3},
    {"ExtractedByCode", extractedByCode, extractedByCode, 3},
    {"ExtractedOfCode", extractedOfCode, extractedOfCode, 3},
    {"Sizes", sizes, sizes, 3},
    {"Files", files, files, 2},
};

class QueryOnPlaceholders : public ::testing::TestWithParam<Query> {};

INSTANTIATE_TEST_SUITE_P(All, QueryOnPlaceholders, ::testing::ValuesIn(kQueries),
                         [](const auto& query) { return query.param.name; });

ModelElement itself(const ModelElement& real) {
  return real;
}

TEST_P(QueryOnPlaceholders, ResolvesEachOnceAndKeepsTheElement) {
  PlaceholderTree plain(0, itself);
  const std::string answer = GetParam().ask(plain.handler);
  for (int level = 1; level <= GetParam().depth; ++level) {
    SCOPED_TRACE("level " + std::to_string(level));
    PlaceholderTree tree(level, itself);
    EXPECT_EQ(GetParam().ask(tree.handler), answer);
    EXPECT_EQ(tree.resolutions, 1);
    EXPECT_EQ(GetParam().ask(tree.handler), answer);
    EXPECT_EQ(tree.resolutions, 1) << "the element has replaced the placeholder";
  }
}

TEST_P(QueryOnPlaceholders, ReportsWhatDoesNotBelongInTheList) {
  for (int level = 1; level <= GetParam().depth; ++level) {
    SCOPED_TRACE("level " + std::to_string(level));
    ModelElement target;
    PlaceholderTree tree(level, [&](const ModelElement&) { return target; });
    const auto typeNameReported = [&]() -> std::u16string {
      try {
        GetParam().ask(tree.handler);
      } catch (const Exception<CannotCastIncompatibleTypes>& error) {
        return error.message().typeName;
      }
      return u"none";
    };
    EXPECT_EQ(typeNameReported(), u"mf::zero::ModelElement") << "for an empty handle";
    target = Release::create(tree.handler.model, mf::zero::Uuid());
    EXPECT_EQ(typeNameReported(), u"install::datamodels::common::Release");
    target = ProductUpdateMetaData::create(tree.handler.model, mf::zero::Uuid());
    Placeholders::make(target, [] { return ModelElement(); });
    EXPECT_EQ(typeNameReported(), u"install::datamodels::product_update::ProductUpdateMetaData");
    EXPECT_EQ(tree.resolutions, 3) << "the placeholder stays each time";
  }
}

TEST_P(QueryOnPlaceholders, RejectsAPlaceholderForAPlaceholderOfTheRightType) {
  for (int level = 1; level <= GetParam().depth; ++level) {
    SCOPED_TRACE("level " + std::to_string(level));
    PlaceholderTree tree(level, [](const ModelElement& real) {
      if (!real->isProxy()) {
        Placeholders::make(real, [] { return ModelElement(); });
      }
      return real;
    });
    EXPECT_THROW(GetParam().ask(tree.handler), Exception<CannotCastIncompatibleTypes>);
  }
}

TEST_P(QueryOnPlaceholders, RejectsAnElementOfAnotherModel) {
  for (int level = 1; level <= GetParam().depth; ++level) {
    SCOPED_TRACE("level " + std::to_string(level));
    PlaceholderTree other(0, itself);
    PlaceholderTree tree(level, [&](const ModelElement& real) -> ModelElement {
      const std::u16string typeName = real->elementClass().qualifiedName;
      const auto root = other.handler.getProductUpdateMetaDataModel();
      const std::vector<ModelElement> elements = {
          root->getProductsDeltaData()[0], root->getProductsDeltaData()[0]->getCompsToDelete()[0],
          root->getProductsDeltaData()[0]->getCompsToDelete()[0]->getPkgsToDelete()[0],
          root->getCompsWithFilesToDelete()[0],
          root->getCompsWithFilesToDelete()[0]->getPkgsWithFilesToDelete()[0]};
      for (const ModelElement& element : elements) {
        if (element->elementClass().qualifiedName == typeName) {
          return element;
        }
      }
      return ModelElement();
    });
    EXPECT_THROW(GetParam().ask(tree.handler), Exception<IncompatibleModels>);
  }
}

TEST_P(QueryOnPlaceholders, LetsTheReportPassThroughTheFacade) {
  const auto handler = std::make_shared<CatalogueHandler>();
  handler->setProductDeltaData(u"P", {}, {}, {}, {});
  const auto root = handler->getProductUpdateMetaDataModel();
  const auto product = ProductDeltaData::create(handler->model, mf::zero::Uuid());
  Placeholders::make(product, [] { return ModelElement(); });
  root->getProductsDeltaDataMutable().append(product);
  const auto component = ComponentDataWithFilesToDelete::create(handler->model, mf::zero::Uuid());
  Placeholders::make(component, [] { return ModelElement(); });
  root->getCompsWithFilesToDeleteMutable().append(component);
  const UpdateMetaData facade(handler);
  constexpr const char* kText = "cannot cast incompatible types: mf::zero::ModelElement";
  try {
    GetParam().queryFacade(facade);
    FAIL() << "nothing was thrown";
  } catch (const std::exception& error) {
    EXPECT_STREQ(error.what(), kText);
  }
  try {
    GetParam().queryFacade(facade);
    FAIL() << "nothing was thrown";
  } catch (const IMsgIDException& error) {
    EXPECT_STREQ(error.getMessageId(), "mf0:messages:CannotCastIncompatibleTypes");
    EXPECT_STREQ(error.what(), kText);
  }
}

// Placeholders for packages whose components are in no particular order of names.
TEST_P(QueryOnPlaceholders, ResolvesThemInModelOrderAndKeepsThoseBeforeAFailure) {
  PlaceholderTree tree(0, itself);
  const auto root = tree.handler.getProductUpdateMetaDataModel();
  std::vector<int> resolved;
  bool fails = true;
  const auto appendPlaceholder = [&](int number, auto& list, const auto& real) {
    const auto placeholder = std::decay_t<decltype(real)>::create(tree.handler.model, {});
    Placeholders::make(placeholder, [&resolved, &fails, number, real]() -> ModelElement {
      if (fails && number == 2) {
        return ModelElement();
      }
      resolved.push_back(number);
      return real;
    });
    list.append(placeholder);
  };
  const auto product = tree.make<ProductDeltaData>(u"P");
  root->getProductsDeltaDataMutable().append(product);
  int number = 0;
  for (const char16_t* name : {u"c", u"a", u"b", u"a"}) {
    const auto component = tree.make<ComponentDeltaData>(name);
    product->getCompsToDeleteMutable().append(component);
    product->getCompsToExtractMutable().append(component);
    const auto withFiles = tree.make<ComponentDataWithFilesToDelete>(name);
    root->getCompsWithFilesToDeleteMutable().append(withFiles);
    appendPlaceholder(number, component->getPkgsToDeleteMutable(), tree.make<PkgDeltaData>(u"p"));
    appendPlaceholder(number, component->getPkgsToExtractMutable(), tree.make<PkgDeltaData>(u"p"));
    appendPlaceholder(number, withFiles->getPkgsWithFilesToDeleteMutable(),
                      tree.make<PkgDataWithFilesToDelete>(u"p"));
    ++number;
  }
  EXPECT_THROW(GetParam().ask(tree.handler), Exception<CannotCastIncompatibleTypes>);
  EXPECT_EQ(resolved, (std::vector<int>{0, 1}));
  fails = false;
  GetParam().ask(tree.handler);
  EXPECT_EQ(resolved, (std::vector<int>{0, 1, 2, 3}));
}

// The list that the resolver appends to was visited before, as rows or as elements.
TEST(QueryOfAListThatAResolverAppendsTo, ReadsItAsItWasWhenItsComponentWasVisited) {
  for (const bool isRead : {false, true}) {
    const CatalogueHandler handler;
    const auto root = handler.getProductUpdateMetaDataModel();
    handler.setProductDeltaData(u"P", {}, {u"x", u"y"}, {}, {{u"x", {{u"a", 1, 2}}}});
    const auto product = root->getProductsDeltaData()[0];
    const auto visited = product->getCompsToExtract()[0];
    if (isRead) {
      visited->getPkgsToExtract()[0];
    }
    const auto make = [&](const std::u16string& name) {
      auto pkg = PkgDeltaData::create(handler.model, {});
      pkg->setName(name);
      return pkg;
    };
    const auto placeholder = make(u"placeholder");
    Placeholders::make(placeholder, [&]() -> ModelElement {
      visited->getPkgsToExtractMutable().append(make(u"z"));
      return make(u"r");
    });
    product->getCompsToExtract()[1]->getPkgsToExtractMutable().append(placeholder);
    std::vector<std::u16string> keys;
    for (const auto& [key, sizes] : handler.getUpdateSizeForComponentsToExtract()) {
      keys.push_back(key);
    }
    EXPECT_EQ(keys, (std::vector<std::u16string>{u"x_a", u"y_r"})) << isRead;
  }
}

}  // namespace
}  // namespace install::update_metadata_parser
