#pragma once

namespace update_metadata_tool {

/// Characters from the first to the last.
struct CharacterRange {
  char32_t first;
  char32_t last;
};

}  // namespace update_metadata_tool
