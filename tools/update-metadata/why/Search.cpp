#include "why/Search.h"

#include <algorithm>
#include <cstddef>
#include <set>
#include <string_view>

#include "diagnosis/Resembling.h"
#include "output/Text.h"

namespace update_metadata_tool::why {
namespace {

namespace diagnosis = install::update_metadata_parser::diagnosis;
using places::LoadedDocument;
using places::Place;

constexpr std::size_t kMostSuggestions = 3;

bool hasKey(const Place& place, std::string_view wanted) {
  const std::string_view component = place.component;
  if (!output::startsWith(wanted, component) || wanted.size() == component.size() ||
      wanted[component.size()] != '_') {
    return false;
  }
  return !place.package || wanted.substr(component.size() + 1) == *place.package;
}

bool listsFile(const LoadedDocument& document, const Place& place, std::string_view path) {
  const std::vector<std::string_view> files = document.filesOf(place);
  return std::find(files.begin(), files.end(), path) != files.end();
}

bool isOfOtherProduct(const Place& place, const Question& question) {
  return question.product && place.product != nullptr &&
         !isWanted(*place.product, *question.product);
}

std::vector<std::string> findNearest(const LoadedDocument& document,
                                     const places::ProductLookUp& products,
                                     const std::string& wanted) {
  std::set<std::string> known;
  document.forEachPlace(products, [&](const Place& place) {
    if (place.package &&
        place.component.size() + 1 + place.package->size() <= diagnosis::kLongestResembling) {
      known.insert(keyOf(place));
    }
    for (const std::string_view file : document.filesOf(place)) {
      if (file.size() <= diagnosis::kLongestResembling) {
        known.emplace(file);
      }
    }
  });
  std::vector<std::string_view> names(known.begin(), known.end());
  std::vector<std::string> nearest;
  while (nearest.size() < kMostSuggestions) {
    const auto found = diagnosis::NearestNames(names).find(wanted, diagnosis::mostEdits(wanted));
    if (!found) {
      break;
    }
    nearest.emplace_back(*found);
    names.erase(std::find(names.begin(), names.end(), *found));
  }
  return nearest;
}

}  // namespace

bool isWanted(const places::ProductOfPlace& product, const std::string& code) {
  return product.baseCode ? *product.baseCode == code : product.name == code;
}

FoundDocument search(const LoadedDocument& document, const places::ProductLookUp& products,
                     const Question& question) {
  FoundDocument found = {document.head(), {}, {}};
  document.forEachPlace(products, [&](const Place& place) {
    const bool isFile =
        place.side == places::Side::kFiles && listsFile(document, place, question.wanted);
    if ((!isFile && !hasKey(place, question.wanted)) || isOfOtherProduct(place, question)) {
      return;
    }
    FoundPlace& added = found.places.emplace_back();
    added.place = place;
    added.isFile = isFile;
    if (place.product != nullptr) {
      added.product = *place.product;
      added.hasProduct = true;
    }
    added.place.product = nullptr;
  });
  if (found.places.empty()) {
    found.nearest = findNearest(document, products, question.wanted);
  }
  return found;
}

}  // namespace update_metadata_tool::why
