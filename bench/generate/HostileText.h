#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace bench::generate {

/// A family of JSON texts that are hard on a reader, made for a count.
struct HostileText {
  std::string_view name;
  std::string_view description;
  std::string_view counts;  ///< what is counted, in the singular
  std::size_t usualCount;
  std::string (*make)(std::size_t count);
};

/// All families: brackets that are never closed, levels of arrays, keys in descending order, equal
/// keys, escapes.
const std::vector<HostileText>& hostileTexts();

/// The family of that name; null if there is none.
const HostileText* findHostileText(std::string_view name);

}  // namespace bench::generate
