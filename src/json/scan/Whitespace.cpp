#include "json/scan/Whitespace.h"

#include <algorithm>
#include <string_view>

namespace foundation::json {

const char* skipWhitespaceAndComments(const char* position, const char* end,
                                      bool allowComments) noexcept {
  for (;;) {
    position = skipSpaces(position, end);
    if (!allowComments || end - position < 2 || *position != '/') {
      return position;
    }
    std::string_view terminator;
    if (position[1] == '/') {
      terminator = "\n";
    } else if (position[1] == '*') {
      terminator = "*/";
    } else {
      return position;
    }
    position += 2;
    const char* const found = std::search(position, end, terminator.begin(), terminator.end());
    position = found == end ? end : found + terminator.size();
  }
}

}  // namespace foundation::json
