#include "fmt/Layout.h"

#include <utility>
#include <vector>

namespace update_metadata_tool::fmt {
namespace {

using source::SourceKind;

class LayoutWriter {
 public:
  LayoutWriter(const source::SourceTree& tree, const Layout& layout)
      : tree_(tree), layout_(layout) {}

  std::string write() {
    text_.reserve(tree_.text().size());
    const std::size_t count = tree_.nodes().size();
    for (std::size_t index = 0; index != count; ++index) {
      closeWhatEndsAt(index);
      if (tree_[index].kind == SourceKind::kKey) {
        beginElement();
        text_ += tree_.written(index);
        text_ += layout_.isCompact ? ":" : ": ";
        ++index;
      } else if (!open_.empty()) {
        beginElement();
      }
      writeValue(index);
    }
    closeWhatEndsAt(count);
    return std::move(text_);
  }

 private:
  struct Container {
    std::size_t next;  // index of the node after it
    char closing;
    bool isEmpty;  // none of its elements has been written yet
  };

  bool isSpread() const { return !layout_.isCompact && open_.size() <= kDeepestSpreadLevel; }

  void beginLine(std::size_t level) {
    text_ += '\n';
    text_.append(level * layout_.indent, ' ');
  }

  void beginElement() {
    Container& container = open_.back();
    if (!container.isEmpty) {
      text_ += ',';
    }
    if (isSpread()) {
      beginLine(open_.size());
    } else if (!container.isEmpty && !layout_.isCompact) {
      text_ += ' ';
    }
    container.isEmpty = false;
  }

  void writeValue(std::size_t index) {
    const source::SourceNode& node = tree_[index];
    if (node.kind == SourceKind::kArray || node.kind == SourceKind::kObject) {
      const bool isArray = node.kind == SourceKind::kArray;
      text_ += isArray ? '[' : '{';
      open_.push_back({node.next, isArray ? ']' : '}', true});
    } else {
      text_ += tree_.written(index);
    }
  }

  void closeWhatEndsAt(std::size_t index) {
    while (!open_.empty() && open_.back().next == index) {
      if (!open_.back().isEmpty && isSpread()) {
        beginLine(open_.size() - 1);
      }
      text_ += open_.back().closing;
      open_.pop_back();
    }
  }

  const source::SourceTree& tree_;
  const Layout layout_;
  std::string text_;
  std::vector<Container> open_;
};

}  // namespace

std::string layOut(const source::SourceTree& tree, const Layout& layout) {
  return LayoutWriter(tree, layout).write();
}

}  // namespace update_metadata_tool::fmt
