#include "lint/SourceDocument.h"

#include "Text.h"

namespace update_metadata_tool {

std::string_view SourceDocument::nameOf(std::size_t node) {
  if (!tree_[node].hasEscapes) {
    std::string unused;
    const std::string_view bytes = tree_.decodedInto(node, unused);
    return isUtf8(bytes) ? bytes : names_.emplace_back(toUtf8(readAsText(bytes)));
  }
  std::string decoded = tree_.decoded(node);
  if (!isUtf8(decoded)) {
    decoded = toUtf8(readAsText(decoded));
  }
  return names_.emplace_back(std::move(decoded));
}

}  // namespace update_metadata_tool
