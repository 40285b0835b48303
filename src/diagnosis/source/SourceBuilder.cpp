#include "diagnosis/source/SourceBuilder.h"

#include <algorithm>

namespace install::update_metadata_parser::diagnosis::source {

void SourceBuilder::breakOff(std::size_t offset) {
  // Only a payload that is being read again begins before the node in front of it.
  if (open_ != kNone && open_ != 0 && nodes_[open_].begin < nodes_[open_ - 1].begin) {
    const std::size_t outer = nodes_[open_].next;
    nodes_.resize(open_);
    open_ = outer;
  }
  if (!nodes_.empty() && nodes_.back().kind == SourceKind::kKey) {
    nodes_.pop_back();
  }
  if (!nodes_.empty() && open_ != kNone) {
    offset = std::max(offset, nodes_.back().end);
  }
  while (open_ != kNone) {
    SourceNode& node = nodes_[open_];
    node.end = offset;
    open_ = std::exchange(node.next, nodes_.size());
  }
}

}  // namespace install::update_metadata_parser::diagnosis::source
