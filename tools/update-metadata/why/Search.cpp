#include "why/Search.h"

#include <algorithm>
#include <cstddef>
#include <set>
#include <string_view>
#include <utility>

#include "diagnosis/Resembling.h"
#include "places/NamedPackages.h"

namespace update_metadata_tool::why {
namespace {

namespace diagnosis = install::update_metadata_parser::diagnosis;
using places::LoadedDocument;
using places::Place;

constexpr std::size_t kMostSuggestions = 3;

bool hasKey(const Place& place, std::string_view wanted) {
  const std::optional<std::string_view> package = places::packageIn(wanted, place.component);
  return package && (!place.package || *package == *place.package);
}

bool isOfOtherProduct(const Place& place, const Question& question) {
  return question.product && place.product != nullptr &&
         !isWanted(*place.product, *question.product);
}

std::vector<std::string> findNearest(const LoadedDocument& document, const std::string& wanted) {
  const std::set<std::string> known = document.shortNames(diagnosis::kLongestResembling);
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
  FoundDocument found = {document.head(), {}, false, {}};
  std::set<std::pair<places::Side, std::string_view>> namedInDuplicates;
  const auto visit = [&](const Place& place) {
    const std::optional<std::size_t> fileLine = document.lineOfFile(place.files, question.wanted);
    if (!fileLine && !hasKey(place, question.wanted)) {
      return;
    }
    found.isNamed = found.isNamed || place.package.has_value();
    if (place.product != nullptr && place.verdicts.allProducts.use == places::Use::kRepeatedKey) {
      namedInDuplicates.emplace(place.side, place.component);
    }
    if (isOfOtherProduct(place, question)) {
      return;
    }
    FoundPlace& added = found.places.emplace_back();
    added.place = place;
    added.place.product = nullptr;
    added.fileLine = fileLine;
    if (place.product != nullptr) {
      added.product = *place.product;
    }
    places::Verdict& ofProduct = added.place.verdicts.oneProduct;
    if (ofProduct.use == places::Use::kOtherProduct) {
      added.otherProduct = ofProduct.winner;
      ofProduct.winner = added.otherProduct;
    }
  };
  document.forEachPlace(products, visit, question.wanted);
  for (FoundPlace& each : found.places) {
    each.isNamedInDuplicate = namedInDuplicates.count({each.place.side, each.place.component}) != 0;
  }
  if (found.places.empty() && !found.isNamed) {
    found.nearest = findNearest(document, question.wanted);
  }
  return found;
}

}  // namespace update_metadata_tool::why
