#include "mf/zero/fields/RowStore.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "foundation/core/except.h"
#include "install/datamodels/product_update/ComponentDeltaData.h"
#include "install/datamodels/product_update/PkgDeltaData.h"
#include "install/datamodels/product_update/ProductDeltaData.h"
#include "mf/zero/elements/Messages.h"
#include "mf/zero/elements/Placeholders.h"
#include "support/ModelDump.h"

namespace mf::zero {
namespace {

using foundation::core::except::Exception;
using install::datamodels::product_update::ComponentDeltaData;
using install::datamodels::product_update::PkgDeltaData;
using install::datamodels::product_update::ProductDeltaData;
using test_support::dump;
using Pkgs = OwnedCollection<PkgDeltaData>;

struct Pkg {
  std::u16string name;
  std::int64_t size;
  std::int64_t uncompressedBytes;
};

const std::vector<Pkg> kTwoPkgs = {{u"a", 1, 10}, {u"b", 2, 20}};
constexpr const char* kTwoPkgsToDelete =
    "component \"core\"\n"
    "  package to delete \"a\": size 1, unpacked 10\n"
    "  package to delete \"b\": size 2, unpacked 20\n";

class RowsOfAComponent : public ::testing::Test {
 protected:
  ComponentDeltaData makeComponent(const std::u16string& name = u"core") const {
    const ComponentDeltaData component = ComponentDeltaData::create(model, Uuid());
    component->setName(name);
    return component;
  }

  const RowList& packages(Name component, const std::vector<Pkg>& pkgs,
                          std::uint8_t field = ComponentDeltaData::Impl::kPkgsToDelete) const {
    return packagesInRound(store().beginRound(), component, pkgs, field);
  }

  const RowList& packagesInRound(
      std::uint64_t round, Name component, const std::vector<Pkg>& pkgs,
      std::uint8_t field = ComponentDeltaData::Impl::kPkgsToDelete) const {
    return store().packages(component, field, round, pkgs, [](const Pkg& pkg) {
      return RowStore::NewPackage{pkg.name, pkg.size, pkg.uncompressedBytes};
    });
  }

  ComponentDeltaData makeFilled(const std::vector<Pkg>& pkgs,
                                const std::u16string& name = u"core") const {
    ComponentDeltaData component = makeComponent(name);
    RowStore::refer(component->getPkgsToDeleteMutable(), packages(component->name(), pkgs));
    return component;
  }

  static const RowList* rowsOf(const ComponentDeltaData& component) {
    return RowStore::rowsOf(component->getPkgsToDelete());
  }

  RowStore& store() const { return RowStore::of(model); }

