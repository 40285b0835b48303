#include "lint/Regions.h"

#include <algorithm>

namespace update_metadata_tool::lint {

void Regions::write(const char* name, std::size_t begin, std::size_t length,
                    output::JsonWriter& json) const {
  begin = std::min(begin, size_);
  const std::size_t end = begin + std::min(length, size_ - begin);
  json.name(name)
      .beginObject()
      .member("startLine", lines_.positionOf(begin).line)
      .member("startColumn", columnOf(begin))
      .member("endLine", lines_.positionOf(end).line)
      .member("endColumn", columnOf(end))
      .member("byteOffset", begin)
      .member("byteLength", end - begin)
      .endObject();
}

std::size_t Regions::columnOf(std::size_t offset) const {
  const std::size_t lineBegin = offset - (lines_.positionOf(offset).column - 1);
  return characters_.countBefore(offset) - characters_.countBefore(lineBegin) + 1;
}

}  // namespace update_metadata_tool::lint
