#include "diagnosis/EditDistance.h"

#include <algorithm>
#include <numeric>
#include <vector>

namespace install::update_metadata_parser::diagnosis {
namespace {

template <class Unit>
Unit lowered(Unit unit) {
  return unit >= 'A' && unit <= 'Z' ? static_cast<Unit>(unit - 'A' + 'a') : unit;
}

template <class Text>
std::size_t distanceBetween(Text left, Text right) {
  std::vector<std::size_t> distances(left.size() + 1);  // from the part of `right` read so far
  std::iota(distances.begin(), distances.end(), std::size_t{0});
  for (const auto unit : right) {
    std::size_t diagonal = distances[0]++;
    for (std::size_t i = 0; i < left.size(); ++i) {
      const bool isSame = lowered(left[i]) == lowered(unit);
      const std::size_t replaced = diagonal + (isSame ? 0 : 1);
      diagonal = distances[i + 1];
      distances[i + 1] = std::min({replaced, distances[i] + 1, distances[i + 1] + 1});
    }
  }
  return distances.back();
}

}  // namespace

std::size_t editDistance(std::string_view left, std::string_view right) {
  return distanceBetween(left, right);
}

std::size_t editDistance(std::u16string_view left, std::u16string_view right) {
  return distanceBetween(left, right);
}

}  // namespace install::update_metadata_parser::diagnosis
