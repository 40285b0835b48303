#include "summary/Totals.h"

#include <cstdint>
#include <limits>
#include <optional>
#include <ostream>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "output/Text.h"
#include "support/PlainContents.h"
#include "support/PlainDocument.h"
#include "support/PlainTotals.h"

namespace update_metadata_tool::summary {

static std::ostream& operator<<(std::ostream& out, const ByteSum& sum) {
  const std::optional<std::int64_t> value = sum.value();
  return value ? out << *value : out << "(too large)";
}

static bool operator==(const Totals& left, const Totals& right) {
  return left.components == right.components && left.packagesToDelete == right.packagesToDelete &&
         left.packagesToExtract == right.packagesToExtract &&
         left.bytesToFetch == right.bytesToFetch && left.bytesUnpacked == right.bytesUnpacked &&
         left.bytesDeleted == right.bytesDeleted;
}

static std::ostream& operator<<(std::ostream& out, const Totals& totals) {
  return out << totals.components << " components, " << totals.packagesToDelete << " to delete, "
             << totals.packagesToExtract << " to extract, fetch " << totals.bytesToFetch
             << ", unpacked " << totals.bytesUnpacked << ", deleted " << totals.bytesDeleted;
}

namespace {

using test_support::contentsOf;
using test_support::PlainDocument;
using test_support::PlainTotals;

// --- single properties ----------------------------------------------------------------------

TEST(TotalsOfADocument, CountWhatTwoProductsShareOnce) {
  PlainDocument document;
  document.components["core"] = {{{"old", {5, 0}}}, {{"engine", {10, 20}}}};
  document.components["view"] = {{{"old", {1, 0}}}, {{"show", {7, 8}}}};
  document.products["Editor"] = {{"core"}, {"core"}};
  document.products["Viewer"] = {{"core", "view"}, {"core", "core", "view"}};
  const Contents contents = contentsOf(document);
  Tally tally(contents);
  const Totals editor{1, 1, 1, ByteSum(10), ByteSum(20), ByteSum(5)};
  const Totals both{2, 2, 2, ByteSum(17), ByteSum(28), ByteSum(6)};
  EXPECT_EQ(tally.totalsOfProduct(0), editor);
  EXPECT_EQ(tally.totalsOfProduct(1), both);
  EXPECT_EQ(tally.totalsOfProduct(0), editor) << "asked again";
  EXPECT_EQ(tally.totalsOf(tally.select({1, 0, 1})), both);
  EXPECT_EQ(tally.totalsOfAll(), both);
  EXPECT_EQ(tally.totalsOfComponent(0), editor);
  EXPECT_EQ(both.netChange(), ByteSum(22));
  EXPECT_EQ(both.peakNeed(), ByteSum(45));
}

TEST(TotalsOfADocument, AreExactBeyondSixtyFourBits) {
  constexpr std::int64_t kMin = std::numeric_limits<std::int64_t>::min();
  Contents contents;
  contents.packagesToExtract = {{u"c_1", kMin, kMin}, {u"c_2", kMin, 1}};
  contents.packagesToDelete = {{u"c_3", kMin, 0}};
  const Totals totals = Tally(contents).totalsOfAll();
  EXPECT_EQ(totals.bytesToFetch.value(), std::nullopt);
  EXPECT_EQ(totals.bytesUnpacked.value(), kMin + 1);
  EXPECT_EQ(totals.netChange().value(), 1);
  EXPECT_EQ(totals.peakNeed().value(), std::nullopt);
}

TEST(TotalsOfADocument, AreZeroWithoutProducts) {
  const Contents contents;
  EXPECT_EQ(Tally(contents).totalsOfAll(), Totals());
  EXPECT_EQ(countFilesToDelete(contents), 0U);
}

// --- random documents against a plain computation ---------------------------------------------

Totals toTotals(const PlainTotals::Sums& sums) {
  return {sums.components,
          sums.packagesToDelete,
          sums.packagesToExtract,
          ByteSum(sums.bytesToFetch),
          ByteSum(sums.bytesUnpacked),
          ByteSum(sums.bytesDeleted)};
}

TEST(TotalsOfRandomDocuments, AgreeWithAPlainComputation) {
  std::mt19937 random(19970304);
  for (int round = 0; round < 500; ++round) {
    const PlainDocument document = test_support::makeRandomDocument(random);
    const PlainTotals plain(document);
    const Contents contents = contentsOf(document);
    Tally tally(contents);
    std::vector<std::string> names;
    std::vector<std::size_t> numbers;
    for (std::size_t i = 0; i < contents.products.size(); ++i) {
      const std::string name = output::toUtf8(contents.products[i].name);
      EXPECT_EQ(tally.totalsOfProduct(i), toTotals(plain.of({name}))) << document.json();
      names.push_back(name);
      numbers.push_back(i);
      EXPECT_EQ(tally.totalsOf(tally.select(numbers)), toTotals(plain.of(names)))
          << document.json();
    }
    EXPECT_EQ(tally.totalsOfAll(), toTotals(plain.of(names))) << document.json();
    EXPECT_EQ(countFilesToDelete(contents), plain.files()) << document.json();
  }
}

}  // namespace
}  // namespace update_metadata_tool::summary
