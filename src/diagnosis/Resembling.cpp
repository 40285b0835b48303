#include "diagnosis/Resembling.h"

#include <algorithm>

#include "diagnosis/EditDistance.h"

namespace install::update_metadata_parser::diagnosis {
namespace {

// A fraction of a second.
constexpr std::size_t kMostSteps = 20'000'000;

}  // namespace

std::size_t mostEdits(std::string_view name) {
  return name.size() <= 4 ? 1 : std::max<std::size_t>(2, name.size() / 4);
}

std::optional<std::string_view> NearestNames::find(std::string_view name, std::size_t most) {
  std::optional<std::string_view> nearest;
  if (name.size() > kLongestResembling) {
    return nearest;
  }
  for (const std::string_view known : names_) {
    const std::size_t difference =
        std::max(name.size(), known.size()) - std::min(name.size(), known.size());
    const bool isWorthwhile = difference < most || (difference == most && !nearest.has_value());
    steps_ += isWorthwhile ? 1 + name.size() * known.size() : 1;
    if (steps_ > kMostSteps) {
      return std::nullopt;
    }
    if (!isWorthwhile) {
      continue;
    }
    const std::size_t distance = editDistance(name, known);
    if (distance < most || (distance == most && !nearest.has_value())) {
      nearest = known;
      most = distance;
    }
  }
  return nearest;
}

}  // namespace install::update_metadata_parser::diagnosis
