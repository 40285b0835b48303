#include "diagnosis/source/LineIndex.h"

#include <algorithm>

namespace install::update_metadata_parser::diagnosis::source {

LineIndex::LineIndex(std::string_view text) : text_(text), lineBegins_{0} {
  for (std::size_t feed = text.find('\n'); feed != std::string_view::npos;
       feed = text.find('\n', feed + 1)) {
    lineBegins_.push_back(feed + 1);
  }
}

Position LineIndex::positionOf(std::size_t offset) const {
  offset = std::min(offset, text_.size());
  const auto next = std::upper_bound(lineBegins_.begin(), lineBegins_.end(), offset);
  return {static_cast<std::size_t>(next - lineBegins_.begin()), offset - *(next - 1) + 1};
}

std::string_view LineIndex::lineText(std::size_t line) const {
  const std::size_t begin = lineBegins_[line - 1];
  const std::size_t end = line < lineBegins_.size() ? lineBegins_[line] - 1 : text_.size();
  return text_.substr(begin, end - begin);
}

}  // namespace install::update_metadata_parser::diagnosis::source
