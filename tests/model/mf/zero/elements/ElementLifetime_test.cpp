// How long elements live, and what they know of their containers.

#include "mf/zero/elements/ModelElement.h"

#include <optional>
#include <string_view>

#include <gtest/gtest.h>

#include "install/datamodels/common/Release.h"
#include "install/datamodels/product_update/ComponentDeltaData.h"
#include "install/datamodels/product_update/PkgDeltaData.h"
#include "install/datamodels/product_update/ProductDeltaData.h"
#include "install/datamodels/product_update/ProductUpdateMetaData.h"
#include "install/datamodels/product_update/ReleaseData.h"
#include "mf/zero/elements/Model.h"
#include "mf/zero/elements/Uuid.h"
#include "support/LifetimeProbe.h"

namespace mf::zero {
namespace {

using install::datamodels::common::Release;
using install::datamodels::product_update::ComponentDeltaData;
using install::datamodels::product_update::PkgDeltaData;
using install::datamodels::product_update::ProductDeltaData;
using install::datamodels::product_update::ProductUpdateMetaData;
using install::datamodels::product_update::ReleaseData;
using test_support::LifetimeProbe;

class Element : public ::testing::Test {
 protected:
  template <class Made>
  Made make() const {
    return Made::create(model, Uuid());
  }

  // A root with one of everything below it. Handles that the test keeps outlive it.
  struct Tree {
    ProductUpdateMetaData root;
    ReleaseData releaseData;
    Release release;
    ProductDeltaData product;
    ComponentDeltaData component;
    PkgDeltaData pkg;
  };

  Tree makeTree() const {
    Tree tree{make<ProductUpdateMetaData>(), make<ReleaseData>(),        make<Release>(),
              make<ProductDeltaData>(),      make<ComponentDeltaData>(), make<PkgDeltaData>()};
    tree.root->setReleaseData(tree.releaseData);
    tree.releaseData->setTargetRelease(tree.release);
    tree.component->getPkgsToExtractMutable().append(tree.pkg);
    tree.product->getCompsToExtractMutable().append(tree.component);
    tree.root->getProductsDeltaDataMutable().append(tree.product);
    return tree;
  }

  Model model = Model::create(ModelSpec());
};

TEST_F(Element, IsKeptAliveByItsContainerAlone) {
  PkgDeltaData pkg = make<PkgDeltaData>();
  const LifetimeProbe element(pkg);
  std::optional<ComponentDeltaData> component = make<ComponentDeltaData>();
  (*component)->getPkgsToDeleteMutable().append(pkg);
  pkg = PkgDeltaData();
  EXPECT_TRUE(element.alive());
  component.reset();
  EXPECT_FALSE(element.alive());
}

TEST_F(Element, OutlivesItsContainerWhileACallerHoldsIt) {
  const PkgDeltaData pkg = makeTree().pkg;
  pkg->setName(u"kept");
  pkg->setSize(7);
  EXPECT_EQ(pkg->getName(), u"kept");
  EXPECT_EQ(pkg->getSize(), 7);
}

TEST_F(Element, OutlivesEveryHandleToItsModel) {
  const Tree tree = makeTree();
  model = Model();
  tree.pkg->setName(u"new name");
  tree.release->setVersion(u"1.0");
  EXPECT_EQ(tree.pkg->getName(), u"new name");
  EXPECT_EQ(tree.root->getReleaseData()->getTargetRelease()->getVersion(), u"1.0");
}

TEST_F(Element, OutlivesModelAndTreeTogether) {
  std::optional<Tree> tree = makeTree();
  const Release release = tree->release;
  const ComponentDeltaData component = tree->component;
  model = Model();
  tree.reset();
  release->setReleaseFamily(u"still here");
  component->setName(u"and here");
  EXPECT_EQ(release->getReleaseFamily(), u"still here");
  EXPECT_EQ(component->getName(), u"and here");
  EXPECT_EQ(component->getPkgsToExtract().size(), 1u);
}

TEST_F(Element, KnowsItsContainerAndItsField) {
  const Tree tree = makeTree();
  EXPECT_EQ(tree.releaseData->getContainer(), tree.root);
  EXPECT_EQ(tree.release->getContainer(), tree.releaseData);
  EXPECT_EQ(tree.product->getContainer(), tree.root);
  EXPECT_EQ(tree.component->getContainer(), tree.product);
  EXPECT_EQ(tree.pkg->getContainer(), tree.component);
  EXPECT_FALSE(tree.root->getContainer());
  EXPECT_EQ(tree.releaseData->getContainerProperty()->name, std::u16string_view(u"releaseData"));
  EXPECT_EQ(tree.release->getContainerProperty()->name, std::u16string_view(u"targetRelease"));
  EXPECT_EQ(tree.component->getContainerProperty()->name, std::u16string_view(u"compsToExtract"));
  EXPECT_EQ(tree.pkg->getContainerProperty()->name, std::u16string_view(u"pkgsToExtract"));
  EXPECT_EQ(tree.root->getContainerProperty(), nullptr);
}

TEST_F(Element, ForgetsAContainerThatIsGone) {
  std::optional<Tree> tree = makeTree();
  const ReleaseData releaseData = tree->releaseData;
  const Release release = tree->release;
  const ProductDeltaData product = tree->product;
  const PkgDeltaData pkg = tree->pkg;
  tree.reset();
  EXPECT_FALSE(releaseData->getContainer());
  EXPECT_FALSE(product->getContainer());
  EXPECT_EQ(product->getContainerProperty(), nullptr);
  EXPECT_EQ(release->getContainer(), releaseData) << "its own container is still there";
  EXPECT_EQ(pkg->getContainer(), product->getCompsToExtract()[0]);
}

TEST_F(Element, DoesNotKeepItsContainerAlive) {
  const Tree tree = makeTree();
  const PkgDeltaData pkg = make<PkgDeltaData>();
  {
    const ComponentDeltaData component = make<ComponentDeltaData>();
    component->getPkgsToDeleteMutable().append(pkg);
    ASSERT_TRUE(pkg->getContainer());
  }
  EXPECT_FALSE(pkg->getContainer());
}

TEST_F(Element, IsFreedWithTheWholeTreeWhenTheRootGoes) {
  PkgDeltaData pkg = make<PkgDeltaData>();
  const LifetimeProbe deepest(pkg);
  {
    const ProductUpdateMetaData root = make<ProductUpdateMetaData>();
    const ProductDeltaData product = make<ProductDeltaData>();
    const ComponentDeltaData component = make<ComponentDeltaData>();
    root->getProductsDeltaDataMutable().append(product);
    product->getCompsToDeleteMutable().append(component);
    component->getPkgsToDeleteMutable().append(pkg);
    pkg = PkgDeltaData();
    EXPECT_TRUE(deepest.alive());
  }
  EXPECT_FALSE(deepest.alive());
}

}  // namespace
}  // namespace mf::zero
