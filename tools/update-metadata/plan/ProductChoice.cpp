#include "plan/ProductChoice.h"

#include <algorithm>
#include <numeric>
#include <ostream>
#include <set>

#include "output/Text.h"
#include "summary/NearProducts.h"

namespace update_metadata_tool::plan {
namespace {

using summary::Contents;
using summary::Document;
using summary::Product;
using summary::shorten;

// Reports that `code`, which belongs to the product `nameOfCode` or to none, selects nothing.
void describeFailure(const Document& document, const Contents& contents, const std::u16string& code,
                     const std::u16string& nameOfCode, std::ostream& err) {
  const auto holder =
      std::find_if(contents.products.begin(), contents.products.end(),
                   [&code](const Product& product) { return product.baseCode == code; });
  const std::string file = output::toVisible(document.source().file);
  if (holder != contents.products.end()) {
    err << "update-metadata: the base code '" << shorten(code) << "' selects no product of '"
        << file << "': its product '" << shorten(holder->name)
        << "' has that code, but the product data assign it to '" << shorten(nameOfCode)
        << "' first\n";
    return;
  }
  err << "update-metadata: '" << file << "' has no product with the base code '" << shorten(code)
      << "'";
  if (!nameOfCode.empty()) {
    err << ", which belongs to '" << shorten(nameOfCode) << "'";
  }
  err << '\n';
}

// Reports the failure; the second line says what to do.
void reportUnselected(const Document& document, const Contents& contents,
                      const std::u16string& code, const std::u16string& nameOfCode,
                      std::ostream& err) {
  describeFailure(document, contents, code, nameOfCode, err);
  const std::string nearest = summary::listNearProducts(
      contents, [&](const std::u16string& other) { return document.findProductName(other); }, code);
  if (nearest.empty()) {
    const bool isAnyKnown =
        std::any_of(contents.products.begin(), contents.products.end(),
                    [](const Product& product) { return product.baseCode.has_value(); });
    err << "The product data at '"
        << output::toVisible(document.source().productData.value_or(std::u16string()))
        << (isAnyKnown ? "' assign its products' codes to other products first: correct them"
                       : "' contain none of its products: check --product-data")
        << ", or omit --product to plan for all products\n";
    return;
  }
  err << "Name another with --product; the nearest in the document: " << nearest << '\n';
}

// The products that have the base code of a chosen one, but another name.
std::vector<std::size_t> findLeftOut(const Contents& contents,
                                     const std::vector<std::size_t>& chosen) {
  std::set<std::u16string> codes;
  for (const std::size_t number : chosen) {
    codes.insert(contents.products[number].baseCode.value_or(std::u16string()));
  }
  std::vector<std::size_t> leftOut;
  for (std::size_t number = 0; number < contents.products.size(); ++number) {
    const std::optional<std::u16string>& code = contents.products[number].baseCode;
    if (code && codes.count(*code) != 0 &&
        !std::binary_search(chosen.begin(), chosen.end(), number)) {
      leftOut.push_back(number);
    }
  }
  return leftOut;
}

}  // namespace

ProductChoice chooseAllProducts(const Contents& contents) {
  ProductChoice choice;
  choice.products.resize(contents.products.size());
  std::iota(choice.products.begin(), choice.products.end(), std::size_t{0});
  return choice;
}

std::optional<ProductChoice> chooseProducts(const Document& document, const Contents& contents,
                                            const std::vector<std::u16string>& baseCodes,
                                            std::ostream& err) {
  std::set<std::u16string> names;
  for (const std::u16string& code : baseCodes) {
    const std::u16string name = document.findProductName(code);
    const bool isKnown =
        !name.empty() &&
        std::any_of(contents.products.begin(), contents.products.end(),
                    [&name](const Product& product) { return product.name == name; });
    if (!isKnown) {
      reportUnselected(document, contents, code, name, err);
      return std::nullopt;
    }
    names.insert(name);
  }
  ProductChoice choice;
  for (std::size_t number = 0; number < contents.products.size(); ++number) {
    if (names.count(contents.products[number].name) != 0) {
      choice.products.push_back(number);
    }
  }
  choice.leftOut = findLeftOut(contents, choice.products);
  return choice;
}

}  // namespace update_metadata_tool::plan
