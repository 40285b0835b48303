#include "install/datamodels/product_update/ProductDeltaData.h"

#include <string>

#include <gtest/gtest.h>

#include "support/ModelDump.h"
#include "support/SampleStrings.h"

namespace install::datamodels::product_update {
namespace {

class Product : public ::testing::Test {
 protected:
  ComponentDeltaData makeComponent(const std::u16string& name) const {
    ComponentDeltaData component = ComponentDeltaData::create(model, mf::zero::Uuid());
    component->setName(name);
    return component;
  }

  mf::zero::Model model = mf::zero::Model::create(mf::zero::ModelSpec());
  ProductDeltaData product = ProductDeltaData::create(model, mf::zero::Uuid());
};

TEST_F(Product, ReadsAsUnsetWhenItIsNew) {
  EXPECT_EQ(test_support::dump(product), "product \"\"\n");
}

TEST_F(Product, KeepsEveryUnitOfItsName) {
  for (const std::u16string& text : test_support::sampleStrings()) {
    product->setName(text);
    EXPECT_TRUE(product->getName() == text);
    EXPECT_TRUE(product->name().view() == text);
  }
}

TEST_F(Product, KeepsItsTwoListsApart) {
  product->setName(u"Press");
  product->getCompsToDeleteMutable().append(makeComponent(u"old"));
  product->getCompsToExtractMutable().append(makeComponent(u"new"));
  product->getCompsToDeleteMutable().append(makeComponent(u"old"));
  EXPECT_EQ(test_support::dump(product),
            "product \"Press\"\n"
            "  component to delete \"old\"\n"
            "  component to delete \"old\"\n"
            "  component to extract \"new\"\n");
  EXPECT_EQ(&product->getCompsToDeleteMutable(), &product->getCompsToDelete());
  EXPECT_EQ(&product->getCompsToExtractMutable(), &product->getCompsToExtract());
}

TEST_F(Product, ContainsAComponentOncePerList) {
  const ComponentDeltaData component = makeComponent(u"core");
  for (int count = 0; count < 2; ++count) {
    product->getCompsToDeleteMutable().append(component);
    product->getCompsToExtractMutable().append(component);
  }
  EXPECT_EQ(product->getCompsToDelete().size(), 1u);
  EXPECT_EQ(product->getCompsToExtract().size(), 1u);
}

}  // namespace
}  // namespace install::datamodels::product_update
