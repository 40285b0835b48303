#include "plan/ProductChoice.h"

#include <algorithm>
#include <numeric>
#include <ostream>
#include <set>
#include <string_view>
#include <utility>

#include "Text.h"

namespace update_metadata_tool {
namespace {

constexpr std::size_t kMostSuggestions = 5;

// Longer texts are compared, and shown, by their beginnings: no code or name that people type is.
constexpr std::size_t kMostUnits = 60;

char16_t toLowerAscii(char16_t unit) {
  return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit - u'A' + u'a') : unit;
}

std::u16string_view beginningOf(std::u16string_view text) {
  const std::u16string_view beginning = text.substr(0, kMostUnits);
  const bool isCharacterParted = !isUtf16(beginning) && isUtf16(text.substr(0, kMostUnits + 1));
  return isCharacterParted ? text.substr(0, kMostUnits + 1) : beginning;
}

std::string shorten(std::u16string_view text) {
  const std::u16string_view beginning = beginningOf(text);
  return toVisible(beginning) + (beginning.size() == text.size() ? "" : "...");
}

// How many units have to be inserted, removed or replaced to make one text of the other, where
// small and capital letters of ASCII are the same. Memory in proportion to `left`, time to the
// product of both.
std::size_t editDistance(std::u16string_view left, std::u16string_view right) {
  std::vector<std::size_t> distances(left.size() + 1);  // to the part of `right` read so far
  std::iota(distances.begin(), distances.end(), std::size_t{0});
  for (const char16_t unit : right) {
    std::size_t diagonal = distances[0]++;
    for (std::size_t i = 0; i < left.size(); ++i) {
      const bool isSame = toLowerAscii(left[i]) == toLowerAscii(unit);
      const std::size_t replaced = diagonal + (isSame ? 0 : 1);
      diagonal = distances[i + 1];
      distances[i + 1] = std::min({replaced, distances[i] + 1, distances[i + 1] + 1});
    }
  }
  return distances.back();
}

// How far the beginnings of two texts are from each other.
std::size_t distanceOf(std::u16string_view left, std::u16string_view right) {
  return editDistance(beginningOf(left), beginningOf(right));
}

// Products that their base code chooses, those first whose code or name comes closest to `asked`.
std::vector<const Product*> findNearProducts(const Document& document, const Contents& contents,
                                             const std::u16string& asked) {
  std::vector<std::pair<std::size_t, const Product*>> products;
  for (const Product& product : contents.products) {
    if (product.baseCode && document.findProductName(*product.baseCode) == product.name) {
      const std::size_t distance =
          std::min(distanceOf(asked, *product.baseCode), distanceOf(asked, product.name));
      products.emplace_back(distance, &product);
    }
  }
  std::stable_sort(products.begin(), products.end(),
                   [](const auto& left, const auto& right) { return left.first < right.first; });
  std::vector<const Product*> nearest;
  for (std::size_t i = 0; i < std::min(products.size(), kMostSuggestions); ++i) {
    nearest.push_back(products[i].second);
  }
  return nearest;
}

// Says that `code`, which the product data give to `nameOfCode`, if to any, chooses nothing.
void describeFailure(const Document& document, const Contents& contents, const std::u16string& code,
                     const std::u16string& nameOfCode, std::ostream& err) {
  const auto holder =
      std::find_if(contents.products.begin(), contents.products.end(),
                   [&code](const Product& product) { return product.baseCode == code; });
  const std::string file = toVisible(document.source().file);
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
  const std::vector<const Product*> nearest = findNearProducts(document, contents, code);
  if (nearest.empty()) {
    const bool isAnyKnown =
        std::any_of(contents.products.begin(), contents.products.end(),
                    [](const Product& product) { return product.baseCode.has_value(); });
    err << "The product data at '"
        << toVisible(document.source().productData.value_or(std::u16string()))
        << (isAnyKnown ? "' give the codes of its products to others first: correct them"
                       : "' know none of its products: check --product-data")
        << ", or leave out --product to plan for all\n";
    return;
  }
  err << "Name another one with --product; the nearest in the document:";
  const char* separator = " ";
  for (const Product* product : nearest) {
    err << std::exchange(separator, ", ") << shorten(*product->baseCode) << " ("
        << shorten(product->name) << ')';
  }
  err << '\n';
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

}  // namespace update_metadata_tool
