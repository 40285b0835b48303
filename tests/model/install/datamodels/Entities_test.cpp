// Behavior that all eight classes of elements share.

#include <cstddef>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "install/datamodels/ElementNumbers.h"
#include "install/datamodels/common/Release.h"
#include "install/datamodels/product_update/ComponentDataWithFilesToDelete.h"
#include "install/datamodels/product_update/ComponentDeltaData.h"
#include "install/datamodels/product_update/PkgDataWithFilesToDelete.h"
#include "install/datamodels/product_update/PkgDeltaData.h"
#include "install/datamodels/product_update/ProductDeltaData.h"
#include "install/datamodels/product_update/ProductUpdateMetaData.h"
#include "install/datamodels/product_update/ReleaseData.h"
#include "support/LifetimeProbe.h"

namespace install::datamodels {
namespace {

using common::Release;
using product_update::ComponentDataWithFilesToDelete;
using product_update::ComponentDeltaData;
using product_update::PkgDataWithFilesToDelete;
using product_update::PkgDeltaData;
using product_update::ProductDeltaData;
using product_update::ProductUpdateMetaData;
using product_update::ReleaseData;
using test_support::LifetimeProbe;

template <class T>
class Entity : public ::testing::Test {};

using Entities = ::testing::Types<ProductUpdateMetaData, ReleaseData, Release, ProductDeltaData,
                                  ComponentDeltaData, PkgDeltaData, ComponentDataWithFilesToDelete,
                                  PkgDataWithFilesToDelete>;

// Names an element class without its namespace, in ASCII.
struct EntityName {
  template <class T>
  static std::string GetName(int) {
    std::u16string_view name = T::Impl::kClass.qualifiedName;
    name.remove_prefix(name.rfind(u':') + 1);
    std::string text;
    for (const char16_t unit : name) {
      text += static_cast<char>(unit);
    }
    return text;
  }
};

TYPED_TEST_SUITE(Entity, Entities, EntityName);

TYPED_TEST(Entity, IsMadeInItsModelAndAttachedToNothing) {
  const auto model = mf::zero::Model::create(mf::zero::ModelSpec());
  const TypeParam element = TypeParam::create(model, mf::zero::Uuid());
  ASSERT_TRUE(element);
  EXPECT_EQ(&element->model(), &model.impl());
  EXPECT_FALSE(element->getContainer());
  EXPECT_EQ(element->getContainerProperty(), nullptr);
  EXPECT_FALSE(element->isProxy());
}

TYPED_TEST(Entity, IsANewElementEachTime) {
  const auto model = mf::zero::Model::create(mf::zero::ModelSpec());
  const TypeParam first = TypeParam::create(model, mf::zero::Uuid());
  const TypeParam second = TypeParam::create(model, mf::zero::Uuid());
  EXPECT_NE(first, second);
}

TYPED_TEST(Entity, HasAnEmptyHandleByDefault) {
  EXPECT_FALSE(TypeParam());
}

TYPED_TEST(Entity, IsFreedWithItsLastHandle) {
  const auto model = mf::zero::Model::create(mf::zero::ModelSpec());
  TypeParam first = TypeParam::create(model, mf::zero::Uuid());
  const LifetimeProbe element(first);
  TypeParam second = first;
  first = TypeParam();
  EXPECT_TRUE(element.alive());
  second = first;
  EXPECT_FALSE(element.alive());
}

TYPED_TEST(Entity, KnowsItsClass) {
  const auto model = mf::zero::Model::create(mf::zero::ModelSpec());
  const TypeParam element = TypeParam::create(model, mf::zero::Uuid());
  EXPECT_EQ(&element->elementClass(), &TypeParam::Impl::kClass);
}

struct EntityClass {
  const char* name;
  const mf::zero::ElementClass& elementClass;
  std::u16string_view qualifiedName;
  std::size_t number;
};

const EntityClass kClasses[] = {
    {"ProductUpdateMetaData", ProductUpdateMetaData::Impl::kClass,
     u"install::datamodels::product_update::ProductUpdateMetaData", kProductUpdateMetaDataNumber},
    {"ReleaseData", ReleaseData::Impl::kClass, u"install::datamodels::product_update::ReleaseData",
     kReleaseDataNumber},
    {"Release", Release::Impl::kClass, u"install::datamodels::common::Release", kReleaseNumber},
    {"ProductDeltaData", ProductDeltaData::Impl::kClass,
     u"install::datamodels::product_update::ProductDeltaData", kProductDeltaDataNumber},
    {"ComponentDeltaData", ComponentDeltaData::Impl::kClass,
     u"install::datamodels::product_update::ComponentDeltaData", kComponentDeltaDataNumber},
    {"PkgDeltaData", PkgDeltaData::Impl::kClass,
     u"install::datamodels::product_update::PkgDeltaData", kPkgDeltaDataNumber},
    {"ComponentDataWithFilesToDelete", ComponentDataWithFilesToDelete::Impl::kClass,
     u"install::datamodels::product_update::ComponentDataWithFilesToDelete",
     kComponentDataWithFilesToDeleteNumber},
    {"PkgDataWithFilesToDelete", PkgDataWithFilesToDelete::Impl::kClass,
     u"install::datamodels::product_update::PkgDataWithFilesToDelete",
     kPkgDataWithFilesToDeleteNumber},
};

class QualifiedName : public ::testing::TestWithParam<EntityClass> {};

TEST_P(QualifiedName, IsThatOfTheClassWithItsNamespace) {
  EXPECT_EQ(GetParam().elementClass.qualifiedName, GetParam().qualifiedName);
  EXPECT_EQ(GetParam().elementClass.number, GetParam().number);
}

INSTANTIATE_TEST_SUITE_P(Entities, QualifiedName, ::testing::ValuesIn(kClasses),
                         [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace install::datamodels
