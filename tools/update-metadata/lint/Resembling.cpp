#include "lint/Resembling.h"

#include <algorithm>
#include <cctype>
#include <numeric>

namespace update_metadata_tool::lint {
namespace {

// A fraction of a second.
constexpr std::size_t kMostSteps = 20'000'000;

char lowered(char byte) {
  return static_cast<char>(std::tolower(static_cast<unsigned char>(byte)));
}

}  // namespace

std::size_t editDistance(std::string_view left, std::string_view right) {
  std::vector<std::size_t> row(right.size() + 1);
  std::iota(row.begin(), row.end(), std::size_t{0});
  for (std::size_t index = 0; index < left.size(); ++index) {
    std::size_t diagonal = std::exchange(row[0], index + 1);
    for (std::size_t column = 1; column < row.size(); ++column) {
      const bool isSame = lowered(left[index]) == lowered(right[column - 1]);
      const std::size_t changed = diagonal + (isSame ? 0 : 1);
      diagonal = row[column];
      row[column] = std::min({changed, diagonal + 1, row[column - 1] + 1});
    }
  }
  return row.back();
}

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

}  // namespace update_metadata_tool::lint
