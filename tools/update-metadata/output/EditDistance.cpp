#include "output/EditDistance.h"

#include <algorithm>
#include <numeric>
#include <vector>

namespace update_metadata_tool::output {
namespace {

char16_t toLowerAscii(char16_t unit) {
  return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit - u'A' + u'a') : unit;
}

}  // namespace

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

}  // namespace update_metadata_tool::output
