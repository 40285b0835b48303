#include "mf/zero/elements/ModelElement.h"

#include <array>
#include <cstdint>
#include <optional>
#include <type_traits>
#include <utility>

#include <gtest/gtest.h>

#include "install/datamodels/product_update/ComponentDeltaData.h"
#include "install/datamodels/product_update/PkgDeltaData.h"
#include "install/datamodels/product_update/ProductDeltaData.h"
#include "mf/zero/elements/Model.h"
#include "mf/zero/elements/Uuid.h"
#include "support/LifetimeProbe.h"

namespace mf::zero {
namespace {

using install::datamodels::product_update::ComponentDeltaData;
using install::datamodels::product_update::PkgDeltaData;
using install::datamodels::product_update::ProductDeltaData;
using test_support::LifetimeProbe;

static_assert(sizeof(PkgDeltaData) == sizeof(void*), "a handle is one pointer");
static_assert(std::is_nothrow_copy_constructible_v<PkgDeltaData>);
static_assert(std::is_nothrow_copy_assignable_v<PkgDeltaData>);
static_assert(std::is_nothrow_move_constructible_v<PkgDeltaData>);
static_assert(std::is_nothrow_move_assignable_v<PkgDeltaData>);
static_assert(!std::is_copy_constructible_v<PkgDeltaData::Impl>, "elements are not copied");
static_assert(!std::is_convertible_v<PkgDeltaData, bool>, "the test for emptiness is explicit");
static_assert(!std::is_assignable_v<PkgDeltaData&, ComponentDeltaData>);

class Handle : public ::testing::Test {
 protected:
  template <class Element>
  Element make() const {
    return Element::create(model, Uuid());
  }

  Model model = Model::create(ModelSpec());
};

TEST_F(Handle, IsEmptyUntilItIsGivenAnElement) {
  PkgDeltaData handle;
  EXPECT_FALSE(handle);
  handle = make<PkgDeltaData>();
  EXPECT_TRUE(handle);
}

TEST_F(Handle, IsHarmlessWhenItIsEmpty) {
  PkgDeltaData empty;
  const PkgDeltaData copy(empty);
  const PkgDeltaData moved(std::move(empty));
  PkgDeltaData assigned;
  assigned = copy;
  assigned.addRef();
  assigned.removeRef();
  assigned.removeRef();
  EXPECT_FALSE(copy);
  EXPECT_FALSE(moved);
  EXPECT_FALSE(assigned);
  EXPECT_EQ(copy, assigned);
}

TEST_F(Handle, FreesTheElementWithItsLastCopy) {
  std::optional<PkgDeltaData> first = make<PkgDeltaData>();
  const LifetimeProbe element(*first);
  std::optional<PkgDeltaData> second = first;
  std::optional<PkgDeltaData> third = second;
  first.reset();
  third.reset();
  EXPECT_TRUE(element.alive());
  second.reset();
  EXPECT_FALSE(element.alive());
}

TEST_F(Handle, MovesItsReferenceAndIsEmptyAfterwards) {
  std::optional<PkgDeltaData> first = make<PkgDeltaData>();
  const LifetimeProbe element(*first);
  std::optional<PkgDeltaData> second = std::move(*first);
  EXPECT_FALSE(*first);
  PkgDeltaData third;
  third = std::move(*second);
  EXPECT_FALSE(*second);
  EXPECT_TRUE(element.alive());
  third = PkgDeltaData();
  EXPECT_FALSE(element.alive());
}

TEST_F(Handle, DropsItsFormerElementWhenItIsAssignedAnother) {
  PkgDeltaData handle = make<PkgDeltaData>();
  const LifetimeProbe first(handle);
  const PkgDeltaData other = make<PkgDeltaData>();
  const LifetimeProbe second(other);
  handle = other;
  EXPECT_FALSE(first.alive());
  EXPECT_TRUE(second.alive());
  EXPECT_EQ(handle, other);
}

TEST_F(Handle, KeepsItsElementWhenItIsAssignedToItself) {
  PkgDeltaData handle = make<PkgDeltaData>();
  const LifetimeProbe element(handle);
  PkgDeltaData& same = handle;
  handle = same;
  EXPECT_TRUE(handle);
  handle = std::move(same);
  EXPECT_TRUE(handle);
  EXPECT_TRUE(element.alive());
  handle = PkgDeltaData();
  EXPECT_FALSE(element.alive());
}

TEST_F(Handle, CanBeAssignedAPartOfTheElementThatItReleases) {
  ProductDeltaData product = make<ProductDeltaData>();
  const PkgDeltaData pkg = make<PkgDeltaData>();
  {
    const ComponentDeltaData component = make<ComponentDeltaData>();
    component->getPkgsToDeleteMutable().append(pkg);
    product->getCompsToDeleteMutable().append(component);
  }
  const ProductDeltaData::Impl& whole = *product.operator->();
  ModelElement handle = std::move(product);
  // The handle holds the last reference to the whole, and the whole holds the last one to its part.
  handle = whole.getCompsToDelete()[0];
  EXPECT_EQ(pkg->getContainer(), handle) << "the part is still there";
  handle = ModelElement();
  EXPECT_FALSE(pkg->getContainer());
}

TEST_F(Handle, CountsReferencesAddedAndReleasedByHand) {
  ProductDeltaData product = make<ProductDeltaData>();
  const ComponentDeltaData component = make<ComponentDeltaData>();
  product->getCompsToDeleteMutable().append(component);
  product.addRef();
  product = ProductDeltaData();
  EXPECT_TRUE(component->getContainer()) << "the reference added by hand keeps the product";
  component->getContainer().removeRef();
  EXPECT_FALSE(component->getContainer());
}

TEST_F(Handle, ComparesByIdentityNeverByContent) {
  const PkgDeltaData pkg = make<PkgDeltaData>();
  const PkgDeltaData same = pkg;
  const PkgDeltaData twin = make<PkgDeltaData>();
  EXPECT_TRUE(pkg == same);
  EXPECT_FALSE(pkg != same);
  EXPECT_FALSE(pkg == twin);
  EXPECT_TRUE(pkg != twin);
  EXPECT_FALSE(pkg == PkgDeltaData());
  EXPECT_TRUE(ModelElement() == PkgDeltaData());
}

TEST_F(Handle, RefersToTheSameElementAsItsCopies) {
  const PkgDeltaData pkg = make<PkgDeltaData>();
  const PkgDeltaData copy = pkg;
  copy->setName(u"shared");
  EXPECT_EQ(pkg->getName(), u"shared");
}

TEST_F(Handle, IsComparedByIdentityWhateverTheUuid) {
  Uuid uuid;
  uuid.bytes.fill(0xAB);
  const PkgDeltaData named = PkgDeltaData::create(model, uuid);
  const PkgDeltaData twin = PkgDeltaData::create(model, uuid);
  EXPECT_NE(named, twin);
  ComponentDeltaData component = make<ComponentDeltaData>();
  component->getPkgsToDeleteMutable().append(named);
  component->getPkgsToDeleteMutable().append(twin);
  EXPECT_EQ(component->getPkgsToDelete().size(), 2u);
}

TEST(NilUuid, IsSixteenZeroBytes) {
  EXPECT_EQ(Uuid().bytes, (std::array<std::uint8_t, 16>{}));
}

}  // namespace
}  // namespace mf::zero
