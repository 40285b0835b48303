#include "summary/UnknownProducts.h"

#include <optional>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

namespace update_metadata_tool::summary {
namespace {

std::string noteOn(const Contents& contents) {
  std::ostringstream err;
  noteUnknownProducts("da\nta", "up\x1B.json", contents, err);
  return err.str();
}

Contents makeContents() {
  Contents contents;
  contents.products.resize(3);
  return contents;
}

TEST(UnknownProducts, AreNotedIfNoneIsKnown) {
  Contents contents = makeContents();
  EXPECT_EQ(noteOn(contents),
            "update-metadata: note: the product data 'da<U+000A>ta' know none of the 3 products of "
            "'up<U+001B>.json'; check --product-data\n");
  contents.products.resize(1);
  EXPECT_EQ(noteOn(contents),
            "update-metadata: note: the product data 'da<U+000A>ta' do not know the only product "
            "of 'up<U+001B>.json'; check --product-data\n");
}

TEST(UnknownProducts, AreNotNotedIfOneIsKnown) {
  Contents contents = makeContents();
  contents.products[1].baseCode = u"CODE";
  EXPECT_EQ(noteOn(contents), "");
}

TEST(UnknownProducts, AreNotNotedOfADocumentWithoutProducts) {
  EXPECT_EQ(noteOn(Contents()), "");
}

TEST(UnknownProducts, AreNotNotedWithoutProductData) {
  std::ostringstream err;
  noteUnknownProducts(std::nullopt, "update.json", makeContents(), err);
  EXPECT_EQ(err.str(), "");
}

}  // namespace
}  // namespace update_metadata_tool::summary
