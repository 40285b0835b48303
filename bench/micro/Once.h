#pragma once

#include <map>
#include <string>

namespace bench::micro {

/// Returns what `Make` makes for a preset. It is made at the first call and kept, because a
/// benchmark is called several times.
template <auto Make>
const auto& once(const std::string& preset) {
  static std::map<std::string, decltype(Make(preset))> made;
  const auto found = made.find(preset);
  return found != made.end() ? found->second : made.emplace(preset, Make(preset)).first->second;
}

}  // namespace bench::micro
