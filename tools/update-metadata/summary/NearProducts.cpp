#include "summary/NearProducts.h"

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

#include "diagnosis/EditDistance.h"
#include "output/Text.h"

namespace update_metadata_tool::summary {
namespace {

constexpr std::size_t kMostSuggestions = 5;

// Longer texts are compared and shown by their beginnings; nobody types codes or names that long.
constexpr std::size_t kMostUnits = 60;

std::u16string_view beginningOf(std::u16string_view text) {
  const std::u16string_view beginning = text.substr(0, kMostUnits);
  const bool isCharacterParted =
      !output::isUtf16(beginning) && output::isUtf16(text.substr(0, kMostUnits + 1));
  return isCharacterParted ? text.substr(0, kMostUnits + 1) : beginning;
}

// The edit distance of the beginnings of two texts.
std::size_t distanceOf(std::u16string_view left, std::u16string_view right) {
  return install::update_metadata_parser::diagnosis::editDistance(beginningOf(left),
                                                                  beginningOf(right));
}

}  // namespace

std::string shorten(std::u16string_view text) {
  const std::u16string_view beginning = beginningOf(text);
  return output::toVisible(beginning) + (beginning.size() == text.size() ? "" : "...");
}

std::string listNearProducts(
    const Contents& contents,
    const std::function<std::u16string(const std::u16string& baseCode)>& findName,
    const std::u16string& wanted) {
  std::vector<std::pair<std::size_t, const Product*>> near;
  for (const Product& product : contents.products) {
    if (product.baseCode && findName(*product.baseCode) == product.name) {
      near.emplace_back(
          std::min(distanceOf(wanted, *product.baseCode), distanceOf(wanted, product.name)),
          &product);
    }
  }
  std::stable_sort(near.begin(), near.end(),
                   [](const auto& left, const auto& right) { return left.first < right.first; });
  near.resize(std::min(near.size(), kMostSuggestions));
  std::string list;
  for (const auto& entry : near) {
    list += (list.empty() ? "" : ", ") + shorten(*entry.second->baseCode) + " (" +
            shorten(entry.second->name) + ')';
  }
  return list;
}

}  // namespace update_metadata_tool::summary
