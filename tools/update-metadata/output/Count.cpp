#include "output/Count.h"

namespace update_metadata_tool::output {

std::string count(std::size_t number, const std::string& noun) {
  return std::to_string(number) + ' ' + noun + (number == 1 ? "" : "s");
}

}  // namespace update_metadata_tool::output
