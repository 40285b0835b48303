#include "places/LoadedDocument.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "input/TextParser.h"
#include "install/update_metadata_parser/UpdateMetaDataHandler.h"
#include "output/Text.h"
#include "places/Place.h"
#include "places/ProductLookUp.h"
#include "support/Effort.h"
#include "support/RandomDocument.h"
#include "support/TemporaryFolder.h"

namespace update_metadata_tool::places {
namespace {

using install::update_metadata_parser::UpdateMetaDataHandler;
using output::toUtf16;

using Keys = std::set<std::u16string>;

/// The answers of the library.
struct Answers {
  std::map<std::u16string, Keys> allToDelete;
  std::map<std::u16string, Keys> allToExtract;
  std::map<std::u16string, std::pair<std::int64_t, std::int64_t>> sizes;
  std::map<std::u16string, std::pair<Keys, std::int64_t>> files;
};

/// The same from places, with the packages of single products.
struct AnswersOfPlaces : Answers {
  std::map<std::u16string, Keys> oneToDelete;
  std::map<std::u16string, Keys> oneToExtract;
};

/// Without product data, names are base codes.
class NamesAsCodes : public UpdateMetaDataHandler {
 public:
  std::u16string getProductName(const std::u16string& code,
                                const std::u16string& /*location*/) override {
    return code;
  }
  std::u16string getProductBaseCode(const std::u16string& name,
                                    const std::u16string& /*location*/) override {
    return name;
  }
};

Use useIn(Use use) {
  EXPECT_NE(use, Use::kNotAsked);
  return use;
}

bool isAnyUsed(const Verdicts& verdicts) {
  return verdicts.allProducts.use == Use::kUsed || verdicts.oneProduct.use == Use::kUsed ||
         verdicts.sizes.use == Use::kUsed || verdicts.files.use == Use::kUsed;
}

/// Adds what each place says, and expects that nothing is added twice.
AnswersOfPlaces gather(const LoadedDocument& document, const ProductLookUp& products) {
  AnswersOfPlaces answers;
  document.forEachPlace(products, [&](const Place& place) {
    if (!place.package) {
      EXPECT_FALSE(isAnyUsed(place.verdicts));
      return;
    }
    const std::u16string key = toUtf16(keyOf(place));
    if (place.side == Side::kFiles) {
      if (useIn(place.verdicts.files.use) == Use::kUsed) {
        Keys files;
        for (const std::string_view file : document.filesOf(place.files)) {
          files.insert(toUtf16(file));
        }
        EXPECT_TRUE(answers.files.emplace(key, std::pair(files, *place.size)).second);
      }
      return;
    }
    const bool isToDelete = place.side == Side::kDelete;
    if (place.product == nullptr) {
      EXPECT_FALSE(isAnyUsed(place.verdicts));
      return;
    }
    const std::u16string code = products.baseCodeOf(toUtf16(place.product->name));
    if (useIn(place.verdicts.allProducts.use) == Use::kUsed) {
      auto& all = isToDelete ? answers.allToDelete : answers.allToExtract;
      EXPECT_TRUE(all[code].insert(key).second);
    }
    if (useIn(place.verdicts.oneProduct.use) == Use::kUsed) {
      auto& one = isToDelete ? answers.oneToDelete : answers.oneToExtract;
      EXPECT_TRUE(one[code].insert(key).second);
    }
    if (!isToDelete && useIn(place.verdicts.sizes.use) == Use::kUsed) {
      EXPECT_TRUE(
          answers.sizes.emplace(key, std::pair(*place.size, *place.uncompressedBytes)).second);
    }
  });
  return answers;
}

/// Expects that the places and the library give the same answers about a document.
void expectTheLibrarysAnswers(const std::string& text, const ProductLookUp& products,
                              UpdateMetaDataHandler& handler, const std::u16string& location) {
  const LoadedDocument document("update.json", text);
  const AnswersOfPlaces answers = gather(document, products);
  EXPECT_EQ(answers.allToDelete, handler.getComponentsToDelete(location));
  EXPECT_EQ(answers.allToExtract, handler.getComponentsToExtract(location));
  EXPECT_EQ(answers.sizes, handler.getUpdateSizeForComponentsToExtract());
  EXPECT_EQ(answers.files, handler.getComponentsWithFilesToDelete());
  for (const std::string_view name : document.productNames()) {
    const std::u16string code = products.baseCodeOf(toUtf16(name));
    const auto find = [&](const std::map<std::u16string, Keys>& keys) {
      const auto found = keys.find(code);
      return found == keys.end() ? Keys() : found->second;
    };
    EXPECT_EQ(find(answers.oneToDelete), handler.getComponentsToDelete(code, location));
    EXPECT_EQ(find(answers.oneToExtract), handler.getComponentsToExtract(code, location));
  }
}

constexpr std::size_t kDocuments = test_support::kFullEffort ? 20'000 : 2'000;

template <class Handler>
void expectTheLibrarysAnswersAboutRandomDocuments(const std::optional<std::u16string>& location) {
  test_support::RandomDocument documents(11);
  const ProductLookUp products(location);
  for (std::size_t number = 0; number < kDocuments && !::testing::Test::HasFailure(); ++number) {
    const std::string text = documents.next();
    SCOPED_TRACE(text);
    const auto handler = std::make_shared<Handler>();
    input::TextParser(u"update.json", text, handler).parseUpdateMetaDataJson();
    expectTheLibrarysAnswers(text, products, *handler, location.value_or(std::u16string()));
  }
}

TEST(PlacesOfRandomDocuments, AddUpToTheLibrarysAnswersForNamesAsBaseCodes) {
  expectTheLibrarysAnswersAboutRandomDocuments<NamesAsCodes>(std::nullopt);
}

TEST(PlacesOfRandomDocuments, AddUpToTheLibrarysAnswersForProductData) {
  const test_support::TemporaryFolder folder;
  folder.writeFile("products.tsv",
                   "base code\tname\tnumber\tcontrolling product\n"
                   "A\ta\t1\t\n"
                   "B\tb\t2\t\n"
                   "A\ta_b\t3\t\n"
                   "C\t\xC3\xA9\t4\t\n"
                   "B\tb_a\t5\t\n"
                   "D\t\xEF\xBF\xBD\t6\t\n");
  expectTheLibrarysAnswersAboutRandomDocuments<UpdateMetaDataHandler>(folder.path("products.tsv"));
}

}  // namespace
}  // namespace update_metadata_tool::places
