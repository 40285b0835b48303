#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace fuzz {

/// A JSON text split into a tree whose parts can be changed: members keep their order, repeated
/// keys are kept, and scalars and keys are the bytes of the text.
///
/// All nodes are in one block, and keys and tokens refer to the text, so that reusing a tree for
/// one text after another allocates hardly anything. Removed nodes stay in the block.
class DocumentTree {
 public:
  /// A node by its index. The root is the first one.
  using Node = std::size_t;

  static constexpr Node kRoot = 0;
  static constexpr Node kNone = ~Node{0};

  /// Splits `text`, which must stay unchanged while the tree is used, and forgets the previous
  /// text. Returns false if the text is too far from JSON or nested too deeply; the tree must not
  /// be used then. Does not check literals and numbers.
  bool parse(std::string_view text);

  /// Returns the tree as text, without white space.
  std::string toText() const;

  /// The key with its quotation marks; empty unless the node is a member of an object.
  std::string_view key(Node node) const { return nodes_[node].key; }

  /// A scalar verbatim, or "{" or "[".
  std::string_view token(Node node) const { return nodes_[node].token; }

  bool isObject(Node node) const { return token(node) == "{"; }
  bool isContainer(Node node) const { return isObject(node) || token(node) == "["; }

  /// The first node in a container, and the node after a node; kNone if there is none.
  Node firstPart(Node node) const { return nodes_[node].first; }
  Node nextPart(Node node) const { return nodes_[node].next; }

  std::size_t countParts(Node node) const;

  /// Stores a text for as long as the tree's own text.
  std::string_view keep(std::string text) { return kept_.emplace_back(std::move(text)); }

  void setKey(Node node, std::string_view key) { nodes_[node].key = key; }
  void setToken(Node node, std::string_view token) { nodes_[node].token = token; }

  /// Gives a node the value of another node, which must not be used afterwards.
  void setValue(Node node, Node value);

  /// Copies a node of this or another tree with everything below it; the copy has no parent yet.
  /// The other tree's text must remain valid.
  Node copyOf(const DocumentTree& tree, Node node);

  /// Inserts a node without a parent into a container, after `place` others.
  void insertPart(Node container, std::size_t place, Node part);

  void dropPart(Node container, Node part);
  void reverseParts(Node container);

 private:
  class Reader;

  struct Content {
    std::string_view key;
    std::string_view token;
    Node first = kNone;
    Node next = kNone;
  };

  Node add(std::string_view key, std::string_view token);
  void append(Node node, std::string& text) const;

  std::vector<Content> nodes_;
  std::deque<std::string> kept_;
};

}  // namespace fuzz
