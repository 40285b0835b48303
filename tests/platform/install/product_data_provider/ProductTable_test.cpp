#include <cstddef>
#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "fl/i18n.h"
#include "install/product_data_provider/ProductDataProvider.h"
#include "platform/install/product_data_provider/Catalogue.h"
#include "support/HashCollisions.h"
#include "support/TemporaryFolder.h"

namespace {

using namespace std::string_literals;
using install::product_data_provider::Product;
using install::product_data_provider::ProductDataProvider;
using test_support::Catalogue;
using test_support::failure;
using test_support::HashCollisions;
using test_support::kHeader;
using test_support::row;
using test_support::TemporaryFolder;

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
#if defined(__GLIBCXX__) && defined(__x86_64__)  // whose hash they are made for
  const std::hash<std::u16string> hash;
  ASSERT_EQ(hash(names.front()), hash(names.back()));
#endif
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
    {"LettersAfterTheNumber", "x\nA\tOne\t1\t\nA\tOne\t1\t\nB\tTwo\t12x\t\n",
     "@/products.tsv:4: '12x' is not an unsigned 32-bit number"},
    {"BlankBeforeTheNumber", "x\nA\tOne\t 1\t\n",
     "@/products.tsv:2: ' 1' is not an unsigned 32-bit number"},
    {"BlankAfterTheNumber", "x\nA\tOne\t1 \t\n",
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
  for (const std::u16string& location :
       {folder.path(), folder.path() + u"/", folder.path() + u"//", folder.path("products.tsv"),
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
        folder.path("other"), folder.path("other/"), folder.path("file/x"),
        folder.path("file") + u"\0"s, folder.path() + u"/" + char16_t{0xD83D},
        folder.path() + u"/" + std::u16string(300, u'x')}) {
    EXPECT_EQ(ProductDataProvider(location).getProductName(u"A"), u"")
        << std::string(location.begin(), location.end());
  }
}

TEST(ProductDataLocation, FailsForAFileThatCannotBeOpened) {
  const TemporaryFolder folder;
  folder.makeFolder("nested/products.tsv");
  EXPECT_EQ(failure(folder, folder.path("nested")), "@/nested/products.tsv: cannot be opened");
  EXPECT_EQ(failure(folder, folder.path("nested/")), "@/nested/products.tsv: cannot be opened");
}

TEST(ProductDataLocation, IsReportedInUtf8) {
  const TemporaryFolder folder;
  EXPECT_EQ(failure(folder, folder.writeFile("\xC3\xA4.txt", "x\nA\n")),
            "@/\xC3\xA4.txt:2: expected 4 tab-separated fields, found 1");
}

}  // namespace
