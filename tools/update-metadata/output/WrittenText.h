#pragma once

#include <ios>
#include <sstream>
#include <string>

namespace update_metadata_tool::output {

/// What `write(out)` writes. Its exceptions pass through, and so does a lack of memory, which would
/// otherwise truncate the text silently.
template <class Write>
std::string writtenText(const Write& write) {
  std::ostringstream text;
  text.exceptions(std::ios_base::badbit);
  write(text);
  return text.str();
}

}  // namespace update_metadata_tool::output
