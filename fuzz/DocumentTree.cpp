#include "DocumentTree.h"

#include <algorithm>
#include <utility>

namespace fuzz {
namespace {

constexpr int kDeepest = 40;

bool isSpace(char byte) {
  return byte == ' ' || (byte >= '\t' && byte <= '\r');
}

bool endsScalar(char byte) {
  return isSpace(byte) || byte == ',' || byte == ':' || byte == ']' || byte == '}' || byte == '"';
}

}  // namespace

class DocumentTree::Reader {
 public:
  Reader(DocumentTree& tree, std::string_view text)
      : tree_(tree), position_(text.data()), end_(text.data() + text.size()) {}

  bool readWhole() {
    skipSpace();
    return readValue({}, 0) != kNone && position_ == end_;
  }

 private:
  // Reads a value and returns its node, or kNone.
  Node readValue(std::string_view key, int depth) {
    if (position_ == end_ || depth == kDeepest) {
      return kNone;
    }
    if (*position_ != '{' && *position_ != '[') {
      const std::string_view token = readScalar();
      return token.empty() ? kNone : tree_.add(key, token);
    }
    const Node node = tree_.add(key, std::string_view(position_, 1));
    return readParts(node, depth) ? node : kNone;
  }

  bool readParts(Node container, int depth) {
    const bool isObject = *position_ == '{';
    const char closing = isObject ? '}' : ']';
    ++position_;
    if (consume(closing)) {
      return true;
    }
    Node last = kNone;
    do {
      std::string_view key;
      if (isObject) {
        key = position_ != end_ && *position_ == '"' ? readScalar() : std::string_view();
        if (key.empty() || !consume(':')) {
          return false;
        }
      }
      const Node part = readValue(key, depth + 1);
      if (part == kNone) {
        return false;
      }
      (last == kNone ? tree_.nodes_[container].first : tree_.nodes_[last].next) = part;
      last = part;
    } while (consume(','));
    return consume(closing);
  }

  // Reads a scalar or a key and the white space after it; returns an empty view if there is none.
  std::string_view readScalar() {
    const char* const begin = position_;
    if (*position_ == '"') {
      do {
        position_ += *position_ == '\\' && end_ - position_ > 1 ? 2 : 1;
      } while (position_ != end_ && *position_ != '"');
      if (position_ == end_) {
        return {};
      }
      ++position_;
    } else {
      position_ = std::find_if(position_, end_, endsScalar);
    }
    const std::string_view token(begin, static_cast<std::size_t>(position_ - begin));
    skipSpace();
    return token;
  }

  // Consumes `byte` and the white space around it, if it is next.
  bool consume(char byte) {
    skipSpace();
    if (position_ == end_ || *position_ != byte) {
      return false;
    }
    ++position_;
    skipSpace();
    return true;
  }

  void skipSpace() {
    while (position_ != end_ && isSpace(*position_)) {
      ++position_;
    }
  }

  DocumentTree& tree_;
  const char* position_;
  const char* end_;
};

bool DocumentTree::parse(std::string_view text) {
  nodes_.clear();
  kept_.clear();
  return Reader(*this, text).readWhole();
}

std::string DocumentTree::toText() const {
  std::string text;
  append(kRoot, text);
  return text;
}

std::size_t DocumentTree::countParts(Node node) const {
  std::size_t count = 0;
  for (Node part = firstPart(node); part != kNone; part = nextPart(part)) {
    ++count;
  }
  return count;
}

void DocumentTree::setValue(Node node, Node value) {
  nodes_[node].token = nodes_[value].token;
  nodes_[node].first = nodes_[value].first;
}

DocumentTree::Node DocumentTree::copyOf(const DocumentTree& tree, Node node) {
  const Node copy = add(tree.key(node), tree.token(node));
  Node last = kNone;
  for (Node part = tree.firstPart(node); part != kNone; part = tree.nextPart(part)) {
    const Node copyOfPart = copyOf(tree, part);
    (last == kNone ? nodes_[copy].first : nodes_[last].next) = copyOfPart;
    last = copyOfPart;
  }
  return copy;
}

void DocumentTree::insertPart(Node container, std::size_t place, Node part) {
  Node* link = &nodes_[container].first;
  for (; place != 0 && *link != kNone; --place) {
    link = &nodes_[*link].next;
  }
  nodes_[part].next = std::exchange(*link, part);
}

void DocumentTree::dropPart(Node container, Node part) {
  Node* link = &nodes_[container].first;
  while (*link != part) {
    link = &nodes_[*link].next;
  }
  *link = nodes_[part].next;
}

void DocumentTree::reverseParts(Node container) {
  Node reversed = kNone;
  for (Node part = firstPart(container); part != kNone;) {
    part = std::exchange(nodes_[part].next, std::exchange(reversed, part));
  }
  nodes_[container].first = reversed;
}

DocumentTree::Node DocumentTree::add(std::string_view key, std::string_view token) {
  nodes_.push_back({key, token});
  return nodes_.size() - 1;
}

void DocumentTree::append(Node node, std::string& text) const {
  if (!key(node).empty()) {
    text += key(node);
    text += ':';
  }
  text += token(node);
  if (isContainer(node)) {
    const Node first = firstPart(node);
    for (Node part = first; part != kNone; part = nextPart(part)) {
      if (part != first) {
        text += ',';
      }
      append(part, text);
    }
    text += isObject(node) ? '}' : ']';
  }
}

}  // namespace fuzz