  Model model = Model::create(ModelSpec());
};

TEST_F(RowsOfAComponent, AreStoredOnceForComponentsWithTheSamePackages) {
  const RowList* rows = rowsOf(makeFilled(kTwoPkgs));
  ASSERT_NE(rows, nullptr);
  EXPECT_EQ(rowsOf(makeFilled(kTwoPkgs)), rows);
}

struct OtherPkgs {
  const char* name;
  std::vector<Pkg> pkgs;
};

void PrintTo(const OtherPkgs& row, std::ostream* stream) {
  *stream << row.name;
}

class RowsOfAnotherTable : public RowsOfAComponent,
                           public ::testing::WithParamInterface<OtherPkgs> {};

TEST_P(RowsOfAnotherTable, AreASeparateList) {
  const ComponentDeltaData before = makeFilled(kTwoPkgs);
  const ComponentDeltaData other = makeFilled(GetParam().pkgs);
  EXPECT_NE(rowsOf(other), rowsOf(before));
  ASSERT_EQ(other->getPkgsToDelete().size(), GetParam().pkgs.size());
  for (std::size_t i = 0; i < GetParam().pkgs.size(); ++i) {
    const Pkg& pkg = GetParam().pkgs[i];
    const PkgDeltaData element = other->getPkgsToDelete()[i];
    EXPECT_EQ(element->getName(), pkg.name);
    EXPECT_EQ(element->getSize(), pkg.size);
    EXPECT_EQ(element->getUncompressedBytes(), pkg.uncompressedBytes);
  }
}

const OtherPkgs kOtherPkgs[] = {
    {"WithoutTheLast", {{u"a", 1, 10}}},
    {"WithOneMore", {{u"a", 1, 10}, {u"b", 2, 20}, {u"c", 3, 30}}},
    {"OfAnotherName", {{u"a", 1, 10}, {u"c", 2, 20}}},
    {"OfALongerName", {{u"a", 1, 10}, {u"ba", 2, 20}}},
    {"OfAnotherSize", {{u"a", 1, 10}, {u"b", 3, 20}}},
    {"OfAnotherUnpackedSize", {{u"a", 1, 10}, {u"b", 2, 21}}},
    {"InAnotherOrder", {{u"b", 2, 20}, {u"a", 1, 10}}},
    {"WithARepeatedName", {{u"a", 1, 10}, {u"a", 1, 10}}},
    {"OfExtremeValues",
     {{u"", std::numeric_limits<std::int64_t>::min(), std::numeric_limits<std::int64_t>::max()}}},
};

INSTANTIATE_TEST_SUITE_P(Pkgs, RowsOfAnotherTable, ::testing::ValuesIn(kOtherPkgs),
                         [](const auto& row) { return row.param.name; });

TEST_F(RowsOfAComponent, AreSharedWithTheLastComponentOfTheName) {
  const RowList* first = rowsOf(makeFilled(kTwoPkgs));
  const RowList* second = rowsOf(makeFilled({{u"a", 1, 10}}));
  EXPECT_EQ(rowsOf(makeFilled({{u"a", 1, 10}})), second);
  EXPECT_NE(rowsOf(makeFilled(kTwoPkgs)), first) << "only the last list is compared";
}

TEST_F(RowsOfAComponent, AreNotSharedWithAnotherNameOrField) {
  const ComponentDeltaData component = makeFilled(kTwoPkgs);
  EXPECT_NE(rowsOf(makeFilled(kTwoPkgs, u"docs")), rowsOf(component));
  EXPECT_NE(rowsOf(makeFilled(kTwoPkgs, u"")), rowsOf(component));
  EXPECT_NE(&packages(component->name(), kTwoPkgs, ComponentDeltaData::Impl::kPkgsToExtract),
            rowsOf(component));
}

TEST_F(RowsOfAComponent, AreComparedOncePerRound) {
  const std::uint64_t round = store().beginRound();
  const Name name = store().nameOf(u"core");
  const RowList& rows = packagesInRound(round, name, kTwoPkgs);
  // The same rows although the packages differ, which a round rules out: nothing was compared.
  EXPECT_EQ(&packagesInRound(round, name, {{u"z", 9, 9}}), &rows);
  EXPECT_NE(&packages(name, {{u"z", 9, 9}}), &rows) << "the next round compares";
}

TEST_F(RowsOfAComponent, AreInOrderExactlyIfEachNameIsGreaterThanTheOneBefore) {
  EXPECT_TRUE(rowsOf(makeFilled({{u"a", 0, 0}}))->ascending);
  EXPECT_TRUE(rowsOf(makeFilled(kTwoPkgs))->ascending);
  EXPECT_TRUE(rowsOf(makeFilled({{u"", 0, 0}, {u"a", 0, 0}, {u"ab", 0, 0}}))->ascending);
  EXPECT_FALSE(rowsOf(makeFilled({{u"b", 0, 0}, {u"a", 0, 0}}))->ascending);
  EXPECT_FALSE(rowsOf(makeFilled({{u"a", 0, 0}, {u"a", 0, 0}}))->ascending);
  EXPECT_FALSE(rowsOf(makeFilled({{u"\uE000", 0, 0}, {u"\U0001F600", 0, 0}}))->ascending)
      << "code units, not code points";
}

TEST_F(RowsOfAComponent, CountWithoutBecomingElements) {
  const ComponentDeltaData component = makeFilled(kTwoPkgs);
  EXPECT_EQ(component->getPkgsToDelete().size(), 2u);
  EXPECT_FALSE(component->getPkgsToDelete().empty());
  component->getPkgsToDelete().resolvePlaceholders();
  component->getPkgsToDeleteMutable().reserve(100);
  EXPECT_NE(rowsOf(component), nullptr);
}

TEST_F(RowsOfAComponent, BecomeElementsWhenOneIsRead) {
  const ComponentDeltaData component = makeFilled(kTwoPkgs);
  const PkgDeltaData last = component->getPkgsToDelete()[1];
  EXPECT_EQ(rowsOf(component), nullptr);
  EXPECT_EQ(component->getPkgsToDelete()[1], last) << "two reads return the same element";
  EXPECT_EQ(&component->getPkgsToDelete().readAt(1), last.operator->());
  EXPECT_EQ(last->getContainer(), component);
  EXPECT_EQ(last->getContainerProperty()->name, std::u16string_view(u"pkgsToDelete"));
  EXPECT_EQ(&last->model(), &component->model());
  EXPECT_FALSE(last->isProxy());
  EXPECT_EQ(dump(component), kTwoPkgsToDelete);
}

TEST_F(RowsOfAComponent, BecomeElementsInOneListOnly) {
  const ComponentDeltaData one = makeFilled(kTwoPkgs);
  const ComponentDeltaData other = makeFilled(kTwoPkgs);
  one->getPkgsToDelete()[0]->setSize(7);
  EXPECT_NE(rowsOf(other), nullptr);
  EXPECT_NE(one->getPkgsToDelete()[0], other->getPkgsToDelete()[0]);
  EXPECT_EQ(dump(other), kTwoPkgsToDelete);
  EXPECT_EQ(rowsOf(makeFilled(kTwoPkgs))->size, 2u) << "the rows have not changed";
}

TEST_F(RowsOfAComponent, BecomeElementsBeforeOneIsAppended) {
  const ComponentDeltaData component = makeFilled(kTwoPkgs);
  const PkgDeltaData added = PkgDeltaData::create(model, Uuid());
  component->getPkgsToDeleteMutable().append(added);
  ASSERT_EQ(component->getPkgsToDelete().size(), 3u);
  EXPECT_EQ(component->getPkgsToDelete()[2], added);
  EXPECT_EQ(component->getPkgsToDelete()[0]->getName(), u"a");
  component->getPkgsToDeleteMutable().append(component->getPkgsToDelete()[0]);
  EXPECT_EQ(component->getPkgsToDelete().size(), 3u)
      << "an element of the list is not appended twice";
}

TEST_F(RowsOfAComponent, StayRowsWhenNothingIsAppended) {
  const ComponentDeltaData component = makeFilled(kTwoPkgs);
  component->getPkgsToDeleteMutable().append(PkgDeltaData());
  const PkgDeltaData foreign = PkgDeltaData::create(Model::create(ModelSpec()), Uuid());
  EXPECT_THROW(component->getPkgsToDeleteMutable().append(foreign), Exception<IncompatibleModels>);
  EXPECT_NE(rowsOf(component), nullptr);
}

TEST_F(RowsOfAComponent, CanPrecedeAPlaceholder) {
  const ComponentDeltaData component = makeFilled(kTwoPkgs);
  const PkgDeltaData real = PkgDeltaData::create(model, Uuid());
  const PkgDeltaData placeholder = PkgDeltaData::create(model, Uuid());
  Placeholders::make(placeholder, [real] { return real; });
  component->getPkgsToDeleteMutable().append(placeholder);
  EXPECT_EQ(component->getPkgsToDelete()[0]->getName(), u"a");
  EXPECT_EQ(component->getPkgsToDelete()[2], real);
}

TEST_F(RowsOfAComponent, KeepTheModelForTheirElementsAndNotForThemselves) {
  PkgDeltaData last;
  {
    const ComponentDeltaData component = makeFilled(kTwoPkgs);
    last = component->getPkgsToDelete()[1];
    makeFilled(kTwoPkgs);
  }
  model = Model();
  EXPECT_EQ(last->getName(), u"b");
  EXPECT_FALSE(last->getContainer());
}

TEST_F(RowsOfAComponent, BecomeElementsWhereverTheyLie) {
  // More than fit into a slab, and gaps left by earlier elements.
  std::vector<Pkg> pkgs;
  for (int count = 0; count < 5000; ++count) {
    pkgs.push_back({std::u16string(1, static_cast<char16_t>(count + 1)), count, -count});
  }
  std::vector<PkgDeltaData> kept;
  for (int count = 0; count < 100; ++count) {
    PkgDeltaData::create(model, Uuid());
    kept.push_back(PkgDeltaData::create(model, Uuid()));
  }
  kept.resize(50);
  const ComponentDeltaData component = makeFilled(pkgs);
  for (std::size_t i = 0; i < pkgs.size(); ++i) {
    ASSERT_EQ(component->getPkgsToDelete()[i]->getSize(), pkgs[i].size);
    ASSERT_EQ(component->getPkgsToDelete()[i]->getName(), pkgs[i].name);
    ASSERT_EQ(component->getPkgsToDelete()[i]->getContainer(), component);
  }
}

class RowsOfAProduct : public RowsOfAComponent {
 protected:
  struct Component {
    std::u16string name;
    const RowList* packages;
  };

