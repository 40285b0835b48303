#pragma once

#include <algorithm>
#include <string_view>

#include "fl/i18n.h"

namespace foundation::json {

/// Returns the first byte from `position` on that is neither white space nor, if comments are
/// allowed, part of a comment. A comment that is not closed ends at `end`.
inline const char* skipWhitespace(const char* position, const char* end,
                                  bool allowComments) noexcept {
  for (;;) {
    while (position != end && fl::i18n::lcctype::isspace_ascii(*position)) {
      ++position;
    }
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
