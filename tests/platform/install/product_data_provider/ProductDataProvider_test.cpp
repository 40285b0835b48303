#include "install/product_data_provider/ProductDataProvider.h"

#include <sys/stat.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <exception>
#include <functional>
#include <memory>
#include <ostream>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <typeinfo>
#include <vector>

#include <gtest/gtest.h>

#include "fl/i18n.h"
#include "support/HashCollisions.h"
#include "support/TemporaryFolder.h"
#include "support/WithoutRights.h"

namespace {

using namespace std::string_literals;
using install::product_data_provider::ControllingProduct;
using install::product_data_provider::Product;
using install::product_data_provider::ProductDataProvider;
using test_support::HashCollisions;
using test_support::TemporaryFolder;
using test_support::WithoutRights;

const std::string kHeader = "base code\tname\tnumber\tcontrolling product\n";

/// A catalogue made from the text of one table.
class Catalogue {
 public:
  explicit Catalogue(const std::string& table)
      : provider_(folder_.writeFile("products.tsv", table)) {}

  const ProductDataProvider* operator->() const { return &provider_; }

 private:
  TemporaryFolder folder_;
  ProductDataProvider provider_;
};

/// The text of the exception that the constructor throws, with "@" for the path of the folder. Says
/// so if nothing is thrown or if the type is not exactly std::runtime_error.
std::string failure(const TemporaryFolder& folder, const std::u16string& location) {
  try {
    ProductDataProvider provider(location);
    return "no exception";
  } catch (const std::exception& error) {
    std::string text = error.what();
    const std::size_t path = text.find(folder.nativePath());
    if (path != std::string::npos) {
      text.replace(path, folder.nativePath().size(), "@");
    }
    return (typeid(error) == typeid(std::runtime_error) ? "" : "wrong type: ") + text;
  }
}

/// A record as a row of the table.
std::u16string row(const std::shared_ptr<const Product>& product) {
  if (!product) {
    return u"none";
  }
  const std::string number = std::to_string(product->number);
  return product->baseCode + u"|" + product->name + u"|" +
         std::u16string(number.begin(), number.end()) + u"|" +
         (product->controllingProduct ? product->controllingProduct->name : u"none");
}

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
// Valid tables.

struct AcceptedTable {
  const char* name;
  std::string text;
};

void PrintTo(const AcceptedTable& table, std::ostream* stream) {
  *stream << table.name;
}

const AcceptedTable kTablesOfTwo[] = {
    {"LineFeeds", kHeader + "A\tOne\t1\tC\nB\tTwo\t2\t\n"},
    {"NoFinalLineFeed", kHeader + "A\tOne\t1\tC\nB\tTwo\t2\t"},
    {"EmptyLastLine", kHeader + "A\tOne\t1\tC\nB\tTwo\t2\t\n\n"},
    {"CarriageReturns", "x\r\nA\tOne\t1\tC\r\nB\tTwo\t2\t\r\n"},
    {"CarriageReturnsAndAnEmptyLastLine", "x\r\nA\tOne\t1\tC\r\nB\tTwo\t2\t\r\n\r\n"},
    {"MixedLineEnds", "x\nA\tOne\t1\tC\r\nB\tTwo\t2\t\n"},
    {"EmptyHeader", "\nA\tOne\t1\tC\nB\tTwo\t2\t\n"},
    {"HeaderThatLooksLikeARow", "Z\tNone\t9\t\nA\tOne\t1\tC\nB\tTwo\t2\t\n"},
    {"HeaderOfManyFields", "1\t2\t3\t4\t5\t6\t7\nA\tOne\t1\tC\nB\tTwo\t2\t\n"},
    {"ByteOrderMark", "\xEF\xBB\xBF" + kHeader + "A\tOne\t1\tC\nB\tTwo\t2\t\n"},
    {"LeadingZeros", kHeader + "A\tOne\t0001\tC\nB\tTwo\t0000000000000002\t\n"},
};

class TableOfTwo : public ::testing::TestWithParam<AcceptedTable> {};

INSTANTIATE_TEST_SUITE_P(Forms, TableOfTwo, ::testing::ValuesIn(kTablesOfTwo),
                         [](const auto& row) { return row.param.name; });

TEST_P(TableOfTwo, IsRead) {
  const Catalogue catalogue(GetParam().text);
  EXPECT_EQ(row(catalogue->findByNumber(1)), u"A|One|1|C");
  EXPECT_EQ(row(catalogue->findByNumber(2)), u"B|Two|2|none");
  EXPECT_EQ(catalogue->findByNumber(9), nullptr);
}

TEST(ProductTable, MayHaveNoRows) {
  for (const char* text : {"", "\n", "\r\n", "\n\n", "header", "header\n", "header\n\n"}) {
    const Catalogue catalogue(text);
    EXPECT_EQ(catalogue->getProductBaseCode(u"header"), u"") << text;
    EXPECT_EQ(catalogue->getProductName(u"header"), u"") << text;
  }
}

TEST(ProductTable, MayHaveEmptyNamesAndCodes) {
  const Catalogue catalogue(kHeader + "\tOne\t1\t\nB\t\t2\t\n");
  EXPECT_EQ(row(catalogue->findByNumber(1)), u"|One|1|none");
  EXPECT_EQ(catalogue->getProductName(u""), u"One");
  EXPECT_EQ(catalogue->getProductBaseCode(u""), u"B");
}

TEST(ProductTable, IsReadAsUtf8) {
  const Catalogue catalogue(kHeader +
                            "\xC3\x84\t\xE2\x82\xAC\t1\t\xF0\x9F\x98\x80\n\xFF\tz\t2\t\n");
  EXPECT_EQ(row(catalogue->findByNumber(1)), u"\u00C4|\u20AC|1|\U0001F600");
  EXPECT_EQ(row(catalogue->findByNumber(2)), u"\uFFFD|z|2|none");
}

TEST(ProductTable, KeepsNulsAndBlanks) {
  const Catalogue catalogue(kHeader + "A\0B\t One \t1\tC\0\n"s);
  EXPECT_EQ(row(catalogue->findByNumber(1)), u"A\0B| One |1|C\0"s);
  EXPECT_EQ(catalogue->getProductBaseCode(u" One "), u"A\0B"s);
  EXPECT_EQ(catalogue->getProductName(u"A\0B"s), u" One ");
  EXPECT_EQ(catalogue->getProductName(u"A"), u"");
}

TEST(ProductTable, KeepsACarriageReturnInsideALine) {
  const Catalogue catalogue(kHeader + "A\rB\tOne\t1\tC\r\r\nB\tTwo\t2\tD\r");
  EXPECT_EQ(row(catalogue->findByNumber(1)), u"A\rB|One|1|C\r");
  EXPECT_EQ(row(catalogue->findByNumber(2)), u"B|Two|2|D\r");
}

TEST(ProductTable, MayHaveManyRows) {
  std::string table = kHeader;
  for (int i = 0; i < 100'000; ++i) {
    const std::string number = std::to_string(i);
    table += "C" + number + "\tProduct " + number + "\t" + number + "\tMain\n";
  }
  const Catalogue catalogue(table);
  EXPECT_EQ(catalogue->getProductBaseCode(u"Product 0"), u"C0");
  EXPECT_EQ(catalogue->getProductName(u"C99999"), u"Product 99999");
  EXPECT_EQ(row(catalogue->findByNumber(50'000)), u"C50000|Product 50000|50000|Main");
}

// If look-ups used std::hash, these rows would take minutes.
TEST(ProductTable, MayHaveRowsWhoseKeysShareOneHash) {
  constexpr std::size_t kRows = 40'000;
  const std::vector<std::u16string> names = HashCollisions::names(kRows);
  const std::vector<std::uint32_t> numbers = HashCollisions::numbers(kRows);
  const std::hash<std::u16string> hash;
  ASSERT_EQ(hash(names.front()), hash(names.back()));
  std::string table = kHeader;
  for (std::size_t row = 0; row != kRows; ++row) {
    const std::string name = fl::i18n::to_string(names[row]);
    table += name + '\t' + name + '\t' + std::to_string(numbers[row]) + '\t' + name + '\n';
  }
  const Catalogue catalogue(table);
  for (std::size_t row = 0; row != kRows; ++row) {
    ASSERT_EQ(catalogue->getProductBaseCode(names[row]), names[row]);
    ASSERT_EQ(catalogue->getProductName(names[row]), names[row]);
    ASSERT_EQ(catalogue->findByNumber(numbers[row])->name, names[row]);
    ASSERT_EQ(catalogue->findControllingProduct(names[row])->name, names[row]);
  }
}

// ---------------------------------------------------------------------------------------------
// Invalid tables.

struct RejectedTable {
  const char* name;
  std::string text;
  const char* failure;
};

void PrintTo(const RejectedTable& table, std::ostream* stream) {
  *stream << table.name;
}

const RejectedTable kRejectedTables[] = {
    {"OneField", "x\nA\n", "@/products.tsv:2: expected 4 tab-separated fields, found 1"},
    {"TwoFields", "x\nA\tOne\t1\t\nB\tTwo\n",
     "@/products.tsv:3: expected 4 tab-separated fields, found 2"},
    {"ThreeFields", "x\nA\tOne\t1", "@/products.tsv:2: expected 4 tab-separated fields, found 3"},
    {"FiveFields", "x\nA\tOne\t1\t\t\n",
     "@/products.tsv:2: expected 4 tab-separated fields, found 5"},
    {"BlankLine", "x\n \n", "@/products.tsv:2: expected 4 tab-separated fields, found 1"},
    {"LoneCarriageReturn", "x\n\r", "@/products.tsv:2: expected 4 tab-separated fields, found 1"},
    {"EmptyLine", "x\nA\tOne\t1\t\n\nB\tTwo\t2\t\n", "@/products.tsv:3: empty line"},
    {"EmptyLineWithACarriageReturn", "x\r\n\r\nB\tTwo\t2\t\r\n", "@/products.tsv:2: empty line"},
    {"TwoEmptyLastLines", "x\nA\tOne\t1\t\n\n\n", "@/products.tsv:3: empty line"},
    {"FieldsBeforeNumber", "x\nA\tOne\tz\n",
     "@/products.tsv:2: expected 4 tab-separated fields, found 3"},
    {"EmptyNumber", "x\nA\tOne\t\t\n", "@/products.tsv:2: '' is not an unsigned 32-bit number"},
    {"LettersBehindTheNumber", "x\nA\tOne\t1\t\nA\tOne\t1\t\nB\tTwo\t12x\t\n",
     "@/products.tsv:4: '12x' is not an unsigned 32-bit number"},
    {"BlankBeforeTheNumber", "x\nA\tOne\t 1\t\n",
     "@/products.tsv:2: ' 1' is not an unsigned 32-bit number"},
    {"BlankBehindTheNumber", "x\nA\tOne\t1 \t\n",
     "@/products.tsv:2: '1 ' is not an unsigned 32-bit number"},
    {"PlusSign", "x\nA\tOne\t+1\t\n", "@/products.tsv:2: '+1' is not an unsigned 32-bit number"},
    {"MinusSign", "x\nA\tOne\t-1\t\n", "@/products.tsv:2: '-1' is not an unsigned 32-bit number"},
    {"MinusZero", "x\nA\tOne\t-0\t\n", "@/products.tsv:2: '-0' is not an unsigned 32-bit number"},
    {"Hexadecimal", "x\nA\tOne\t0x1\t\n",
     "@/products.tsv:2: '0x1' is not an unsigned 32-bit number"},
    {"Fraction", "x\nA\tOne\t1.0\t\n", "@/products.tsv:2: '1.0' is not an unsigned 32-bit number"},
    {"OneTooMany", "x\nA\tOne\t4294967296\t\n",
     "@/products.tsv:2: '4294967296' is not an unsigned 32-bit number"},
    {"FarTooMany", "x\nA\tOne\t99999999999999999999999\t\n",
     "@/products.tsv:2: '99999999999999999999999' is not an unsigned 32-bit number"},
};

class ProductTableRejects : public ::testing::TestWithParam<RejectedTable> {};

INSTANTIATE_TEST_SUITE_P(Forms, ProductTableRejects, ::testing::ValuesIn(kRejectedTables),
                         [](const auto& row) { return row.param.name; });

TEST_P(ProductTableRejects, NamingFileLineAndReason) {
  const TemporaryFolder folder;
  folder.writeFile("products.tsv", GetParam().text);
  EXPECT_EQ(failure(folder, folder.path()), GetParam().failure);
}

// ---------------------------------------------------------------------------------------------
// Locations.

TEST(ProductDataLocation, MayBeAFolderOrTheFileItself) {
  const TemporaryFolder folder;
  const std::string table = kHeader + "A\tOne\t1\t\n";
  folder.writeFile("products.tsv", table);
  folder.makeLink("link", ".");
  for (const std::u16string& location :
       {folder.path(), folder.path() + u"/", folder.path() + u"//", folder.path("link"),
        folder.path("link/"), folder.path("products.tsv"), folder.path("link/products.tsv"),
        folder.writeFile("\xC3\xA4.txt", table)}) {
    EXPECT_EQ(ProductDataProvider(location).getProductName(u"A"), u"One")
        << std::string(location.begin(), location.end());
  }
}

TEST(ProductDataLocation, YieldsAnEmptyCatalogueWhereThereIsNoFile) {
  const TemporaryFolder folder;
  folder.makeFolder("other");
  folder.writeFile("other/products.csv", kHeader + "A\tOne\t1\t\n");
  folder.writeFile("file", kHeader + "A\tOne\t1\t\n");
  for (const std::u16string& location :
       {std::u16string(), folder.path("missing"), folder.path("missing/products.tsv"),
        folder.path("other"), folder.path("other/"), folder.path("file/"), folder.path("file/x"),
        folder.path("file") + u"\0"s, folder.path() + u"/" + char16_t{0xD83D},
        folder.path() + u"/" + std::u16string(300, u'x'), folder.makeLink("loop", "loop"),
        folder.makeLink("dangling", "missing")}) {
    EXPECT_EQ(ProductDataProvider(location).getProductName(u"A"), u"")
        << std::string(location.begin(), location.end());
  }
}

TEST(ProductDataLocation, FailsForAFileThatCannotBeOpened) {
  const TemporaryFolder folder;
  EXPECT_EQ(failure(folder, folder.makeSocket("socket")), "@/socket: cannot be opened");
  folder.makeFolder("nested/products.tsv");
  EXPECT_EQ(failure(folder, folder.path("nested")), "@/nested/products.tsv: cannot be opened");
  EXPECT_EQ(failure(folder, folder.path("nested/")), "@/nested/products.tsv: cannot be opened");
}

/// A folder "locked" that may not be searched. It contains a catalogue and a folder with another.
class LockedFolder : public ::testing::Test {
 protected:
  LockedFolder() {
    folder_.writeFile("locked/products.tsv", kHeader + "A\tOne\t1\t\n");
    folder_.writeFile("locked/inside/products.tsv", kHeader + "A\tOne\t1\t\n");
    ::chmod(folder_.nativePath().c_str(), 0755);
    ::chmod(folder_.nativePath("locked").c_str(), 0);
  }
  ~LockedFolder() override { ::chmod(folder_.nativePath("locked").c_str(), 0700); }

  const TemporaryFolder folder_;
};

TEST_F(LockedFolder, CannotBeOpenedAsALocation) {
  const WithoutRights withoutRights;
  EXPECT_EQ(failure(folder_, folder_.path("locked")), "@/locked: cannot be opened");
  EXPECT_EQ(failure(folder_, folder_.path("locked/")), "@/locked/: cannot be opened");
}

TEST_F(LockedFolder, HidesTheLocationsInIt) {
  for (const char* location : {"locked/products.tsv", "locked/inside", "locked/missing"}) {
    const WithoutRights withoutRights;
    EXPECT_EQ(ProductDataProvider(folder_.path(location)).getProductName(u"A"), u"") << location;
  }
}

TEST(ProductDataLocation, FailsForAFileThatCannotBeRead) {
  const TemporaryFolder folder;
  EXPECT_EQ(failure(folder, u"/proc/self/mem"),
            "/proc/self/mem: cannot be read: Input/output error");
}

TEST(ProductDataLocation, IsReportedInUtf8) {
  const TemporaryFolder folder;
  EXPECT_EQ(failure(folder, folder.writeFile("\xC3\xA4.txt", "x\nA\n")),
            "@/\xC3\xA4.txt:2: expected 4 tab-separated fields, found 1");
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

/// The index of a virtual operation in the class's table, as a pointer to the operation encodes it.
template <typename Operation>
std::ptrdiff_t placeInTable(Operation operation) {
  std::ptrdiff_t encoded = 0;
  static_assert(sizeof operation >= sizeof encoded);
  std::memcpy(&encoded, &operation, sizeof encoded);
  return (encoded - 1) / static_cast<std::ptrdiff_t>(sizeof(void*));
}

TEST(ProductDataProviderClass, HasTheBaseCodeLookUpRightBeforeTheNameLookUp) {
  // The destructor occupies the first two entries.
  EXPECT_EQ(placeInTable(&ProductDataProvider::getProductBaseCode), 2);
  EXPECT_EQ(placeInTable(&ProductDataProvider::getProductName), 3);
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
