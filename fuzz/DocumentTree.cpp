#include "DocumentTree.h"

#include <algorithm>
#include <utility>

namespace fuzz {
namespace {

constexpr int kDeepest = 40;

class Reader {
 public:
  explicit Reader(std::string_view text) : rest_(text) {}

  std::optional<DocumentTree> readWhole() {
    DocumentTree tree;
    return readValue(tree, 0) && rest_.empty() ? std::optional(std::move(tree)) : std::nullopt;
  }

 private:
  bool readValue(DocumentTree& tree, int depth) {
    skipSpace();
    if (rest_.empty() || depth == kDeepest) {
      return false;
    }
    if (rest_.front() == '{' || rest_.front() == '[') {
      tree.token = rest_.front();
      return readParts(tree, depth);
    }
    return readScalar(tree.token);
  }

  bool readParts(DocumentTree& tree, int depth) {
    const char closing = tree.isObject() ? '}' : ']';
    rest_.remove_prefix(1);
    if (takes(closing)) {
      return true;
    }
    do {
      DocumentTree part;
      if (tree.isObject() && !(readKey(part.key) && takes(':'))) {
        return false;
      }
      if (!readValue(part, depth + 1)) {
        return false;
      }
      tree.parts.push_back(std::move(part));
    } while (takes(','));
    return takes(closing);
  }

  bool readKey(std::string& key) {
    skipSpace();
    return !rest_.empty() && rest_.front() == '"' && readScalar(key);
  }

  bool readScalar(std::string& token) {
    std::size_t size = 1;
    if (rest_.front() == '"') {
      while (size < rest_.size() && rest_[size] != '"') {
        size += rest_[size] == '\\' ? 2U : 1U;
      }
      ++size;
    } else {
      size = std::min(rest_.find_first_of(",:]}\" \t\n\v\f\r"), rest_.size());
    }
    if (size == 0 || size > rest_.size()) {
      return false;
    }
    token = rest_.substr(0, size);
    rest_.remove_prefix(size);
    skipSpace();
    return true;
  }

  // Steps over a byte and the white space around it, if it is there.
  bool takes(char byte) {
    skipSpace();
    if (rest_.empty() || rest_.front() != byte) {
      return false;
    }
    rest_.remove_prefix(1);
    skipSpace();
    return true;
  }

  void skipSpace() {
    rest_.remove_prefix(std::min(rest_.find_first_not_of(" \t\n\v\f\r"), rest_.size()));
  }

  std::string_view rest_;
};

void append(const DocumentTree& tree, std::string& text) {
  text += tree.key;
  text += tree.key.empty() ? "" : ":";
  text += tree.token;
  if (tree.isContainer()) {
    for (const DocumentTree& part : tree.parts) {
      text += &part == &tree.parts.front() ? "" : ",";
      append(part, text);
    }
    text += tree.isObject() ? '}' : ']';
  }
}

}  // namespace

std::optional<DocumentTree> takeApart(std::string_view text) {
  return Reader(text).readWhole();
}

std::string putTogether(const DocumentTree& tree) {
  std::string text;
  append(tree, text);
  return text;
}

}  // namespace fuzz
