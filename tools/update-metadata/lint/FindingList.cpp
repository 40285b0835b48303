#include "lint/FindingList.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "lint/Words.h"

namespace update_metadata_tool {
namespace {

constexpr std::size_t kNoNode = static_cast<std::size_t>(-1);
constexpr std::size_t kLongestPointer = 4'096;

bool isContainer(SourceKind kind) {
  return kind == SourceKind::kArray || kind == SourceKind::kObject;
}

// The last node that begins at an offset or before it; kNoNode if there is none.
std::size_t findLastBefore(const SourceTree& tree, std::size_t offset) {
  const std::vector<SourceNode>& nodes = tree.nodes();
  const auto isBehind = [](std::size_t place, const SourceNode& node) {
    return place < node.begin;
  };
  const auto next = std::upper_bound(nodes.begin(), nodes.end(), offset, isBehind);
  return static_cast<std::size_t>(next - nodes.begin()) - 1;
}

/// Makes the pointers to the nodes of a tree, which have to be asked for in ascending order.
class Pointers {
 public:
  explicit Pointers(const SourceTree& tree) : tree_(tree) {}

  const std::string& pointerTo(std::size_t node) {
    for (; next_ <= node && next_ < tree_.nodes().size(); ++next_) {
      stepTo(next_);
    }
    return pointer_;
  }

  /// The pointer to the innermost value around an offset. \pre `node` is the last that begins there
  /// or before
  std::string pointerAround(std::size_t node, std::size_t offset) {
    const std::string& pointer = pointerTo(node);
    if (offset < tree_[node].end) {
      return pointer;
    }
    for (auto level = levels_.rbegin(); level != levels_.rend(); ++level) {
      const SourceNode& container = tree_[level->container];
      if (offset < container.end || !container.isClosed) {
        return pointer.substr(0, level->length);
      }
    }
    return "";
  }

 private:
  struct Level {
    std::size_t container;
    std::size_t end;       // index of the node behind the container
    std::size_t length;    // of the container's own pointer
    std::size_t elements;  // how many of an array's elements have been passed
    bool isArray;
    bool isPointerWhole;  // false if the pointer is that of a container farther out
  };

  void stepTo(std::size_t index) {
    while (!levels_.empty() && levels_.back().end <= index) {
      levels_.pop_back();
    }
    const SourceNode& node = tree_[index];
    if (!levels_.empty()) {
      Level& level = levels_.back();
      if (level.isArray) {
        beginToken(level, std::to_string(level.elements++));
      } else if (node.kind == SourceKind::kKey) {
        beginToken(level, tree_.decodedInto(index, buffer_));
      }
    }
    if (isContainer(node.kind)) {
      levels_.push_back(
          {index, node.next, pointer_.size(), 0, node.kind == SourceKind::kArray, isWhole_});
    }
  }

  void beginToken(const Level& level, std::string_view token) {
    pointer_.resize(level.length);
    isWhole_ = level.isPointerWhole && level.length + 1 + token.size() <= kLongestPointer;
    if (!isWhole_) {
      return;
    }
    pointer_ += '/';
    for (const char byte : token) {
      if (byte == '~') {
        pointer_ += "~0";
      } else if (byte == '/') {
        pointer_ += "~1";
      } else {
        pointer_ += byte;
      }
    }
  }

  const SourceTree& tree_;
  std::vector<Level> levels_;
  std::string pointer_;
  bool isWhole_ = true;
  std::string buffer_;
  std::size_t next_ = 0;
};

}  // namespace

void FindingList::addAt(Rule rule, std::size_t offset, std::size_t length, FindingWords words) {
  addOf(rule, kNoNode, offset, length, std::move(words));
}

void FindingList::add(Rule rule, const SourceTree& tree, std::size_t node, FindingWords words) {
  const SourceNode& place = tree[node];
  const std::size_t length = isContainer(place.kind) ? 1 : place.end - place.begin;
  addOf(rule, node, place.begin, length, std::move(words));
}

void FindingList::addInside(Rule rule, const SourceTree& tree, std::size_t node, std::size_t offset,
                            std::size_t length, FindingWords words) {
  addOf(rule, node, tree[node].begin + offset, length, std::move(words));
}

void FindingList::addOf(Rule rule, std::size_t node, std::size_t offset, std::size_t length,
                        FindingWords words) {
  const auto index = static_cast<std::size_t>(rule);
  const Severity severity = describe(rule).severity;
  hasErrors_ = hasErrors_ || severity == Severity::kError;
  if (counts_[index] == kMostOfOneRule) {
    ++omitted_[index];
    return;
  }
  ++counts_[index];
  entries_.push_back({{rule, severity, offset, length, "", std::move(words.item),
                       std::move(words.message), std::move(words.advice), std::move(words.related)},
                      node,
                      false});
}

std::vector<Finding> FindingList::take(const SourceTree& tree) {
  for (Entry& entry : entries_) {
    if (entry.node == kNoNode) {
      entry.node = findLastBefore(tree, entry.finding.offset);
      entry.isBeside = true;
    }
  }
  const auto byNode = [](const Entry& left, const Entry& right) { return left.node < right.node; };
  std::stable_sort(entries_.begin(), entries_.end(), byNode);
  Pointers pointers(tree);
  for (Entry& entry : entries_) {
    if (entry.node != kNoNode) {
      entry.finding.pointer = entry.isBeside
                                  ? pointers.pointerAround(entry.node, entry.finding.offset)
                                  : pointers.pointerTo(entry.node);
      if (entry.finding.item.empty()) {
        entry.finding.item = describePlace(entry.finding.pointer);
      }
    }
  }
  const auto byPlace = [](const Entry& left, const Entry& right) {
    return std::pair(left.finding.offset, left.finding.rule) <
           std::pair(right.finding.offset, right.finding.rule);
  };
  std::stable_sort(entries_.begin(), entries_.end(), byPlace);
  std::vector<Finding> findings;
  findings.reserve(entries_.size());
  for (Entry& entry : entries_) {
    findings.push_back(std::move(entry.finding));
  }
  entries_.clear();
  return findings;
}

}  // namespace update_metadata_tool
