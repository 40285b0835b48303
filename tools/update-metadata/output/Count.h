#pragma once

#include <cstddef>
#include <string>

namespace update_metadata_tool::output {

/// A number with its noun: "1 package", "2 packages".
inline std::string count(std::size_t number, const std::string& noun) {
  return std::to_string(number) + ' ' + noun + (number == 1 ? "" : "s");
}

}  // namespace update_metadata_tool::output