  ProductDeltaData makeProduct(std::uint8_t field, const std::vector<Component>& components) const {
    ProductDeltaData product = ProductDeltaData::create(model, Uuid());
    product->setName(u"p");
    RowStore::refer(field == ComponentDeltaData::Impl::kPkgsToDelete
                        ? product->getCompsToDeleteMutable()
                        : product->getCompsToExtractMutable(),
                    store().addComponents(field, components, [&](const Component& component) {
                      return ComponentRow{store().nameOf(component.name), component.packages};
                    }));
    return product;
  }

  const RowList& twoPkgs() const { return packages(store().nameOf(u"core"), kTwoPkgs); }
};

TEST_F(RowsOfAProduct, BecomeElementsWithTheRowsOfTheirPackages) {
  const RowList& pkgs = twoPkgs();
  const ProductDeltaData product =
      makeProduct(ComponentDeltaData::Impl::kPkgsToDelete,
                  {{u"core", &pkgs}, {u"", nullptr}, {u"core", &pkgs}});
  ASSERT_NE(RowStore::rowsOf(product->getCompsToDelete()), nullptr);
  EXPECT_EQ(product->getCompsToDelete().size(), 3u);
  const ComponentDeltaData last = product->getCompsToDelete()[2];
  EXPECT_EQ(RowStore::rowsOf(product->getCompsToDelete()), nullptr);
  EXPECT_EQ(product->getCompsToDelete()[2], last) << "two reads return the same element";
  EXPECT_NE(product->getCompsToDelete()[0], last);
  EXPECT_EQ(last->getContainer(), product);
  EXPECT_EQ(last->getContainerProperty()->name, std::u16string_view(u"compsToDelete"));
  EXPECT_EQ(rowsOf(last), &pkgs);
  EXPECT_TRUE(last->getPkgsToExtract().empty());
  EXPECT_EQ(product->getCompsToDelete()[1]->getName(), u"");
  EXPECT_TRUE(product->getCompsToDelete()[1]->getPkgsToDelete().empty());
  EXPECT_EQ(dump(last), kTwoPkgsToDelete);
}

TEST_F(RowsOfAProduct, BelongToTheSideTheyWereMadeFor) {
  const ProductDeltaData product =
      makeProduct(ComponentDeltaData::Impl::kPkgsToExtract, {{u"core", &twoPkgs()}});
  const ComponentDeltaData component = product->getCompsToExtract()[0];
  EXPECT_TRUE(component->getPkgsToDelete().empty());
  EXPECT_EQ(component->getPkgsToExtract().size(), 2u);
  EXPECT_EQ(component->getPkgsToExtract()[1]->getUncompressedBytes(), 20);
}

TEST_F(RowsOfAProduct, BecomeElementsBeforeOneIsAppended) {
  const ProductDeltaData product =
      makeProduct(ComponentDeltaData::Impl::kPkgsToDelete, {{u"core", &twoPkgs()}});
  const ComponentDeltaData added = makeComponent(u"added");
  product->getCompsToDeleteMutable().append(added);
  ASSERT_EQ(product->getCompsToDelete().size(), 2u);
  EXPECT_EQ(product->getCompsToDelete()[0]->getName(), u"core");
  EXPECT_EQ(product->getCompsToDelete()[1], added);
}

TEST_F(RowsOfAProduct, KeepTheModelForTheirElementsAndNotForThemselves) {
  PkgDeltaData last;
  {
    const ProductDeltaData product =
        makeProduct(ComponentDeltaData::Impl::kPkgsToDelete, {{u"core", &twoPkgs()}});
    last = product->getCompsToDelete()[0]->getPkgsToDelete()[1];
  }
  model = Model();
  EXPECT_EQ(last->getName(), u"b");
  EXPECT_FALSE(last->getContainer());
}

}  // namespace
}  // namespace mf::zero
