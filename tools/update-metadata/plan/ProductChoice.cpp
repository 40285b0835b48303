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

// Products that their base code chooses.
std::vector<const Product*> findChoosable(const Document& document, const Contents& contents) {
  std::vector<const Product*> products;
  for (const Product& product : contents.products) {
    if (product.baseCode && document.findProductName(*product.baseCode) == product.name) {
      products.push_back(&product);
    }
  }
  return products;
}

// Says that `code`, which the product data give to `nameOfCode`, if to any, chooses nothing.
void describeFailure(const Document& document, const Contents& contents, const std::u16string& code,
                     const std::u16string& nameOfCode, std::ostream& err) {
  const auto holder =
      std::find_if(contents.products.begin(), contents.products.end(),
                   [&code](const Product& product) { return product.baseCode == code; });
  const std::string file = output::toVisible(document.source().file);
  if (holder != contents.products.end()) {
    err << "update-metadata: '" << file << "' has no product that the base code '" << shorten(code)
        << "' chooses: it has '" << shorten(holder->name)
        << "' with that code, but the product data give the code to '" << shorten(nameOfCode)
        << "' first\n";
    return;
  }
  err << "update-metadata: '" << file << "' has no product with the base code '" << shorten(code)
      << "'";
  if (!nameOfCode.empty()) {
    err << ", which is that of '" << shorten(nameOfCode) << "'";
  }
  err << '\n';
}

// The second line tells how to go on.
void complain(const Document& document, const Contents& contents, const std::u16string& code,
              const std::u16string& nameOfCode, std::ostream& err) {
  describeFailure(document, contents, code, nameOfCode, err);
  const std::string nearest = summary::listNearProducts(findChoosable(document, contents), code);
  if (nearest.empty()) {
    const bool isAnyKnown =
        std::any_of(contents.products.begin(), contents.products.end(),
                    [](const Product& product) { return product.baseCode.has_value(); });
    err << "The product data at '"
        << output::toVisible(document.source().productData.value_or(std::u16string()))
        << (isAnyKnown ? "' give the codes of its products to others first: correct them"
                       : "' know none of its products: check --product-data")
        << ", or leave out --product to plan for all\n";
    return;
  }
  err << "Name another one with --product; the nearest in the document: " << nearest << '\n';
}

// The products that share a base code with a chosen one, but not its name.
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
      complain(document, contents, code, name, err);
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
