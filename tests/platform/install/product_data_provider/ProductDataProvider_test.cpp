#include "install/product_data_provider/ProductDataProvider.h"

#include <memory>
#include <string>
#include <type_traits>

#include <gtest/gtest.h>

#include "platform/install/product_data_provider/Catalogue.h"

namespace {

using install::product_data_provider::ControllingProduct;
using install::product_data_provider::Product;
using install::product_data_provider::ProductDataProvider;
using test_support::Catalogue;
using test_support::kHeader;
using test_support::row;

// ---------------------------------------------------------------------------------------------
// Look-ups.

TEST(Catalogue, MapsNamesToCodesAndCodesToNames) {
  const Catalogue catalogue(kHeader + "ML\tAlpha\t1\t\nSL\tBeta\t2\tAlpha\n");
  EXPECT_EQ(catalogue->getProductBaseCode(u"Alpha"), u"ML");
  EXPECT_EQ(catalogue->getProductBaseCode(u"Beta"), u"SL");
  EXPECT_EQ(catalogue->getProductName(u"ML"), u"Alpha");
  EXPECT_EQ(catalogue->getProductName(u"SL"), u"Beta");
}

TEST(Catalogue, ReturnsAnEmptyStringForAnUnknownKey) {
  const Catalogue catalogue(kHeader + "ML\tAlpha\t1\t\n");
  for (const char16_t* key : {u"", u"Gamma", u"alpha", u"Alpha ", u"base code", u"name"}) {
    EXPECT_EQ(catalogue->getProductBaseCode(key), u"");
    EXPECT_EQ(catalogue->getProductName(key), u"");
  }
  EXPECT_EQ(catalogue->getProductBaseCode(u"ML"), u"");
  EXPECT_EQ(catalogue->getProductName(u"Alpha"), u"");
}

TEST(Catalogue, MapsTwoNamesToOneBaseCode) {
  const Catalogue catalogue(kHeader + "ML\tAlpha\t1\t\nML\tAlpha Two\t2\t\n");
  EXPECT_EQ(catalogue->getProductBaseCode(u"Alpha"), u"ML");
  EXPECT_EQ(catalogue->getProductBaseCode(u"Alpha Two"), u"ML");
  EXPECT_EQ(catalogue->getProductName(u"ML"), u"Alpha");
}

TEST(Catalogue, AnswersEachLookUpFromTheFirstRowThatHasTheKey) {
  const Catalogue catalogue(kHeader +
                            "A\tOne\t1\tC\n"   // comes first
                            "A\tTwo\t1\t\n"    // repeats code and number
                            "B\tOne\t2\tD\n"   // repeats the name
                            "B\tTwo\t3\t\n"    // repeats code and name of different rows
                            "A\tOne\t1\t\n");  // repeats everything
  EXPECT_EQ(catalogue->getProductName(u"A"), u"One");
  EXPECT_EQ(catalogue->getProductName(u"B"), u"One");
  EXPECT_EQ(catalogue->getProductBaseCode(u"One"), u"A");
  EXPECT_EQ(catalogue->getProductBaseCode(u"Two"), u"A");
  EXPECT_EQ(row(catalogue->findByNumber(1)), u"A|One|1|C");
  EXPECT_EQ(row(catalogue->findByNumber(2)), u"B|One|2|D");
  EXPECT_EQ(row(catalogue->findByNumber(3)), u"B|Two|3|none");
}

TEST(Catalogue, FindsProductsByNumber) {
  const Catalogue catalogue(kHeader + "ML\tAlpha\t0\t\nSL\tBeta\t4294967295\tAlpha\n");
  EXPECT_EQ(row(catalogue->findByNumber(0)), u"ML|Alpha|0|none");
  EXPECT_EQ(row(catalogue->findByNumber(0xFFFFFFFF)), u"SL|Beta|4294967295|Alpha");
  EXPECT_EQ(catalogue->findByNumber(1), nullptr);
}

TEST(Catalogue, SharesOneRecordOfAControllingProduct) {
  const Catalogue catalogue(kHeader + "A\tOne\t1\tMain\nB\tTwo\t2\tMain\nC\tThree\t3\tOther\n");
  const std::shared_ptr<const ControllingProduct> main = catalogue->findControllingProduct(u"Main");
  ASSERT_NE(main, nullptr);
  EXPECT_EQ(main->name, u"Main");
  EXPECT_EQ(catalogue->findByNumber(1)->controllingProduct, main);
  EXPECT_EQ(catalogue->findByNumber(2)->controllingProduct, main);
  EXPECT_EQ(catalogue->findByNumber(3)->controllingProduct,
            catalogue->findControllingProduct(u"Other"));
}

TEST(Catalogue, HasNoControllingProductUnlessARowNamesIt) {
  const Catalogue catalogue(kHeader + "A\tOne\t1\t\n");
  EXPECT_EQ(catalogue->findControllingProduct(u""), nullptr);
  EXPECT_EQ(catalogue->findControllingProduct(u"One"), nullptr);
}

TEST(Catalogue, HasRecordsThatOutliveIt) {
  std::shared_ptr<const Product> product;
  {
    const Catalogue catalogue(kHeader + "A\tOne\t1\tMain\n");
    product = catalogue->findByNumber(1);
  }
  EXPECT_EQ(row(product), u"A|One|1|Main");
}

// ---------------------------------------------------------------------------------------------
// The class.

TEST(ProductDataProviderClass, LetsADerivedClassAnswer) {
  class Fixed : public ProductDataProvider {
   public:
    Fixed() : ProductDataProvider(u"") {}
    std::u16string getProductBaseCode(const std::u16string& productName) const override {
      return u"code of " + productName;
    }
    std::u16string getProductName(const std::u16string& productBaseCode) const override {
      return u"name of " + productBaseCode;
    }
  };
  const std::shared_ptr<ProductDataProvider> provider(new Fixed);
  EXPECT_EQ(provider->getProductBaseCode(u"One"), u"code of One");
  EXPECT_EQ(provider->getProductName(u"A"), u"name of A");
}

TEST(ProductDataProviderClass, IsMadeOnlyFromALocationAndNeverCopied) {
  static_assert(std::is_constructible_v<ProductDataProvider, std::u16string>);
  static_assert(!std::is_convertible_v<std::u16string, ProductDataProvider>);
  static_assert(!std::is_default_constructible_v<ProductDataProvider>);
  static_assert(!std::is_copy_constructible_v<ProductDataProvider>);
  static_assert(!std::is_copy_assignable_v<ProductDataProvider>);
  static_assert(!std::is_move_constructible_v<ProductDataProvider>);
  static_assert(std::has_virtual_destructor_v<ProductDataProvider>);
}

}  // namespace
