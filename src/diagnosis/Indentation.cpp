#include "diagnosis/Indentation.h"

#include <algorithm>
#include <string_view>
#include <vector>

namespace install::update_metadata_parser::diagnosis {
namespace {

// How many lines must agree with the nesting before a line that does not is taken as evidence.
constexpr std::size_t kFewestLines = 3;

/// The lines of a text, visited in ascending order.
class Lines {
 public:
  explicit Lines(std::string_view text) : text_(text) { beginLine(0); }

  /// Advances to the line of an offset. Linear in the text for all calls together.
  void goTo(std::size_t offset) {
    while (feed_ < offset) {
      beginLine(feed_ + 1);
    }
  }

  std::size_t begin() const { return begin_; }
  std::size_t indent() const { return indent_; }
  bool isFirstOfLine(std::size_t offset) const { return offset == begin_ + indent_; }

  /// Whether the indentation consists only of `character`.
  bool isIndentedWith(char character) const {
    return text_.substr(begin_, indent_).find_first_not_of(character) == std::string_view::npos;
  }

 private:
  void beginLine(std::size_t begin) {
    begin_ = begin;
    feed_ = text_.find('\n', begin);
    indent_ = std::min(text_.find_first_not_of(" \t", begin), text_.size()) - begin;
  }

  std::string_view text_;
  std::size_t begin_ = 0;
  std::size_t feed_ = 0;  // the line feed at the end, or npos
  std::size_t indent_ = 0;
};

class Judgment {
 public:
  explicit Judgment(const source::SourceTree& tree) : tree_(tree), lines_(tree.text()) {}

  std::optional<UnclosedBracket> find() {
    const auto& nodes = tree_.nodes();
    for (std::size_t index = 0; index < nodes.size() && isOpenToJudge_; ++index) {
      closeUpTo(index);
      const source::SourceNode& node = nodes[index];
      const bool isValueOfMember = index != 0 && nodes[index - 1].kind == source::SourceKind::kKey;
      if (isOpenToJudge_ && !levels_.empty() && !isValueOfMember) {
        checkChild(node.begin);
      }
      if (node.kind == source::SourceKind::kArray || node.kind == source::SourceKind::kObject) {
        lines_.goTo(node.begin);
        levels_.push_back({index, lines_.begin(), lines_.indent(), std::nullopt});
      }
    }
    if (isOpenToJudge_) {
      closeUpTo(nodes.size());
    }
    return found_;
  }

 private:
  struct Level {
    std::size_t node;
    std::size_t lineBegin;
    std::size_t indent;
    std::optional<std::size_t> childIndent;
  };

  void closeUpTo(std::size_t index) {
    while (isOpenToJudge_ && !levels_.empty() && tree_[levels_.back().node].next <= index &&
           tree_[levels_.back().node].isClosed) {
      checkClosing(tree_[levels_.back().node].end - 1);
      levels_.pop_back();
    }
  }

  // Advances to an offset that begins a line after the bracket's; false if it does not begin one.
  bool goToLine(std::size_t offset) {
    lines_.goTo(offset);
    if (!lines_.isFirstOfLine(offset) || lines_.begin() == levels_.back().lineBegin) {
      return false;
    }
    if (lines_.indent() != 0 && indentation_ == '\0') {
      indentation_ = tree_.text()[lines_.begin()];
    }
    isOpenToJudge_ = lines_.indent() == 0 || lines_.isIndentedWith(indentation_);
    return isOpenToJudge_;
  }

  void checkChild(std::size_t offset) {
    if (!goToLine(offset)) {
      return;
    }
    Level& level = levels_.back();
    if (lines_.indent() <= level.indent) {
      end(offset);
    } else if (level.childIndent.value_or(lines_.indent()) != lines_.indent()) {
      isOpenToJudge_ = false;
    } else {
      level.childIndent = lines_.indent();
      ++agreeing_;
    }
  }

  void checkClosing(std::size_t offset) {
    if (!goToLine(offset)) {
      return;
    }
    if (lines_.indent() < levels_.back().indent) {
      end(offset);
    } else {
      isOpenToJudge_ = lines_.indent() == levels_.back().indent;
      ++agreeing_;
    }
  }

  void end(std::size_t offset) {
    isOpenToJudge_ = false;
    if (agreeing_ >= kFewestLines) {
      found_ = {tree_[levels_.back().node].begin, offset};
    }
  }

  const source::SourceTree& tree_;
  Lines lines_;
  std::vector<Level> levels_;
  std::optional<UnclosedBracket> found_;
  std::size_t agreeing_ = 0;  // lines
  char indentation_ = '\0';   // what lines are indented with
  bool isOpenToJudge_ = true;
};

}  // namespace

std::optional<UnclosedBracket> findUnclosedByIndentation(const source::SourceTree& tree) {
  // A text of a few lines, however many brackets it has, is not worth the memory.
  std::size_t feed = 0;
  for (std::size_t lines = 0; lines != kFewestLines; ++lines) {
    feed = tree.text().find('\n', feed);
    if (feed++ == std::string_view::npos) {
      return std::nullopt;
    }
  }
  return Judgment(tree).find();
}

}  // namespace install::update_metadata_parser::diagnosis
