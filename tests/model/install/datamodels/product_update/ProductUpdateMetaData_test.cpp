#include "install/datamodels/product_update/ProductUpdateMetaData.h"

#include <gtest/gtest.h>

#include "foundation/core/except.h"
#include "mf/zero/elements/Messages.h"
#include "support/ModelDump.h"

namespace install::datamodels::product_update {
namespace {

class Root : public ::testing::Test {
 protected:
  template <class Element>
  Element make() const {
    return Element::create(model, mf::zero::Uuid());
  }

  mf::zero::Model model = mf::zero::Model::create(mf::zero::ModelSpec());
  ProductUpdateMetaData root = make<ProductUpdateMetaData>();
};

TEST_F(Root, ReadsAsUnsetWhenItIsNew) {
  EXPECT_FALSE(root->getReleaseData());
  EXPECT_EQ(root->getProductsDeltaData().size(), 0u);
  EXPECT_EQ(root->getCompsWithFilesToDelete().size(), 0u);
  EXPECT_EQ(test_support::dump(root), "release data: none\n");
}

TEST_F(Root, KeepsWhatItIsGiven) {
  const auto releaseData = make<ReleaseData>();
  const auto product = make<ProductDeltaData>();
  const auto component = make<ComponentDataWithFilesToDelete>();
  root->setReleaseData(releaseData);
  root->getProductsDeltaDataMutable().append(product);
  root->getProductsDeltaDataMutable().append(product);
  root->getCompsWithFilesToDeleteMutable().append(component);
  root->getCompsWithFilesToDeleteMutable().append(component);
  EXPECT_EQ(root->getReleaseData(), releaseData);
  ASSERT_EQ(root->getProductsDeltaData().size(), 1u);
  EXPECT_EQ(root->getProductsDeltaData()[0], product);
  ASSERT_EQ(root->getCompsWithFilesToDelete().size(), 1u);
  EXPECT_EQ(root->getCompsWithFilesToDelete()[0], component);
  EXPECT_EQ(&root->getProductsDeltaDataMutable(), &root->getProductsDeltaData());
  EXPECT_EQ(&root->getCompsWithFilesToDeleteMutable(), &root->getCompsWithFilesToDelete());
}

TEST_F(Root, RejectsElementsOfAnotherModel) {
  using IncompatibleModels = foundation::core::except::Exception<mf::zero::IncompatibleModels>;
  const auto other = mf::zero::Model::create(mf::zero::ModelSpec());
  EXPECT_THROW(root->setReleaseData(ReleaseData::create(other, mf::zero::Uuid())),
               IncompatibleModels);
  EXPECT_THROW(
      root->getProductsDeltaDataMutable().append(ProductDeltaData::create(other, mf::zero::Uuid())),
      IncompatibleModels);
  EXPECT_THROW(root->getCompsWithFilesToDeleteMutable().append(
                   ComponentDataWithFilesToDelete::create(other, mf::zero::Uuid())),
               IncompatibleModels);
  EXPECT_EQ(test_support::dump(root), "release data: none\n");
}

}  // namespace
}  // namespace install::datamodels::product_update
