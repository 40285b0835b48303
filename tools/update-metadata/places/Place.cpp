#include "places/Place.h"

#include <iterator>

namespace update_metadata_tool::places {
namespace {

// In the order of Use.
constexpr const char* kUseNames[] = {
    "",
    "used",
    "earlier-product",
    "equal-key",
    "repeated-key",
    "repeated-component",
    "undescribed-component",
    "unused-component",
    "unknown-product",
    "other-product",
};
static_assert(std::size(kUseNames) == static_cast<std::size_t>(Use::kOtherProduct) + 1);

}  // namespace

const char* nameOf(Side side) {
  switch (side) {
    case Side::kDelete:
      return "delete";
    case Side::kExtract:
      return "extract";
    default:
      return "files";
  }
}

const char* nameOf(Use use) {
  return kUseNames[static_cast<std::size_t>(use)];
}

Verdicts verdictsOf(Side side, Use use) {
  Verdicts verdicts;
  if (side == Side::kFiles) {
    verdicts.files = {use};
    return verdicts;
  }
  verdicts.allProducts = {use};
  verdicts.oneProduct = {use};
  if (side == Side::kExtract) {
    verdicts.sizes = {use};
  }
  return verdicts;
}

Place placeOf(Side side, std::string_view component) {
  Place place;
  place.side = side;
  place.component = component;
  return place;
}

std::string keyOf(const Place& place) {
  std::string key;
  key.reserve(place.component.size() + 1 + place.package->size());
  key.append(place.component).append(1, '_').append(*place.package);
  return key;
}

}  // namespace update_metadata_tool::places
