#include "diagnosis/SourceDocument.h"

#include <algorithm>
#include <string>

#include "diagnosis/Text.h"

namespace install::update_metadata_parser::diagnosis {

SourceDocument::SourceDocument(const source::SourceTree& tree)
    : tree_(tree), isIgnored_(tree.nodes().size()), isUtf8_(isUtf8(tree.text())) {
  std::string buffer;
  for (std::size_t node = 0; node < tree.nodes().size(); ++node) {
    const bool isText =
        isA(source::SourceKind::kString, node) || isA(source::SourceKind::kKey, node);
    if (!isText || (isUtf8_ && !tree[node].hasEscapes)) {
      continue;
    }
    const std::string_view decoded = tree.decodedInto(node, buffer);
    const bool isName = isUtf8(decoded);
    if (isName && !tree[node].hasEscapes) {
      continue;
    }
    const std::string_view bytes = tree[node].hasEscapes ? keep(decoded) : decoded;
    decoded_.push_back({node, bytes, isName ? bytes : keep(toUtf8(source::readAsText(decoded)))});
  }
}

std::string_view SourceDocument::keep(std::string_view text) {
  auto* const copy = static_cast<char*>(texts_.allocate(text.size(), alignof(char)));
  text.copy(copy, text.size());
  return {copy, text.size()};
}

const SourceDocument::Decoded* SourceDocument::findDecoded(std::size_t node) const {
  const auto found = std::lower_bound(
      decoded_.begin(), decoded_.end(), node,
      [](const Decoded& decoded, std::size_t wanted) { return decoded.node < wanted; });
  return found != decoded_.end() && found->node == node ? &*found : nullptr;
}

std::string_view SourceDocument::bytesOf(std::size_t node) const {
  if (tree_[node].hasEscapes) {
    return findDecoded(node)->bytes;
  }
  std::string unused;
  return tree_.decodedInto(node, unused);
}

std::string_view SourceDocument::nameOf(std::size_t node) const {
  if (!isUtf8_ || tree_[node].hasEscapes) {
    if (const Decoded* const decoded = findDecoded(node)) {
      return decoded->name;
    }
  }
  return bytesOf(node);
}

}  // namespace install::update_metadata_parser::diagnosis
