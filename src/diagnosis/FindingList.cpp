#include "diagnosis/FindingList.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "diagnosis/Words.h"

namespace install::update_metadata_parser::diagnosis {
namespace {

using source::SourceKind;
using source::SourceNode;
using source::SourceTree;

constexpr std::size_t kNoNode = static_cast<std::size_t>(-1);
constexpr std::size_t kLongestPointer = 4'096;

bool isContainer(SourceKind kind) {
  return kind == SourceKind::kArray || kind == SourceKind::kObject;
}

// The last node that begins at an offset or before it; kNoNode if there is none.
std::size_t findLastBefore(const SourceTree& tree, std::size_t offset) {
  const std::deque<SourceNode>& nodes = tree.nodes();
  const auto isBehind = [](std::size_t place, const SourceNode& node) {
    return place < node.begin;
  };
  const auto next = std::upper_bound(nodes.begin(), nodes.end(), offset, isBehind);
  return static_cast<std::size_t>(next - nodes.begin()) - 1;
}

// The approximate overhead of a block of memory.
constexpr std::size_t kBlockOverhead = 2 * sizeof(void*);

// The memory that a string allocates.
std::size_t heapOf(const std::string& text) {
  return text.capacity() == std::string().capacity() ? 0 : text.capacity() + kBlockOverhead;
}

}  // namespace

/// Makes the pointers to the nodes of a tree, which must be requested in ascending order.
class FindingList::Pointers {
 public:
  explicit Pointers(const SourceTree& tree) : tree_(tree) {}

  // The pointer to an entry's value, or to the innermost value around its offset.
  std::string_view pointerOf(const Entry& entry) {
    if (entry.node == kNoNode) {
      return {};
    }
    for (; next_ <= entry.node && next_ < tree_.nodes().size(); ++next_) {
      stepTo(next_);
    }
    return entry.isBeside ? pointerAround(entry.finding.offset, tree_[entry.node]) : pointer_;
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

  std::string_view pointerAround(std::size_t offset, const SourceNode& last) const {
    if (offset < last.end) {
      return pointer_;
    }
    for (auto level = levels_.rbegin(); level != levels_.rend(); ++level) {
      const SourceNode& container = tree_[level->container];
      if (offset < container.end || !container.isClosed) {
        return std::string_view(pointer_).substr(0, level->length);
      }
    }
    return {};
  }

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
  const auto& [number, id, severity, summary] = describe(rule);
  hasErrors_ = hasErrors_ || severity == Severity::kError;
  Finding finding = {id,
                     severity,
                     std::move(words.message),
                     std::move(words.advice),
                     offset,
                     length,
                     0,
                     0,
                     "",
                     std::move(words.item),
                     {},
                     std::move(words.fix)};
  finding.related.reserve(words.related.size());
  for (Mention& mention : words.related) {
    finding.related.push_back({mention.offset, 0, 0, std::move(mention.message)});
  }
  if (counts_[index] == kMostOfOneRule || !reserve(severity, bytesOf(finding))) {
    ++omitted_[index];
    return;
  }
  ++counts_[index];
  entries_.push_back({std::move(finding), rule, node, false, true});
}

bool FindingList::reserve(Severity severity, std::size_t bytes) {
  const bool isError = severity == Severity::kError;
  if (bytes_ + bytes > (isError ? kMostBytes : kMostBytesWithoutErrors)) {
    return false;
  }
  bytes_ += bytes;
  return true;
}

// While findings are sorted and moved out, they exist twice, but their texts do not.
std::size_t FindingList::bytesOf(const Finding& finding) {
  std::size_t bytes = 2 * sizeof(Entry) + heapOf(finding.pointer) + heapOf(finding.item) +
                      heapOf(finding.message) + heapOf(finding.advice) +
                      (finding.fix ? heapOf(finding.fix->replacement) : 0);
  for (const RelatedPlace& related : finding.related) {
    bytes += 2 * sizeof(RelatedPlace) + heapOf(related.message);
  }
  return bytes;
}

// Leaves out the findings that exceed the memory limit together with their pointers.
void FindingList::leaveOut(const SourceTree& tree) {
  constexpr std::size_t kLongestItem = 256;  // approximate: an item quotes two names
  Pointers pointers(tree);
  bytes_ = 0;
  for (Entry& entry : entries_) {
    const Finding& finding = entry.finding;
    const std::size_t bytes = bytesOf(finding) + pointers.pointerOf(entry).size() + kBlockOverhead +
                              (finding.item.empty() ? kLongestItem : 0);
    entry.isKept = reserve(finding.severity, bytes);
    if (!entry.isKept) {
      ++omitted_[static_cast<std::size_t>(entry.rule)];
    }
  }
  const auto isLeftOut = [](const Entry& entry) { return !entry.isKept; };
  entries_.erase(std::remove_if(entries_.begin(), entries_.end(), isLeftOut), entries_.end());
}

void FindingList::addPointers(const SourceTree& tree) {
  Pointers pointers(tree);
  for (Entry& entry : entries_) {
    Finding& finding = entry.finding;
    finding.pointer = pointers.pointerOf(entry);
    if (finding.item.empty()) {
      finding.item = describePlace(finding.pointer);
    }
  }
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
  leaveOut(tree);
  addPointers(tree);
  const auto byPlace = [](const Entry& left, const Entry& right) {
    return std::pair(left.finding.offset, left.rule) < std::pair(right.finding.offset, right.rule);
  };
  std::stable_sort(entries_.begin(), entries_.end(), byPlace);
  std::vector<Finding> findings;
  findings.reserve(entries_.size());
  for (; !entries_.empty(); entries_.pop_front()) {
    findings.push_back(std::move(entries_.front().finding));
  }
  bytes_ = 0;
  return findings;
}

}  // namespace install::update_metadata_parser::diagnosis
